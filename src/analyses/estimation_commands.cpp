#include "analyses/estimation_commands.h"

#include "analyses/estimation_dialogs.h"
#include "analyses/interval_estimation.h"
#include "analyses/sample_input.h"
#include "analyses/two_column_input.h"

namespace orvik::analyses {

namespace {

const SessionLines kMeanLines{"Estimation for 1-sample mean", "Cancel estimation for 1-sample mean"};
const SessionLines kVarianceLines{"Estimation for 1-sample variance", "Cancel estimation for 1-sample variance"};
const SessionLines kProportionLines{"Estimation for 1-sample proportion", ""};
const SessionLines kDiffMeanSelectionLines{"Estimation for 2-sample mean", "Cancel estimation for 2-sample mean"};
const SessionLines kDiffMeanLines{"Estimation for 2-sample mean(2-sample estimation)",
                                  "Cancel estimation for 2-sample mean(2-sample estimation)"};
const SessionLines kPairedLines{"Estimation for 2-sample mean(paired t estimation)",
                                "Cancel estimation for 2-sample mean(paired t estimation)"};
const SessionLines kRatioLines{"Estimation for 2-sample variance", "Cancel estimation for 2-sample variance"};
const SessionLines kTwoProportionLines{"Estimation for 2-sample proportion", ""};

constexpr const char* kImproperDiffMean = "Improper data for estimation for 2-sample mean(2-sample estimation)";
constexpr const char* kImproperPaired = "Improper data for paired t estimation";
constexpr const char* kImproperRatio = "Improper data for estimation for 2-sample variance";

// Unusable data: its message, then the cancel line.
void RefuseImproper(shell::Host& host, const char* message, const SessionLines& lines) {
  host.Refuse(message);
  host.Log().AppendSessionLine(lines.cancel);
}

}  // namespace

void MeanEstimation(shell::Host& host) {
  const auto sample = ReadOneSample(host, kMeanLines);
  if (!sample) return;
  Estimation dialog;
  const auto settings = shell::AskParameters(host, dialog);
  if (!settings) return;
  ShowReport(host, kMeanLines, MeanEstimationTable(*sample, settings->sigma));
}

void VarianceEstimation(shell::Host& host) {
  const auto sample = ReadOneSample(host, kVarianceLines);
  if (!sample) return;
  ShowReport(host, kVarianceLines, VarianceEstimationTable(*sample));
}

void ProportionEstimation(shell::Host& host) {
  host.Log().AppendSessionLine(kProportionLines.Starting());
  Proportions dialog;
  const auto settings = shell::AskParameters(host, dialog);
  if (!settings) return;
  ShowReport(host, kProportionLines, ProportionEstimationTable(settings->counts));
}

void DiffMeanSelection(shell::Host& host) {
  if (!ResolveTwoColumns(host)) return;
  host.Log().AppendSessionLine(kDiffMeanSelectionLines.Starting());
  TwoEstimation dialog;
  const auto settings = shell::AskParameters(host, dialog);
  if (!settings) return;
  DiffMeanView(host, *settings);
}

void DiffMeanView(shell::Host& host, const DiffMeanIntervalSettings& settings) {
  host.Log().AppendSessionLine(kDiffMeanLines.Starting());
  const worksheet::Worksheet* sheet = host.ActiveWorksheet();
  if (sheet == nullptr) return RefuseImproper(host, kImproperDiffMean, kDiffMeanLines);
  const auto samples = ColumnSamples(*sheet, host.CurrentSelection());
  // Each sample needs two values for its variance, also when sigma is given,
  // since the report shows both samples' standard deviations.
  if (samples[0].size() < 2 || samples[1].size() < 2) return RefuseImproper(host, kImproperDiffMean, kDiffMeanLines);
  ShowReport(host, kDiffMeanLines,
             DiffMeanTable(SummariseForInference(samples[0]), SummariseForInference(samples[1]), settings.sigmas));
}

void PairedDiffMean(shell::Host& host) {
  if (!ResolveTwoColumns(host)) return;
  host.Log().AppendSessionLine(kPairedLines.Starting());
  const worksheet::Worksheet* sheet = host.ActiveWorksheet();
  if (sheet == nullptr) return RefuseImproper(host, kImproperPaired, kPairedLines);
  const PairedColumns pairs = PairedRows(*sheet, host.CurrentSelection());
  // A value without its partner cannot be paired: refusing is safer than
  // silently dropping a measurement.
  if (pairs.unmatched || pairs.first.size() < 2) return RefuseImproper(host, kImproperPaired, kPairedLines);
  const std::vector<double> differences = Differences(pairs);
  ShowReport(host, kPairedLines,
             PairedDiffMeanTable(SummariseForInference(differences), SummariseForInference(pairs.first),
                                 SummariseForInference(pairs.second)));
}

void RatioVariance(shell::Host& host) {
  if (!ResolveTwoColumns(host)) return;
  host.Log().AppendSessionLine(kRatioLines.Starting());
  const worksheet::Worksheet* sheet = host.ActiveWorksheet();
  if (sheet == nullptr) return RefuseImproper(host, kImproperRatio, kRatioLines);
  const auto samples = ColumnSamples(*sheet, host.CurrentSelection());
  // A column without any number is unusable; one with a single number is
  // too small for a variance.
  if (samples[0].empty() || samples[1].empty()) return RefuseImproper(host, kImproperRatio, kRatioLines);
  if (samples[0].size() < 2 || samples[1].size() < 2) return host.Refuse(worksheet::messages::kNotEnoughData);
  const SampleSummary first = SummariseForInference(samples[0]);
  const SampleSummary second = SummariseForInference(samples[1]);
  // The ratio cannot be formed over a second sample without spread.
  if (second.variance == 0.0) return RefuseImproper(host, kImproperRatio, kRatioLines);
  ShowReport(host, kRatioLines, RatioVarianceTable(first, second));
}

void TwoProportionEstimation(shell::Host& host) {
  host.Log().AppendSessionLine(kTwoProportionLines.Starting());
  TwoProportions dialog;
  const auto settings = shell::AskParameters(host, dialog);
  if (!settings) return;
  ShowReport(host, kTwoProportionLines, TwoProportionTable(settings->first, settings->second));
}

}  // namespace orvik::analyses
