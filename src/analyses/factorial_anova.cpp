#include "analyses/factorial_anova.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <variant>

#include "analyses/analysis_dialog.h"
#include "analyses/anova_report.h"
#include "analyses/factorial_design.h"
#include "analyses/factorial_fit.h"
#include "analyses/factorial_plots.h"
#include "analyses/one_way_anova.h"
#include "analyses/p_values.h"
#include "analyses/sample_input.h"
#include "analyses/two_way_anova.h"
#include "shell/analysis_input.h"
#include "shell/host.h"
#include "worksheet/cell_number.h"

namespace orvik::analyses {

namespace {

const SessionLines kLines{"Factorial ANOVA", "Cancel Factorial ANOVA"};

// The runs of a factorial sheet, coded, with the settings each factor's
// low and high level stand for.
struct FactorialSheetRuns {
  std::vector<CodedRun> runs;
  std::vector<FactorSettings> factors;
};

// Reads rows first..last of the factor and response columns. A cell that
// is no number gives kIncludeImproper, a setting that is not the low, high
// or middle value kNotTwoLevelDesign.
std::variant<FactorialSheetRuns, const char*> ReadFactorialRuns(const worksheet::Worksheet& sheet,
                                                               const worksheet::SheetDesign& design,
                                                               const worksheet::DesignColumns& columns) {
  FactorialSheetRuns read;
  const long response = columns.Of(design, design.response);
  const long first = columns.firstRow, last = columns.lastRow;
  std::vector<std::vector<double>> settings(design.factors.size());
  for (long row = first; row <= last; ++row) {
    const auto y = worksheet::ParseCellNumber(sheet.Text(row, response));
    if (!y) return worksheet::messages::kIncludeImproper;
    read.runs.push_back({0, false, *y});
    for (std::size_t j = 0; j < design.factors.size(); ++j) {
      const auto x = worksheet::ParseCellNumber(sheet.Text(row, columns.Of(design, design.factors[j].name)));
      if (!x) return worksheet::messages::kIncludeImproper;
      settings[j].push_back(*x);
    }
  }
  for (std::size_t j = 0; j < design.factors.size(); ++j) {
    const worksheet::DesignFactor& factor = design.factors[j];
    const auto [low_it, high_it] = std::minmax_element(settings[j].begin(), settings[j].end());
    const double low = factor.low && factor.high ? *factor.low : *low_it;
    const double high = factor.low && factor.high ? *factor.high : *high_it;
    const double middle = (low + high) / 2.0;
    const double tolerance = 1e-9 * std::max({std::fabs(low), std::fabs(high), 1.0});
    for (std::size_t r = 0; r < read.runs.size(); ++r) {
      const double x = settings[j][r];
      CodedRun& run = read.runs[r];
      const bool centre = std::fabs(x - middle) <= tolerance;
      if (std::fabs(x - high) <= tolerance) run.highFactors |= 1U << j;
      else if (!centre && std::fabs(x - low) > tolerance) return kNotTwoLevelDesign;
      // A centre point has every factor at its middle; a corner none.
      if (j == 0) run.centre = centre;
      else if (run.centre != centre) return kNotTwoLevelDesign;
    }
    read.factors.push_back({factor.name, low, high});
  }
  return read;
}

std::string TermName(const FactorialEffect& e) { return EffectName(e.term); }

std::string AliasText(const FactorialEffect& e) {
  if (e.alias == 0) return {};
  return (e.aliasSign < 0 ? "-" : "") + EffectName(e.alias);
}

shell::ResultTable MakeTable(const FactorialFit& fit, const FactorialSheetRuns& read) {
  const FactorialLayout& layout = fit.layout;
  const int k = layout.factors;
  const bool tests = fit.errorDf > 0;
  const bool lenth = layout.replicates == 1 && fit.pse.has_value();
  shell::ResultTable table = ReportGrid(9);
  AddHeading(table, {"1. Design"});
  const std::string size = std::to_string(k);
  table.AddRow({"Design", layout.half ? "Half fraction 2^(" + size + "-1)" : "Full factorial 2^" + size});
  if (layout.half)
    table.AddRow({"Defining relation", std::string("I = ") + (layout.relationSign < 0 ? "-" : "") +
                                           EffectName((1U << k) - 1)});
  table.AddRow({"Runs", std::to_string(layout.factorialRuns + layout.centreRuns)});
  table.AddRow({"Replicates", std::to_string(layout.replicates)});
  table.AddRow({"Center points", std::to_string(layout.centreRuns)});
  table.AddRow({"Highest order in model", std::to_string(fit.maxOrder)});
  AddHeading(table, {"Factor", "Name", "Low", "High"});
  for (int j = 0; j < k; ++j)
    table.AddRow({std::string(1, FactorLetter(j)), read.factors[static_cast<std::size_t>(j)].name,
                  ShownStatistic(read.factors[static_cast<std::size_t>(j)].low),
                  ShownStatistic(read.factors[static_cast<std::size_t>(j)].high)});

  AddHeading(table, {"2. Estimated effects and coefficients"});
  std::vector<std::string> heading = {"Term", "Effect", "Coef", "SS", "SE Coef", "t", "p-value"};
  if (layout.half) heading.push_back("Aliases");
  if (lenth) heading.push_back("Lenth");
  AddHeading(table, heading);
  const auto tested = [&](std::vector<std::string> row, double coef, double se) {
    if (tests) {
      const double t = coef / se;
      row.insert(row.end(), {ShownStatistic(se), ShownStatistic(t),
                             ShownPValue(PValue(TTails(t, static_cast<double>(fit.errorDf)), Alternative::TwoSided))});
    }
    return row;
  };
  const double nf = static_cast<double>(layout.factorialRuns);
  table.AddRow(tested({"Constant", "", ShownStatistic(fit.factorialMean), ""}, fit.factorialMean,
                      std::sqrt(fit.ErrorMS() / nf)));
  for (const FactorialEffect& e : fit.effects) {
    if (!e.inModel) continue;
    std::vector<std::string> row = {TermName(e), ShownStatistic(e.effect), ShownStatistic(e.coef), ShownStatistic(e.ss)};
    if (e.t) row.insert(row.end(), {ShownStatistic(*e.se), ShownStatistic(*e.t), ShownPValue(*e.p)});
    else row.insert(row.end(), {"", "", ""});
    if (layout.half) row.push_back(AliasText(e));
    if (lenth) row.push_back(e.lenthActive ? "Active" : "");
    table.AddRow(std::move(row));
  }
  if (fit.curvatureSS) {
    const double nc = static_cast<double>(layout.centreRuns);
    const double coef = fit.centreMean - fit.factorialMean;
    table.AddRow(tested({"Ct Pt", "", ShownStatistic(coef), ShownStatistic(*fit.curvatureSS)}, coef,
                        std::sqrt(fit.ErrorMS() * (1.0 / nf + 1.0 / nc))));
  }
  if (lenth) {
    table.AddRow({"Lenth's PSE", ShownStatistic(*fit.pse)});
    table.AddRow({"t(1-alpha/2, m/3)", ShownStatistic(fit.margin / *fit.pse), "m/3 = " + ShownStatistic(fit.lenthDf)});
    table.AddRow({"Margin of error", ShownStatistic(fit.margin)});
    std::string active;
    for (const FactorialEffect& e : fit.effects)
      if (e.lenthActive) active += (active.empty() ? "" : ", ") + TermName(e);
    table.AddRow({"Active effects", active.empty() ? "none" : active});
  }

  std::vector<AnovaLine> lines;
  const double mse = fit.ErrorMS();
  const auto line = [&](std::string source, long df, double ss) {
    AnovaLine l{std::move(source), df, ss, ss / static_cast<double>(df), {}, {}};
    if (tests) {
      l.f = *l.ms / mse;
      l.p = FTails(*l.f, static_cast<double>(df), static_cast<double>(fit.errorDf)).upper;
    }
    return l;
  };
  static const char* const kOrders[] = {"", "Main Effects", "2-Way Interactions", "3-Way Interactions",
                                        "4-Way Interactions", "5-Way Interactions"};
  for (int order = 1; order <= k; ++order)
    if (fit.orderDf[static_cast<std::size_t>(order)] > 0)
      lines.push_back(line(kOrders[order], fit.orderDf[static_cast<std::size_t>(order)],
                           fit.orderSS[static_cast<std::size_t>(order)]));
  if (fit.curvatureSS) lines.push_back(line("Curvature", 1, *fit.curvatureSS));
  if (tests) {
    lines.push_back({"Residual Error", fit.errorDf, fit.errorSS, mse, {}, {}});
    if (fit.lackOfFitDf > 0 && fit.pureErrorDf > 0) {
      const double pure_ms = fit.pureErrorSS / static_cast<double>(fit.pureErrorDf);
      AnovaLine lof{"Lack of Fit", fit.lackOfFitDf, fit.lackOfFitSS,
                    fit.lackOfFitSS / static_cast<double>(fit.lackOfFitDf), {}, {}};
      lof.f = *lof.ms / pure_ms;
      lof.p = FTails(*lof.f, static_cast<double>(fit.lackOfFitDf), static_cast<double>(fit.pureErrorDf)).upper;
      lines.push_back(lof);
    }
    if (fit.pureErrorDf > 0)
      lines.push_back({"Pure Error", fit.pureErrorDf, fit.pureErrorSS,
                       fit.pureErrorSS / static_cast<double>(fit.pureErrorDf), {}, {}});
  }
  lines.push_back({"Total", fit.totalDf, fit.totalSS, {}, {}, {}});
  AddAnovaTable(table, "3. Analysis of variance", lines);
  if (tests) {
    const double r2 = 1.0 - fit.errorSS / fit.totalSS;
    table.AddRow({"S", ShownStatistic(std::sqrt(mse))});
    table.AddRow({"R-squared", ShownStatistic(r2)});
    table.AddRow({"R-squared(adj)", ShownStatistic(1.0 - (1.0 - r2) * static_cast<double>(fit.totalDf) /
                                                             static_cast<double>(fit.errorDf))});
  }
  return table;
}

void FactorialAnalysis(shell::Host& host, const worksheet::Worksheet& sheet, const worksheet::SheetDesign& design,
                       const worksheet::DesignColumns& columns) {
  host.Log().AppendSessionLine(kLines.Starting());
  const auto refuse = [&](const char* text) {
    host.Refuse(text);
    host.Log().AppendSessionLine(kLines.cancel);
  };
  const int k = static_cast<int>(design.factors.size());
  if (k < 2 || k > 5) return refuse(kNotTwoLevelDesign);
  auto read_or_refusal = ReadFactorialRuns(sheet, design, columns);
  if (const auto* refusal = std::get_if<const char*>(&read_or_refusal)) return refuse(*refusal);
  const FactorialSheetRuns& read = std::get<FactorialSheetRuns>(read_or_refusal);
  const auto layout = RecognizeLayout(k, read.runs);
  if (!layout) return refuse(kNotTwoLevelDesign);
  if (std::all_of(read.runs.begin(), read.runs.end(),
                  [&](const CodedRun& run) { return run.response == read.runs.front().response; }))
    return refuse(worksheet::messages::kAllDataSame);
  DOEAnalysisForm dialog(k);
  const auto settings = shell::AskParameters(host, dialog);
  if (!settings) return;
  const FactorialFit fit = FitFactorial(*layout, read.runs, settings->maxOrder, settings->alpha);
  shell::ResultWindow window = shell::MakeDataChart(kLines.stem);
  window.commandKey = "DOEAnalysis";
  window.table = MakeTable(fit, read);
  window.charts.front() = EffectsNormalPlot(fit);
  window.charts.push_back(EffectsPareto(fit));
  window.charts.push_back(MainEffectsPlot(fit, read.runs, read.factors));
  window.charts.push_back(InteractionPlot(fit, read.runs, read.factors));
  shell::ShowResultOrFail(host, std::move(window), worksheet::messages::kInputValidData, kLines.cancel);
  host.Log().AppendSessionLine(kLines.Completed());
}

}  // namespace

DOEAnalysisForm::DOEAnalysisForm(int factors) : DialogModel("DOEAnalysisForm", "Factorial ANOVA"), factors_(factors) {
  AddTextBox("alphatxt", "5").caption = "Significance level (%)";
  AddTextBox("MaxOrdertxt", std::to_string(factors)).caption = "Highest interaction order in the model";
  AddCommandButton("CmdOk", "OK");
  AddCommandButton("CmdCancel", "Cancel");
}

bool DOEAnalysisForm::OnOk(shell::Host& host) {
  const auto alpha = worksheet::ParseCellNumber(Control("alphatxt").text);
  const auto order = worksheet::ParseCellNumber(Control("MaxOrdertxt").text);
  if (!alpha || !(*alpha > 0.0 && *alpha < 100.0) || !order || *order != std::floor(*order) || *order < 1.0 ||
      *order > static_cast<double>(factors_)) {
    host.Refuse(kInvalidNumericalData);
    return false;
  }
  result_ = {*alpha / 100.0, static_cast<int>(*order)};
  return true;
}

void DOEAnalysisForm::OnCancel(shell::Host& host) { host.Log().AppendSessionLine(kLines.cancel); }

std::unique_ptr<shell::DialogModel> MakeDOEAnalysisForm() { return std::make_unique<DOEAnalysisForm>(); }

void DOEAnalysisView(shell::Host& host) {
  const worksheet::Worksheet* sheet = host.ActiveWorksheet();
  if (sheet == nullptr) return;
  // The kept design, or, when the sheet has none or its headings were
  // renamed since, the design its headings form.
  std::optional<worksheet::SheetDesign> design = sheet->Design();
  auto columns = design ? worksheet::FindDesignColumns(*sheet, *design) : std::nullopt;
  if (!columns) {
    design = worksheet::RecognizeDesign(*sheet);
    if (design) columns = worksheet::FindDesignColumns(*sheet, *design);
  }
  if (!columns || columns->lastRow < columns->firstRow) return host.Refuse(kNotDesignSheet);
  if (design->kind == worksheet::design_kinds::kFactorial) return FactorialAnalysis(host, *sheet, *design, *columns);
  if (design->kind != worksheet::design_kinds::kOneFactor && design->kind != worksheet::design_kinds::kTwoFactor)
    return host.Refuse(kNotDesignSheet);

  // One- and two-factor sheets: every run needs its response.
  const long response = columns->Of(*design, design->response);
  for (long row = columns->firstRow; row <= columns->lastRow; ++row)
    if (!worksheet::ParseCellNumber(sheet->Text(row, response)))
      return host.Refuse(worksheet::messages::kIncludeImproper);
  // Headings read as row 1 (a sheet exported with its header row) become
  // the columns' header names of a copy, so the reports name the factors.
  std::optional<worksheet::Worksheet> named;
  if (columns->firstRow == 2) {
    named.emplace(*sheet);
    for (long col = 1; col <= named->DataColCnt(); ++col) named->SetColumnHeader(col, std::string(sheet->Text(1, col)));
  }
  const worksheet::Worksheet& source = named ? *named : *sheet;
  const long a = columns->Of(*design, design->factors.at(0).name);
  if (design->factors.size() == 1)
    return OnewayOfDesign(host, source, response, a, columns->firstRow, columns->lastRow);
  TwowayOfDesign(host, source, response, a, columns->Of(*design, design->factors.at(1).name), columns->firstRow,
                 columns->lastRow);
}

}  // namespace orvik::analyses
