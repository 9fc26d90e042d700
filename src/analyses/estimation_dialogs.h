#pragma once

#include <memory>

#include "analyses/analysis_dialog.h"

namespace orvik::analyses {

// The sigma of the 1-sample mean interval: EstSigma / Inputsigma and the
// given sigma in sigmatxt. OK confirms the choice as its record; a given
// sigma that is empty or not positive is refused and the dialog stays open.
// Cancel writes "Cancel estimation for 1-sample mean".
class Estimation : public AnalysisDialog {
 public:
  using Parameters = MeanIntervalSettings;
  Estimation();
  const MeanIntervalSettings& Result() const { return result_; }

 protected:
  bool OnOk(shell::Host& host) override;

 private:
  MeanIntervalSettings result_;
};

// The sigmas of the 2-sample mean interval: EstSigma / Inputsigma and the
// given sigmas in sigma1txt and sigma2txt. Cancel writes
// "Cancel estimation for 2-sample mean".
class TwoEstimation : public AnalysisDialog {
 public:
  using Parameters = DiffMeanIntervalSettings;
  TwoEstimation();
  const DiffMeanIntervalSettings& Result() const { return result_; }

 protected:
  bool OnOk(shell::Host& host) override;

 private:
  DiffMeanIntervalSettings result_;
};

// The counts of the 1-sample proportion: defectives in defecttxt out of the
// sample size in sampletxt.
class Proportions : public AnalysisDialog {
 public:
  using Parameters = ProportionIntervalSettings;
  Proportions();
  const ProportionIntervalSettings& Result() const { return result_; }

 protected:
  bool OnOk(shell::Host& host) override;

 private:
  ProportionIntervalSettings result_;
};

// The counts of the two samples: defect1txt of sample1txt, defect2txt of
// sample2txt.
class TwoProportions : public AnalysisDialog {
 public:
  using Parameters = TwoProportionIntervalSettings;
  TwoProportions();
  const TwoProportionIntervalSettings& Result() const { return result_; }

 protected:
  bool OnOk(shell::Host& host) override;

 private:
  TwoProportionIntervalSettings result_;
};

std::unique_ptr<shell::DialogModel> MakeEstimation();
std::unique_ptr<shell::DialogModel> MakeTwoEstimation();
std::unique_ptr<shell::DialogModel> MakeProportions();
std::unique_ptr<shell::DialogModel> MakeTwoProportions();

}  // namespace orvik::analyses
