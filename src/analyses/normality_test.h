#pragma once

#include <memory>

#include "analyses/analysis_dialog.h"
#include "shell/host.h"

namespace orvik::analyses {

struct NormalTestSettings {
  double alphaPercent = 5.0;
  bool andersonDarling = false;  // otherwise Shapiro-Wilk
};

// NormalTest: the significance level alphatxt in percent (default 5,
// strictly between 0 and 100) and the option buttons ShapiroWilk (chosen)
// and AndersonDarling. Cancel writes "Cancel normality test".
class NormalTest : public AnalysisDialog {
 public:
  using Parameters = NormalTestSettings;
  NormalTest();
  const NormalTestSettings& Result() const { return result_; }

 protected:
  bool OnOk(shell::Host& host) override;

 private:
  NormalTestSettings result_;
};
std::unique_ptr<shell::DialogModel> MakeNormalTest();

// Normality test ("mnuNormalTest") of the numbers of one column, 3 to 5000
// of them: Shapiro-Wilk W (Royston) with its p-value and the decision also
// against the 5 % critical value WValue (asked for n = 49 above 49), or
// Anderson-Darling A² with the small-sample adjustment and its p-value; the
// normal probability plot with the fitted normal line and the statistic on
// the chart. Log lines "Normality test is starting" / "... is completed".
void NormalTestView(shell::Host& host);

}  // namespace orvik::analyses
