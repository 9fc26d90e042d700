#include "capability/distribution_plot.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <map>

#include "shell/analysis_input.h"
#include "stats/decimal_numbers.h"
#include "stats/distribution_families.h"
#include "worksheet/cell_number.h"

namespace orvik::capability {

namespace {

using stats::DistributionFamily;
using stats::FormatNumber;

constexpr const char* kParameterBoxes[] = {"Param1txt", "Param2txt", "Param3txt"};
// Points of a density curve across the plot.
constexpr int kCurveIntervals = 200;
// The tails each side of the plotted range: continuous and discrete.
constexpr double kContinuousTail = 1e-3;
constexpr double kDiscreteTail = 1e-4;
constexpr double kMostBars = 1000;

const std::map<std::string, std::vector<double>>& Defaults() {
  static const std::map<std::string, std::vector<double>> defaults = {
      {"Normal", {0, 1}},     {"t", {10}},        {"Chi-Square", {5}},  {"F", {5, 10}},
      {"Exponential", {1}},   {"Uniform", {0, 1}}, {"Lognormal", {0, 1}}, {"Weibull", {2, 1}},
      {"Gamma", {2, 1}},      {"Beta", {2, 5}},   {"Binomial", {10, 0.5}}, {"Poisson", {4}},
      {"Hypergeometric", {50, 10, 5}},
  };
  return defaults;
}

std::string Lower(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

// The family a typed name means, case and surrounding blanks aside.
const DistributionFamily* FamilyNamed(const std::string& typed) {
  const auto first = typed.find_first_not_of(" \t");
  const auto last = typed.find_last_not_of(" \t");
  if (first == std::string::npos) return nullptr;
  const std::string name = Lower(typed.substr(first, last - first + 1));
  for (const auto& family : stats::DistributionFamilies())
    if (Lower(std::string(family.name)) == name) return &family;
  return nullptr;
}

// A probability for a chart label: six significant digits.
std::string Short(double v) {
  char text[32];
  std::snprintf(text, sizeof text, "%.6g", v);
  return text;
}

struct Answer {
  std::vector<std::pair<std::string, double>> rows;  // grid rows after the parameters
  std::string label;                                // the chart's text
  std::vector<std::pair<std::string, double>> marks;  // vertical lines
  bool shaded = false;
  double from = -HUGE_VAL;  // the shaded range
  double to = HUGE_VAL;
};

// P(a <= X <= b) from whichever tails keep the digits.
double Between(const DistributionFamily& f, std::span<const double> p, double a, double b) {
  if (f.discrete) {
    a = std::ceil(a);
    b = std::floor(b);
    if (a > b) return 0.0;
    a -= 1.0;  // P(a <= X) = P(X > a - 1)
  }
  if (f.lower(a, p) <= 0.5) return std::max(0.0, f.lower(b, p) - f.lower(a, p));
  return std::max(0.0, f.upper(a, p) - f.upper(b, p));
}

Answer Answering(const DistributionSettings& s, const DistributionFamily& f) {
  const std::span<const double> p = s.parameters;
  Answer answer;
  switch (s.question) {
    case DistributionQuestion::PlotOnly: break;
    case DistributionQuestion::CDFLower: {
      const double v = f.lower(s.x, p);
      answer.rows = {{"x", s.x}, {"P(X <= x)", v}};
      answer.label = "P(X <= " + FormatNumber(s.x) + ") = " + Short(v);
      answer.marks = {{"x= " + FormatNumber(s.x), s.x}};
      answer.shaded = true;
      answer.to = s.x;
      break;
    }
    case DistributionQuestion::CDFUpper: {
      const double v = f.discrete ? f.upper(std::ceil(s.x) - 1.0, p) : f.upper(s.x, p);
      answer.rows = {{"x", s.x}, {"P(X >= x)", v}};
      answer.label = "P(X >= " + FormatNumber(s.x) + ") = " + Short(v);
      answer.marks = {{"x= " + FormatNumber(s.x), s.x}};
      answer.shaded = true;
      answer.from = s.x;
      break;
    }
    case DistributionQuestion::Between: {
      const double v = Between(f, p, s.x, s.x2);
      answer.rows = {{"a", s.x}, {"b", s.x2}, {"P(a <= X <= b)", v}};
      answer.label = "P(" + FormatNumber(s.x) + " <= X <= " + FormatNumber(s.x2) + ") = " + Short(v);
      answer.marks = {{"a= " + FormatNumber(s.x), s.x}, {"b= " + FormatNumber(s.x2), s.x2}};
      answer.shaded = true;
      answer.from = s.x;
      answer.to = s.x2;
      break;
    }
    case DistributionQuestion::Inverse: {
      const double v = f.quantile(s.probability, p);
      answer.rows = {{"P(X <= x)", s.probability}, {"x", v}};
      answer.label = "P(X <= " + Short(v) + ") = " + FormatNumber(s.probability);
      answer.marks = {{"x= " + Short(v), v}};
      answer.shaded = true;
      answer.to = v;
      break;
    }
  }
  return answer;
}

std::string Title(const DistributionFamily& f, std::span<const double> p) {
  std::string title = std::string(f.name) + " distribution (";
  for (std::size_t i = 0; i < p.size(); ++i)
    title += (i ? ", " : "") + std::string(f.parameters[i]) + " = " + FormatNumber(p[i]);
  return title + ")";
}

}  // namespace

DistributionForm::DistributionForm(const DistributionSettings& previous)
    : AnalysisDialog("DistributionForm", "Distribution plot", "") {
  AddTextBox("Distribution", previous.family).caption = "Distribution";
  for (const char* box : kParameterBoxes) AddTextBox(box);
  using Q = DistributionQuestion;
  AddOptionButton("PlotOnly", "question", previous.question == Q::PlotOnly).caption = "Plot only";
  AddOptionButton("CDFLower", "question", previous.question == Q::CDFLower).caption = "P(X <= x)";
  AddOptionButton("CDFUpper", "question", previous.question == Q::CDFUpper).caption = "P(X >= x)";
  AddOptionButton("Between", "question", previous.question == Q::Between).caption = "P(x <= X <= x2)";
  AddOptionButton("Inverse", "question", previous.question == Q::Inverse).caption = "x for P(X <= x)";
  AddTextBox("Xtxt", FormatNumber(previous.x)).caption = "x";
  AddTextBox("X2txt", FormatNumber(previous.x2)).caption = "x2";
  AddTextBox("Probtxt", FormatNumber(previous.probability)).caption = "Probability";
  AddOkCancel();
  ShowFamily(previous.family, false);
  for (std::size_t i = 0; i < previous.parameters.size() && i < 3; ++i)
    MutableControl(kParameterBoxes[i]).text = FormatNumber(previous.parameters[i]);
  UpdateEnabling();
}

void DistributionForm::ShowFamily(const std::string& name, bool defaults) {
  const DistributionFamily* family = FamilyNamed(name);
  if (family == nullptr) return;
  shown_family_ = family->name;
  MutableControl("Distribution").text = shown_family_;
  const std::vector<double>& values = Defaults().at(shown_family_);
  for (std::size_t i = 0; i < 3; ++i) {
    shell::DialogControl& box = MutableControl(kParameterBoxes[i]);
    const bool used = i < family->parameters.size();
    box.enabled = used;
    box.caption = used ? std::string(family->parameters[i]) : "Parameter " + std::to_string(i + 1);
    if (defaults) box.text = used ? FormatNumber(values[i]) : std::string();
  }
}

void DistributionForm::UpdateEnabling() {
  const bool x = Control("CDFLower").checked || Control("CDFUpper").checked || Control("Between").checked;
  MutableControl("Xtxt").enabled = x;
  MutableControl("X2txt").enabled = Control("Between").checked;
  MutableControl("Probtxt").enabled = Control("Inverse").checked;
}

void DistributionForm::OnClick(const std::string& control) {
  AnalysisDialog::OnClick(control);
  UpdateEnabling();
}

void DistributionForm::OnFocusLost(const std::string& control) {
  if (control != "Distribution") return;
  const DistributionFamily* family = FamilyNamed(Control("Distribution").text);
  if (family != nullptr && family->name != shown_family_) ShowFamily(std::string(family->name), true);
  else if (family != nullptr) MutableControl("Distribution").text = shown_family_;
}

bool DistributionForm::OnOk(shell::Host& host) {
  const auto refuse = [&] {
    host.Refuse(analyses::kInvalidNumericalData);
    return false;
  };
  const DistributionFamily* family = FamilyNamed(Control("Distribution").text);
  if (family == nullptr) return refuse();
  DistributionSettings settings;
  settings.family = family->name;
  settings.parameters.clear();
  for (std::size_t i = 0; i < family->parameters.size(); ++i) {
    const auto value = Number(kParameterBoxes[i]);
    if (!value) return refuse();
    settings.parameters.push_back(*value);
  }
  if (family->check(settings.parameters)) return refuse();
  using Q = DistributionQuestion;
  settings.question = Control("CDFLower").checked   ? Q::CDFLower
                      : Control("CDFUpper").checked ? Q::CDFUpper
                      : Control("Between").checked  ? Q::Between
                      : Control("Inverse").checked  ? Q::Inverse
                                                    : Q::PlotOnly;
  const auto x = Number("Xtxt"), x2 = Number("X2txt"), probability = Number("Probtxt");
  if (settings.question == Q::CDFLower || settings.question == Q::CDFUpper || settings.question == Q::Between) {
    if (!x || !std::isfinite(*x)) return refuse();
    settings.x = *x;
  }
  if (settings.question == Q::Between) {
    if (!x2 || !std::isfinite(*x2) || *x2 < *x) return refuse();
    settings.x2 = *x2;
  }
  if (settings.question == Q::Inverse) {
    if (!probability || !(*probability > 0.0 && *probability < 1.0)) return refuse();
    settings.probability = *probability;
  }
  result_ = settings;
  return true;
}

std::unique_ptr<shell::DialogModel> MakeDistributionForm() { return std::make_unique<DistributionForm>(); }

shell::ResultWindow DistributionWindow(const DistributionSettings& s) {
  const DistributionFamily& f = *stats::FindDistributionFamily(s.family);
  const std::span<const double> p = s.parameters;
  const Answer answer = Answering(s, f);

  shell::ResultWindow window = shell::MakeDataChart("Distribution plot");
  shell::ResultTable& table = *window.table;
  table.columns = {"Distribution plot", "Result"};
  table.AddRow({"Distribution", std::string(f.name)});
  for (std::size_t i = 0; i < p.size(); ++i) table.AddRow({std::string(f.parameters[i]), FormatNumber(p[i])});
  for (const auto& [name, value] : answer.rows) table.AddRow({name, FormatNumber(value)});

  // The plotted range: the central mass, widened to the asked points that
  // lie near it.
  const double tail = f.discrete ? kDiscreteTail : kContinuousTail;
  double lo = f.quantile(tail, p), hi = f.quantileUpper(tail, p);
  if (!f.discrete && f.lower(0.0, p) == 0.0 && lo > 0.0 && lo < 0.25 * hi) lo = 0.0;
  if (f.name == "Uniform") {
    // Show the density's steps at the bounds.
    const double pad = 0.1 * (p[1] - p[0]);
    lo = p[0] - pad;
    hi = p[1] + pad;
  }
  const double width = hi - lo;
  for (const auto& [text, at] : answer.marks) {
    if (at >= lo - width && at < lo) lo = at;
    if (at <= hi + width && at > hi) hi = at;
  }
  if (f.discrete) {
    lo = std::floor(lo);
    hi = std::min(std::ceil(hi), lo + kMostBars);
  }

  shell::ChartSeries& chart = window.charts.front();
  chart.title = Title(f, p);
  chart.xTitle = "X";
  chart.yTitle = f.discrete ? "Probability" : "Density";
  chart.y2Title = "Cumulative probability";
  chart.seriesLegend = true;
  shell::PlotSeries mass, cumulative, shade;
  mass.name = f.discrete ? "Probability" : "Density";
  mass.type = f.discrete ? shell::SeriesType::Bar : shell::SeriesType::Line;
  mass.curve = true;
  cumulative.name = "Cumulative probability";
  cumulative.type = shell::SeriesType::Line;
  cumulative.onSecondAxis = true;
  cumulative.curve = !f.discrete;
  cumulative.dashed = true;
  shade.name = "Shaded area";
  shade.type = f.discrete ? shell::SeriesType::Bar : shell::SeriesType::Area;
  shade.color = shell::kRed;
  const double from = std::max(answer.from, lo), to = std::min(answer.to, hi);
  const auto add = [&](double x) {
    const double density = f.density(x, p);
    if (!std::isfinite(density)) return;  // the pole of a density at its support's end
    mass.x.push_back(x);
    mass.y.push_back(density);
    cumulative.x.push_back(x);
    cumulative.y.push_back(f.lower(x, p));
    if (answer.shaded && x >= from && x <= to) {
      shade.x.push_back(x);
      shade.y.push_back(density);
    }
  };
  if (f.discrete) {
    for (double k = lo; k <= hi; k += 1.0) add(k);
  } else {
    std::vector<double> xs;
    for (int i = 0; i <= kCurveIntervals; ++i) xs.push_back(lo + (hi - lo) * i / kCurveIntervals);
    // The ends of the shaded area lie on the curve.
    for (const double end : {from, to})
      if (answer.shaded && end > lo && end < hi) xs.push_back(end);
    std::sort(xs.begin(), xs.end());
    xs.erase(std::unique(xs.begin(), xs.end()), xs.end());
    for (const double x : xs) add(x);
  }
  chart.series.push_back(std::move(mass));
  if (answer.shaded && !shade.y.empty()) chart.series.push_back(std::move(shade));
  chart.series.push_back(std::move(cumulative));
  for (const auto& [text, at] : answer.marks)
    if (at >= lo && at <= hi) chart.lines.push_back({shell::LineOrientation::Vertical, at, text, shell::kRed, true});
  if (!answer.label.empty()) chart.labels.push_back({answer.label, std::nullopt, std::nullopt});
  return window;
}

void DistributionView(shell::Host& host) {
  DistributionForm form(host.Settings().Last<DistributionSettings>());
  const auto settings = shell::AskParameters(host, form);
  if (!settings) return;
  shell::ShowResultOrFail(host, DistributionWindow(*settings), worksheet::messages::kInputValidData, "");
}

}  // namespace orvik::capability
