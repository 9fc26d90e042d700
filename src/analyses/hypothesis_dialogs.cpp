#include "analyses/hypothesis_dialogs.h"

#include "shell/host.h"

namespace orvik::analyses {

namespace {

constexpr const char* kOneSampleCancelLine = "Cancel hypothesis test for 1-sample";

}  // namespace

MeanHypoth::MeanHypoth(Tested tested)
    : AnalysisDialog("MeanHypoth",
                     tested == Tested::Mean ? "Hypothesis test for 1-sample mean"
                                            : "Hypothesis test for 1-sample variance",
                     kOneSampleCancelLine),
      tested_(tested) {
  AddSigmaChoice({"sigmatxt"});
  AddTextBox("hypotxt").caption = tested == Tested::Mean ? "Hypothesised mean" : "Hypothesised variance";
  AddAlternativeChoice();
  AddOkCancel();
  EnableSigmaChoice(tested == Tested::Mean);
}

bool MeanHypoth::OnOk(shell::Host& host) {
  const bool estimate = tested_ == Tested::Variance || SigmaEstimated();
  const auto sigma = PositiveNumber("sigmatxt");
  if (!estimate && !sigma) {
    MutableControl("sigmatxt").text.clear();
    host.Refuse(kInvalidNumericalData);
    return false;
  }
  const auto hypothesised = tested_ == Tested::Mean ? Number("hypotxt") : PositiveNumber("hypotxt");
  const auto alpha = AlphaPercent();
  if (!hypothesised || !alpha) {
    host.Refuse(kInvalidNumericalData);
    return false;
  }
  result_.sigma = estimate ? std::nullopt : sigma;
  result_.hypothesised = *hypothesised;
  result_.alphaPercent = *alpha;
  result_.alternative = ChosenAlternative();
  return true;
}

HypothProportion::HypothProportion()
    : AnalysisDialog("HypothProportion", "Hypothesis test for 1-sample proportion", kOneSampleCancelLine) {
  AddTextBox("defecttxt").caption = "Number of defectives";
  AddTextBox("sampletxt").caption = "Sample size";
  AddTextBox("proportiontxt").caption = "Hypothesised proportion";
  AddAlternativeChoice();
  AddOkCancel();
}

bool HypothProportion::OnOk(shell::Host& host) {
  const auto counts = Counts("defecttxt", "sampletxt");
  const auto p0 = Number("proportiontxt");
  const auto alpha = AlphaPercent();
  // The statistic divides by p0 (1 - p0), so p0 must lie strictly inside (0, 1).
  if (!counts || !p0 || !(*p0 > 0.0 && *p0 < 1.0) || !alpha) {
    host.Refuse(kInvalidNumericalData);
    return false;
  }
  result_ = {*counts, *p0, *alpha, ChosenAlternative()};
  return true;
}

// The 2-sample proportion test has no cancel line of its own.
TwoHypothProportion::TwoHypothProportion()
    : AnalysisDialog("TwoHypothProportion", "Hypothesis test for 2-sample proportion", "") {
  AddTextBox("defect1txt").caption = "Number of defectives (sample 1)";
  AddTextBox("sample1txt").caption = "Sample size (sample 1)";
  AddTextBox("defect2txt").caption = "Number of defectives (sample 2)";
  AddTextBox("sample2txt").caption = "Sample size (sample 2)";
  AddAlternativeChoice();
  AddOkCancel();
}

bool TwoHypothProportion::OnOk(shell::Host& host) {
  const auto first = Counts("defect1txt", "sample1txt");
  const auto second = Counts("defect2txt", "sample2txt");
  const auto alpha = AlphaPercent();
  if (!first || !second || !alpha) {
    host.Refuse(kInvalidNumericalData);
    return false;
  }
  result_ = {*first, *second, *alpha, ChosenAlternative()};
  return true;
}

TwoHypoth::TwoHypoth(Tested tested, std::string cancel_line)
    : AnalysisDialog("TwoHypoth", "Hypothesis test for 2 samples", std::move(cancel_line)) {
  AddAlternativeChoice();
  AddCheckBox("EqualVar", true).caption = "Assume equal variances";
  MutableControl("EqualVar").enabled = tested == Tested::Means;
  AddOkCancel();
}

bool TwoHypoth::OnOk(shell::Host& host) {
  const auto alpha = AlphaPercent();
  if (!alpha) {
    host.Refuse(kInvalidNumericalData);
    return false;
  }
  result_ = {*alpha, ChosenAlternative(), Control("EqualVar").checked};
  return true;
}

std::unique_ptr<shell::DialogModel> MakeMeanHypoth() { return std::make_unique<MeanHypoth>(); }
std::unique_ptr<shell::DialogModel> MakeHypothProportion() { return std::make_unique<HypothProportion>(); }
std::unique_ptr<shell::DialogModel> MakeTwoHypothProportion() { return std::make_unique<TwoHypothProportion>(); }
std::unique_ptr<shell::DialogModel> MakeTwoHypoth() { return std::make_unique<TwoHypoth>(); }

}  // namespace orvik::analyses
