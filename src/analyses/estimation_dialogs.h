#pragma once

#include <memory>

#include "analyses/analysis_dialog.h"

namespace orvik::analyses {

// The sigma of the 1-sample mean interval: EstSigma / Inputsigma and the
// given sigma in sigmatxt. OK stores into the program's estimation settings;
// a given sigma that is empty or not positive is refused and the dialog
// stays open. Cancel writes "Cancel estimation for 1-sample mean".
class Estimation : public AnalysisDialog {
 public:
  Estimation();

 protected:
  bool OnOk(shell::Host& host) override;
};

// The sigmas of the 2-sample mean interval: EstSigma / Inputsigma and the
// given sigmas in sigma1txt and sigma2txt. Cancel writes
// "Cancel estimation for 2-sample mean".
class TwoEstimation : public AnalysisDialog {
 public:
  TwoEstimation();

 protected:
  bool OnOk(shell::Host& host) override;
};

// The counts of the 1-sample proportion: defectives in defecttxt out of the
// sample size in sampletxt.
class Proportions : public AnalysisDialog {
 public:
  Proportions();

 protected:
  bool OnOk(shell::Host& host) override;
};

// The counts of the two samples: defect1txt of sample1txt, defect2txt of
// sample2txt.
class TwoProportions : public AnalysisDialog {
 public:
  TwoProportions();

 protected:
  bool OnOk(shell::Host& host) override;
};

std::unique_ptr<shell::DialogModel> MakeEstimation();
std::unique_ptr<shell::DialogModel> MakeTwoEstimation();
std::unique_ptr<shell::DialogModel> MakeProportions();
std::unique_ptr<shell::DialogModel> MakeTwoProportions();

}  // namespace orvik::analyses
