#include "analyses/hypothesis_commands.h"

#include <cmath>

#include "analyses/hypothesis_dialogs.h"
#include "analyses/sample_input.h"
#include "analyses/test_report.h"
#include "analyses/two_column_input.h"
#include "stats/decimal_numbers.h"

namespace orvik::analyses {

namespace {

const SessionLines kMeanLines{"Hypothesis test for 1-sample mean", "Cancel hypothesis test for 1-sample"};
const SessionLines kVarianceLines{"Hypothesis test for 1-sample variance", "Cancel hypothesis test for 1-sample"};
const SessionLines kProportionLines{"Hypothesis test for 1-sample proportion", "Cancel hypothesis test for 1-sample"};
const SessionLines kTwoProportionLines{"Hypothesis test for 2-sample proportion", ""};
const SessionLines kTwoVarianceLines{"Hypothesis test for 2-sample variance",
                                     "Cancel hypothesis test for 2-sample variance"};
const SessionLines kTwoMeanLines{"Hypothesis for 2-sample mean(2-sample t test)",
                                 "Cancel hypothesis for 2-sample mean(2-sample t test)"};
const SessionLines kPairedLines{"Hypothesis for 2-sample mean(paired t test)",
                                "Cancel hypothesis for 2-sample mean(paired t test)"};

constexpr const char* kImproperPaired = "Improper data for Hypothesis for 2-sample mean(paired t test)";

// Shows the report, or fails the run when the statistic could not be
// formed (a sample without spread divides by zero).
void Conclude(shell::Host& host, const SessionLines& lines, const TestReport& report,
              const std::vector<std::pair<const char*, SampleSummary>>& blocks) {
  if (!std::isfinite(report.statistic.value) || !std::isfinite(report.statistic.pValue))
    return FailRun(host, lines);
  shell::ResultTable table = TestTable(report);
  for (const auto& [heading, summary] : blocks) AddDescriptiveBlock(table, heading, summary);
  ShowReport(host, lines, std::move(table));
}

// The two columns of a 2-sample test after the starting line: a column
// without numbers fails the run, one with a single number is too small.
std::optional<std::pair<SampleSummary, SampleSummary>> ReadTwoSamples(shell::Host& host, const SessionLines& lines) {
  host.Log().AppendSessionLine(lines.Starting());
  const worksheet::Worksheet* sheet = host.ActiveWorksheet();
  if (sheet == nullptr) {
    FailRun(host, lines);
    return std::nullopt;
  }
  const auto samples = ColumnSamples(*sheet, host.CurrentSelection());
  if (samples[0].empty() || samples[1].empty()) {
    FailRun(host, lines);
    return std::nullopt;
  }
  if (samples[0].size() < 2 || samples[1].size() < 2) {
    host.Refuse(worksheet::messages::kNotEnoughData);
    return std::nullopt;
  }
  return std::make_pair(SummariseForInference(samples[0]), SummariseForInference(samples[1]));
}

std::optional<TwoSampleTestSettings> AskTwoSampleTest(shell::Host& host, TwoHypoth::Tested tested,
                                                      const SessionLines& lines) {
  TwoHypoth dialog(tested, lines.cancel);
  return shell::AskParameters(host, dialog);
}

}  // namespace

void MeanHypothesis(shell::Host& host) {
  const auto sample = ReadOneSample(host, kMeanLines);
  if (!sample) return;
  MeanHypoth dialog(MeanHypoth::Tested::Mean);
  const auto settings = shell::AskParameters(host, dialog);
  if (!settings) return;
  const OneSampleTestSettings& s = *settings;
  TestReport report;
  report.hypotheses = MakeHypotheses("mu", kSpacedOperators, stats::FormatNumber(s.hypothesised), s.alternative);
  report.statisticLabel = s.sigma ? "Z = " : "t = ";
  report.statistic = OneSampleMeanTest(*sample, s.hypothesised, s.sigma, s.alternative);
  report.alphaPercent = s.alphaPercent;
  Conclude(host, kMeanLines, report, {{"Descriptive statistics", *sample}});
}

void VarianceHypothesis(shell::Host& host) {
  const auto sample = ReadOneSample(host, kVarianceLines);
  if (!sample) return;
  MeanHypoth dialog(MeanHypoth::Tested::Variance);
  const auto settings = shell::AskParameters(host, dialog);
  if (!settings) return;
  const OneSampleTestSettings& s = *settings;
  TestReport report;
  report.hypotheses =
      MakeHypotheses("sigma^2", kSpacedOperators, stats::FormatNumber(s.hypothesised), s.alternative);
  report.statisticHeading = "2. Test statistic";
  report.statisticLabel = "Chi-Square = ";
  report.statistic = OneSampleVarianceTest(*sample, s.hypothesised, s.alternative);
  report.alphaPercent = s.alphaPercent;
  Conclude(host, kVarianceLines, report, {{"Descriptive statistics", *sample}});
}

void ProportionHypothesis(shell::Host& host) {
  host.Log().AppendSessionLine(kProportionLines.Starting());
  HypothProportion dialog;
  const auto settings = shell::AskParameters(host, dialog);
  if (!settings) return;
  const ProportionTestSettings& s = *settings;
  TestReport report;
  report.hypotheses = MakeHypotheses("p", kSpacedOperators, stats::FormatNumber(s.hypothesised), s.alternative);
  report.statisticLabel = "Z = ";
  report.statistic = OneProportionTest(s.counts, s.hypothesised, s.alternative);
  report.alphaPercent = s.alphaPercent;
  Conclude(host, kProportionLines, report, {});
}

void TwoProportionHypothesis(shell::Host& host) {
  host.Log().AppendSessionLine(kTwoProportionLines.Starting());
  TwoHypothProportion dialog;
  const auto settings = shell::AskParameters(host, dialog);
  if (!settings) return;
  const TwoProportionTestSettings& s = *settings;
  TestReport report;
  report.hypotheses = MakeHypotheses("Proportion differnce", kSpacedOperators, "0", s.alternative);
  report.statisticLabel = "Z = ";
  report.statistic = TwoProportionTest(s.first, s.second, s.alternative);
  report.alphaPercent = s.alphaPercent;
  Conclude(host, kTwoProportionLines, report, {});
}

void TwoHypothVariance(shell::Host& host) {
  if (!ResolveTwoColumns(host)) return;
  const auto samples = ReadTwoSamples(host, kTwoVarianceLines);
  if (!samples) return;
  const auto settings = AskTwoSampleTest(host, TwoHypoth::Tested::Variances, kTwoVarianceLines);
  if (!settings) return;
  const TwoSampleTestSettings& s = *settings;
  TestReport report;
  report.hypotheses = MakeHypotheses("sigma^2_1", kJoinedOperators, "sigma^2_2", s.alternative);
  report.statisticLabel = "F = ";
  report.resultLabel = "Reault";
  report.statistic = TwoVarianceTest(samples->first, samples->second, s.alternative);
  report.alphaPercent = s.alphaPercent;
  Conclude(host, kTwoVarianceLines, report, {{"Population 1", samples->first}, {"Population 2", samples->second}});
}

void TwoHypothMean(shell::Host& host) {
  if (!ResolveTwoColumns(host)) return;
  const auto samples = ReadTwoSamples(host, kTwoMeanLines);
  if (!samples) return;
  const auto settings = AskTwoSampleTest(host, TwoHypoth::Tested::Means, kTwoMeanLines);
  if (!settings) return;
  const TwoSampleTestSettings& s = *settings;
  TestReport report;
  report.hypotheses = MakeHypotheses("mu1", kJoinedOperators, "mu2", s.alternative);
  report.statisticLabel = "t = ";
  report.statisticNote = s.equalVariance ? "(Assume equal variance)" : "(Assume unequal variance)";
  report.statistic = TwoMeanTest(samples->first, samples->second, s.equalVariance, s.alternative);
  report.alphaPercent = s.alphaPercent;
  Conclude(host, kTwoMeanLines, report, {{"Population 1", samples->first}, {"Population 2", samples->second}});
}

void TwoHypothPairedMean(shell::Host& host) {
  if (!ResolveTwoColumns(host)) return;
  host.Log().AppendSessionLine(kPairedLines.Starting());
  const worksheet::Worksheet* sheet = host.ActiveWorksheet();
  const PairedColumns pairs = sheet ? PairedRows(*sheet, host.CurrentSelection()) : PairedColumns{};
  if (pairs.unmatched || pairs.first.size() < 2) {
    host.Refuse(kImproperPaired);
    host.Log().AppendSessionLine(kPairedLines.cancel);
    return;
  }
  const auto settings = AskTwoSampleTest(host, TwoHypoth::Tested::PairedMeans, kPairedLines);
  if (!settings) return;
  const std::vector<double> differences = Differences(pairs);
  const TwoSampleTestSettings& s = *settings;
  TestReport report;
  report.hypotheses = MakeHypotheses("Difference of means(μD)", kPairedOperators, "0", s.alternative);
  report.statisticLabel = "t = ";
  report.statistic = PairedTest(SummariseForInference(differences), s.alternative);
  report.alphaPercent = s.alphaPercent;
  Conclude(host, kPairedLines, report,
           {{"Population 1", SummariseForInference(pairs.first)}, {"Smaple 2", SummariseForInference(pairs.second)}});
}

}  // namespace orvik::analyses
