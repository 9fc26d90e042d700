#include "capability/process_capability.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "capability/cpk_form.h"
#include "capability/histogram.h"
#include "charts/chart_limits.h"
#include "charts/control_limits.h"
#include "shell/analysis_input.h"
#include "stats/compensated_sum.h"
#include "stats/decimal_numbers.h"
#include "stats/normal_distribution.h"

namespace orvik::capability {

namespace {

using stats::FormatNumber;
using stats::Round;

constexpr const char* kStartingLine = "Process capability analysis is starting";
constexpr const char* kCompletedLine = "Process capability analysis is completed";
constexpr const char* kCancelLine = "Cancel Process capability analysis";
constexpr const char* kInputValidData = "Please, Input valid data";
constexpr const char* kImproperData = "Improper data for process capability analysis";

// The moving range of two neighbours estimates sigma through d2(2).
constexpr double kD2OfTwo = 1.128;

// The sample standard deviation from the sums of one group, taken about its
// first value so that values large against their spread keep their digits,
// and compensated so that a long study's sums do not drift.
double GroupSigma(std::span<const double> group) {
  const double m = static_cast<double>(group.size());
  const double shift = group.front();
  stats::CompensatedSum sum, squares;
  for (const double x : group) {
    sum.Add(x - shift);
    squares.Add((x - shift) * (x - shift));
  }
  const double centred = sum.Value();
  // An overflow leaves NaN, which must not become a sigma of 0.
  const double variance = (squares.Value() - centred * centred / m) / (m - 1);
  return std::sqrt(variance < 0.0 ? 0.0 : variance);
}

// Within sigma from consecutive subgroups of `size` values. A last group of
// several values takes part like the others; a last single value has no
// spread of its own and is left out.
double SubgroupSigma(std::span<const double> values, long size) {
  stats::CompensatedSum total;
  long groups = 0;
  for (std::size_t start = 0; start < values.size(); start += static_cast<std::size_t>(size)) {
    const auto group = values.subspan(start, std::min<std::size_t>(static_cast<std::size_t>(size), values.size() - start));
    if (group.size() < 2) continue;
    total.Add(GroupSigma(group) / CapabilityC4(static_cast<long>(group.size())));
    ++groups;
  }
  return Round(total.Value() / static_cast<double>(groups), 8);
}

double MovingRangeSigma(std::span<const double> values) {
  stats::CompensatedSum ranges;
  for (std::size_t i = 1; i < values.size(); ++i) ranges.Add(std::fabs(values[i] - values[i - 1]));
  return Round(ranges.Value() / static_cast<double>(values.size() - 1) / kD2OfTwo, 8);
}

std::string Shown(const std::optional<double>& value) { return value ? FormatNumber(*value) : "*"; }

}  // namespace

double CapabilityC4(long m) {
  // The same four-place table as the control charts use.
  if (m >= 2 && m <= 25) return charts::Factor(charts::C4Table(), m);
  return charts::C4Approximation(m);
}

CapabilityOutcome ComputeCapability(std::span<const double> values, const CpkSettings& study) {
  CapabilityOutcome outcome;
  if (values.empty()) return {std::nullopt, kInputValidData};
  const auto [lowest, highest] = std::minmax_element(values.begin(), values.end());
  if (*lowest == *highest) return {std::nullopt, worksheet::messages::kAllDataSame};
  if (values.size() < 3) return {std::nullopt, worksheet::messages::kNotEnoughData};

  CapabilityResult r;
  r.n = static_cast<long>(values.size());
  const double n = static_cast<double>(r.n);
  r.mean = Round(stats::CompensatedTotal(values) / n, 10);
  const double sigma = GroupSigma(values);
  r.variance = Round(sigma * sigma, 10);
  r.sigmaLT = Round(std::sqrt(r.variance) / CapabilityC4(r.n), 10);
  if (r.variance == 0 || r.sigmaLT == 0) return {std::nullopt, kImproperData};
  r.sigmaST = study.UseSubgroups ? SubgroupSigma(values, study.SubgroupSize) : MovingRangeSigma(values);
  if (!(r.sigmaST > 0)) return {std::nullopt, kImproperData};

  const double usl = study.USL, lsl = study.LSL;
  if (study.UseUpper) {
    r.Cpu = Round((usl - r.mean) / (3 * r.sigmaST), 8);
    r.Ppu = Round((usl - r.mean) / (3 * r.sigmaLT), 8);
  }
  if (study.UseLower) {
    r.Cpl = Round((r.mean - lsl) / (3 * r.sigmaST), 8);
    r.Ppl = Round((r.mean - lsl) / (3 * r.sigmaLT), 8);
  }
  if (study.UseUpper && study.UseLower) {
    r.Cp = Round((usl - lsl) / (6 * r.sigmaST), 8);
    r.Pp = Round((usl - lsl) / (6 * r.sigmaLT), 8);
    // On a tie the lower side's value is taken; the two are equal then.
    r.Cpk = *r.Cpu < *r.Cpl ? r.Cpu : r.Cpl;
    r.Ppk = *r.Ppu < *r.Ppl ? r.Ppu : r.Ppl;
  } else {
    r.Cpk = study.UseUpper ? r.Cpu : r.Cpl;
    r.Ppk = study.UseUpper ? r.Ppu : r.Ppl;
  }

  // Only values strictly beyond a limit are nonconforming.
  long out = 0;
  for (const double x : values)
    if ((study.UseUpper && x > usl) || (study.UseLower && x < lsl)) ++out;
  r.observedPpm = Round(static_cast<double>(out) / n, 8) * 1000000;
  // The upper tail comes from the library's own upper-tail function, so a
  // rate of a few ppm keeps all its digits.
  const double upper_p = study.UseUpper ? Round(stats::GetDFNormalUpper(usl, r.mean, r.sigmaLT), 10) : 0.0;
  const double lower_p = study.UseLower ? Round(stats::GetDFNormal(lsl, r.mean, r.sigmaLT), 10) : 0.0;
  r.potentialPpm = Round(upper_p + lower_p, 8) * 1000000;

  // Two-sided studies measure the sigma level from the upper limit.
  r.longTermSigmaLevel = study.UseUpper ? Round((usl - r.mean) / r.sigmaLT, 8) : Round((r.mean - lsl) / r.sigmaLT, 8);
  r.shortTermSigmaLevel = r.longTermSigmaLevel + 1.5;
  outcome.result = r;
  return outcome;
}

shell::ResultTable CapabilityTable(const CapabilityResult& r) {
  shell::ResultTable table;
  table.columns = {"", ""};
  table.AddRow({"N", std::to_string(r.n)});
  table.AddRow({"Mean", FormatNumber(r.mean)});
  table.AddRow({"Variance", FormatNumber(r.variance)});
  table.AddRow({"Standard deviation", FormatNumber(r.sigmaLT)});
  table.AddRow({"Cp", Shown(r.Cp)});
  table.AddRow({"Cpk", Shown(r.Cpk)});
  table.AddRow({"Cpu", Shown(r.Cpu)});
  table.AddRow({"Cpl", Shown(r.Cpl)});
  table.AddRow({"Pp", Shown(r.Pp)});
  table.AddRow({"Ppk", Shown(r.Ppk)});
  table.AddRow({"Ppu", Shown(r.Ppu)});
  table.AddRow({"Ppl", Shown(r.Ppl)});
  table.AddRow({"Nonconformity rate(ppm)", FormatNumber(r.observedPpm) + " ppm"});
  table.AddRow({"Potential nonconformity rate(ppm)", FormatNumber(r.potentialPpm) + " ppm"});
  table.AddRow({"Long-term sigma level", FormatNumber(r.longTermSigmaLevel)});
  table.AddRow({"Short-term sigma level", FormatNumber(r.shortTermSigmaLevel)});
  return table;
}

namespace {

// The normal curve of the process with spread `sigma`, scaled to the
// histogram (n values in classes of `width`), over [from, to]: the shape
// the histogram would take with that spread.
shell::PlotSeries NormalCurve(std::string name, double mean, double sigma, long n, double width, double from, double to,
                              shell::Rgb color, bool dashed) {
  constexpr int kSteps = 120;
  shell::PlotSeries curve;
  curve.name = std::move(name);
  curve.type = shell::SeriesType::Line;
  curve.color = color;
  curve.dashed = dashed;
  const double scale = static_cast<double>(n) * width / (sigma * std::sqrt(2.0 * std::numbers::pi));
  for (int i = 0; i <= kSteps; ++i) {
    const double x = from + (to - from) * i / kSteps;
    const double z = (x - mean) / sigma;
    curve.x.push_back(Round(x, 8));
    curve.y.push_back(Round(scale * std::exp(-0.5 * z * z), 8));
  }
  return curve;
}

}  // namespace

void CpkResultView(shell::Host& host, const CpkSettings& study) {
  const worksheet::Worksheet* sheet = host.ActiveWorksheet();
  // Moving ranges and subgroups follow time, which runs along the rows of
  // a block of subgroups (one subgroup per row), so the values are taken
  // row by row; for a single column that is its order from the top.
  const std::vector<double> values =
      sheet ? worksheet::NumericCellsRowByRow(*sheet, host.CurrentSelection()) : std::vector<double>{};
  const CapabilityOutcome outcome = ComputeCapability(values, study);
  if (!outcome.result) {
    host.Refuse(outcome.refusal);
    host.Log().AppendSessionLine(kCancelLine);
    return;
  }
  const CapabilityResult& r = *outcome.result;

  shell::ResultWindow window = shell::MakeDataChart("Process capability analysis");
  window.table = CapabilityTable(r);
  shell::ChartSeries& chart = window.charts.front();
  chart.title = "Process capability analysis";
  chart.xTitle = "Value";
  chart.yTitle = "Frequency";
  const auto [lowest, highest] = std::minmax_element(values.begin(), values.end());
  const HistogramClasses classes = MakeHistogramClasses(values, *lowest, *highest);
  chart.series.push_back(HistogramBars(classes));
  // The within (short-term) and overall (long-term) normal curves over the
  // histogram and the specification limits, three sigma either side.
  const double wider = std::max(r.sigmaST, r.sigmaLT);
  double from = std::min(classes.lowerLimits.front(), r.mean - 3 * wider);
  double to = std::max(classes.lastUpperLimit, r.mean + 3 * wider);
  if (study.UseLower) from = std::min(from, study.LSL);
  if (study.UseUpper) to = std::max(to, study.USL);
  chart.series.push_back(
      NormalCurve("Within (short-term)", r.mean, r.sigmaST, classes.n, classes.width, from, to, shell::kBlue, false));
  chart.series.push_back(
      NormalCurve("Overall (long-term)", r.mean, r.sigmaLT, classes.n, classes.width, from, to, shell::kBlack, true));
  if (study.UseUpper) {
    chart.lines.push_back({shell::LineOrientation::Vertical, study.USL, "USL: " + FormatNumber(study.USL), shell::kRed, false});
    chart.labels.push_back({"USL: " + FormatNumber(study.USL), study.USL, std::nullopt});
  }
  if (study.UseLower) {
    chart.lines.push_back({shell::LineOrientation::Vertical, study.LSL, "LSL: " + FormatNumber(study.LSL), shell::kRed, false});
    chart.labels.push_back({"LSL: " + FormatNumber(study.LSL), study.LSL, std::nullopt});
  }
  chart.lines.push_back({shell::LineOrientation::Vertical, r.mean, "Mean:" + FormatNumber(r.mean), shell::kBlue, true});
  chart.labels.push_back({"Mean:" + FormatNumber(r.mean), r.mean, std::nullopt});
  chart.labels.push_back({"Cp : " + Shown(r.Cp) + "   " + "Cpk : " + Shown(r.Cpk), std::nullopt, std::nullopt});
  chart.labels.push_back({"Pp : " + Shown(r.Pp) + "   " + "Ppk : " + Shown(r.Ppk), std::nullopt, std::nullopt});
  shell::ShowResultOrFail(host, std::move(window), worksheet::messages::kInputValidData, kCancelLine);
  host.Log().AppendSessionLine(kCompletedLine);
}

void CpkSelection(shell::Host& host) {
  if (!shell::ResolveDataBlock(host, worksheet::messages::kSelectDataFromWorksheet)) return;
  host.Log().AppendSessionLine(kStartingLine);
  const auto figures = shell::CollectNumericCells(host);
  if (!figures || figures->count == 0) {
    // Nothing numeric to study: say so before asking for limits.
    host.Refuse(worksheet::messages::kSelectValidData);
    host.Log().AppendSessionLine(kCancelLine);
    return;
  }
  CpkForm form(host.Settings().Last<CpkSettings>());
  const auto study = shell::AskParameters(host, form);
  if (!study) return;
  CpkResultView(host, *study);
}

}  // namespace orvik::capability
