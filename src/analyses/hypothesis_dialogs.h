#pragma once

#include <memory>
#include <string>

#include "analyses/analysis_dialog.h"

namespace orvik::analyses {

// The parameters of the 1-sample mean and variance tests: EstSigma /
// Inputsigma with the given sigma in sigmatxt (the mean test only; the
// variance test disables them), the hypothesised mean or variance in
// hypotxt, the significance level alphatxt in percent and the alternative
// TwoSided / Greater / Less. A given sigma that is not a positive number is
// refused and sigmatxt cleared; a hypothesised value that is not a number
// (for the variance, not positive) or a level outside (0, 100) is refused.
// Cancel writes "Cancel hypothesis test for 1-sample".
class MeanHypoth : public AnalysisDialog {
 public:
  using Parameters = OneSampleTestSettings;
  enum class Tested { Mean, Variance };
  explicit MeanHypoth(Tested tested = Tested::Mean);
  const OneSampleTestSettings& Result() const { return result_; }

 protected:
  bool OnOk(shell::Host& host) override;

 private:
  Tested tested_;
  OneSampleTestSettings result_;
};

// The 1-sample proportion test: defectives defecttxt out of sampletxt, the
// hypothesised proportion proportiontxt (strictly between 0 and 1), alphatxt
// and the alternative. Cancel writes "Cancel hypothesis test for 1-sample".
class HypothProportion : public AnalysisDialog {
 public:
  using Parameters = ProportionTestSettings;
  HypothProportion();
  const ProportionTestSettings& Result() const { return result_; }

 protected:
  bool OnOk(shell::Host& host) override;

 private:
  ProportionTestSettings result_;
};

// The 2-sample proportion test: defect1txt of sample1txt, defect2txt of
// sample2txt, alphatxt and the alternative.
class TwoHypothProportion : public AnalysisDialog {
 public:
  using Parameters = TwoProportionTestSettings;
  TwoHypothProportion();
  const TwoProportionTestSettings& Result() const { return result_; }

 protected:
  bool OnOk(shell::Host& host) override;

 private:
  TwoProportionTestSettings result_;
};

// The 2-sample variance, 2-sample t and paired t tests: alphatxt, the
// alternative and, enabled for the 2-sample t test only, the check box
// EqualVar (checked: the pooled form). Cancel writes `cancel_line`.
class TwoHypoth : public AnalysisDialog {
 public:
  using Parameters = TwoSampleTestSettings;
  enum class Tested { Variances, Means, PairedMeans };
  explicit TwoHypoth(Tested tested = Tested::Means, std::string cancel_line = {});
  const TwoSampleTestSettings& Result() const { return result_; }

 protected:
  bool OnOk(shell::Host& host) override;

 private:
  TwoSampleTestSettings result_;
};

std::unique_ptr<shell::DialogModel> MakeMeanHypoth();
std::unique_ptr<shell::DialogModel> MakeHypothProportion();
std::unique_ptr<shell::DialogModel> MakeTwoHypothProportion();
std::unique_ptr<shell::DialogModel> MakeTwoHypoth();

}  // namespace orvik::analyses
