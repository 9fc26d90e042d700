#pragma once

#include <memory>

#include "shell/dialog_model.h"

namespace orvik::shell {
class Host;
}

namespace orvik::analyses {

// The refusal of a sheet whose runs are not a two-level design: a factor
// setting other than the low, high or middle value, a run mixing centre and
// corner settings, or design points missing or run unequally often.
inline constexpr const char* kNotTwoLevelDesign = "The runs do not form a two-level factorial design";
// The refusal of a worksheet that is no design sheet and whose headings do
// not form one.
inline constexpr const char* kNotDesignSheet =
    "Analyze a design sheet: columns StdOrder, RunOrder, (Label,) the factors and Response";

struct FactorialAnalysisSettings {
  double alpha = 0.05;  // a fraction
  int maxOrder = 0;
};

// DOEAnalysisForm: alphatxt, the significance level in percent ("5",
// strictly between 0 and 100), and MaxOrdertxt, the highest order of the
// effects in the model (1 to the number of factors; its default, the number
// of factors, keeps every effect). A refused entry shows "Please, input
// valid numerical data"; cancel writes "Cancel Factorial ANOVA".
class DOEAnalysisForm : public shell::DialogModel {
 public:
  using Parameters = FactorialAnalysisSettings;
  explicit DOEAnalysisForm(int factors = 5);
  const FactorialAnalysisSettings& Result() const { return result_; }

 protected:
  bool OnOk(shell::Host& host) override;
  void OnCancel(shell::Host& host) override;

 private:
  int factors_;
  FactorialAnalysisSettings result_;
};

std::unique_ptr<shell::DialogModel> MakeDOEAnalysisForm();

// DOEAnalysis, the analysis of the active design sheet (or of a worksheet
// whose headings form one). One- and two-factor sheets run the one-way and
// two-way ANOVA on their columns. A two-level factorial sheet: "Factorial
// ANOVA is starting", its factor columns coded from their values (low -1,
// high +1, middle 0), the dialog, then the effects and coefficients, the
// analysis of variance with curvature, lack of fit and pure error, Lenth's
// margin of error for unreplicated designs, and four charts: the normal
// probability plot of the effects, the Pareto chart of the standardized
// effects, the main-effects and the interaction plots; "Factorial ANOVA is
// completed". Empty or non-numeric responses or settings are refused with
// "Include improper data or null cells".
void DOEAnalysisView(shell::Host& host);

}  // namespace orvik::analyses
