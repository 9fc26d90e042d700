#pragma once

#include <memory>

#include "analyses/column_choice.h"
#include "shell/host.h"

namespace orvik::analyses {

struct SimpleRegSettings {
  long responseColumn = 0;   // sheet columns
  long predictorColumn = 0;
  bool noConstant = false;
  double confidencePercent = 95.0;
};

// SimpleReg: the response YColumn (default the block's second column) and
// the predictor XColumn (default its first), the check box NoConstant and
// the confidence of the bands Confidencetxt in percent (default 95, strictly
// between 0 and 100, otherwise "Please, input valid numerical data").
class SimpleReg : public ColumnChoiceDialog {
 public:
  using Parameters = SimpleRegSettings;
  explicit SimpleReg(std::vector<BlockColumn> columns = {});
  const SimpleRegSettings& Result() const { return result_; }

 protected:
  bool OnOk(shell::Host& host) override;

 private:
  SimpleRegSettings result_;
};
std::unique_ptr<shell::DialogModel> MakeSimpleReg();

// Simple linear regression ("mnuSimpleReg"): the equation, coefficients with
// standard errors, t and p, S, R², adjusted R², the analysis-of-variance
// table, unusual observations (standardized residual beyond 2: R; leverage
// above 3 p / n: X); charts of the fitted line with its confidence and
// prediction bands and four residual plots. Rows with a number on one side
// only are left out after the notice "Non-numeric data or empty cell's data
// are elimination". A constant predictor (a vertical line) or, with a
// constant term, a constant response (a horizontal line) is refused with
// "All data are same".
void SimpleRegView(shell::Host& host);

}  // namespace orvik::analyses
