#include "analyses/estimation_dialogs.h"

#include "shell/host.h"

namespace orvik::analyses {

// The proportion dialogs have no cancel line of their own: closing them
// leaves the starting line as the only trace of the command.
Estimation::Estimation()
    : AnalysisDialog("Estimation", "Estimation for 1-sample mean", "Cancel estimation for 1-sample mean") {
  AddSigmaChoice({"sigmatxt"});
  AddOkCancel();
}

bool Estimation::OnOk(shell::Host& host) {
  if (SigmaEstimated()) {
    result_.sigma.reset();
    return true;
  }
  const auto sigma = PositiveNumber("sigmatxt");
  if (!sigma) {
    host.Refuse(kInvalidNumericalData);
    return false;
  }
  result_.sigma = *sigma;
  return true;
}

TwoEstimation::TwoEstimation()
    : AnalysisDialog("TwoEstimation", "Estimation for 2-sample mean", "Cancel estimation for 2-sample mean") {
  AddSigmaChoice({"sigma1txt", "sigma2txt"});
  AddOkCancel();
}

bool TwoEstimation::OnOk(shell::Host& host) {
  if (SigmaEstimated()) {
    result_.sigmas.reset();
    return true;
  }
  const auto sigma1 = PositiveNumber("sigma1txt");
  const auto sigma2 = PositiveNumber("sigma2txt");
  if (!sigma1 || !sigma2) {
    host.Refuse(kInvalidNumericalData);
    return false;
  }
  result_.sigmas = std::make_pair(*sigma1, *sigma2);
  return true;
}

Proportions::Proportions() : AnalysisDialog("Proportions", "Estimation for 1-sample proportion", "") {
  AddTextBox("defecttxt").caption = "Number of defectives";
  AddTextBox("sampletxt").caption = "Sample size";
  AddOkCancel();
}

bool Proportions::OnOk(shell::Host& host) {
  const auto counts = Counts("defecttxt", "sampletxt");
  if (!counts) {
    host.Refuse(kInvalidNumericalData);
    return false;
  }
  result_.counts = *counts;
  return true;
}

TwoProportions::TwoProportions() : AnalysisDialog("TwoProportions", "Estimation for 2-sample proportion", "") {
  AddTextBox("defect1txt").caption = "Number of defectives (sample 1)";
  AddTextBox("sample1txt").caption = "Sample size (sample 1)";
  AddTextBox("defect2txt").caption = "Number of defectives (sample 2)";
  AddTextBox("sample2txt").caption = "Sample size (sample 2)";
  AddOkCancel();
}

bool TwoProportions::OnOk(shell::Host& host) {
  const auto first = Counts("defect1txt", "sample1txt");
  const auto second = Counts("defect2txt", "sample2txt");
  if (!first || !second) {
    host.Refuse(kInvalidNumericalData);
    return false;
  }
  result_ = {*first, *second};
  return true;
}

std::unique_ptr<shell::DialogModel> MakeEstimation() { return std::make_unique<Estimation>(); }
std::unique_ptr<shell::DialogModel> MakeTwoEstimation() { return std::make_unique<TwoEstimation>(); }
std::unique_ptr<shell::DialogModel> MakeProportions() { return std::make_unique<Proportions>(); }
std::unique_ptr<shell::DialogModel> MakeTwoProportions() { return std::make_unique<TwoProportions>(); }

}  // namespace orvik::analyses
