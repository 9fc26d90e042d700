#pragma once

#include <memory>

#include "analyses/column_choice.h"
#include "shell/host.h"

namespace orvik::analyses {

// How the one-way analysis reads its groups.
struct OnewaySettings {
  bool stacked = false;
  long responseColumn = 0;  // sheet columns, stacked data only
  long factorColumn = 0;
};

// Oneway: option buttons Unstacked (chosen: each column of the block is a
// group) and Stacked (a response column and a factor column, named in
// ResponseColumn and FactorColumn, which are enabled only then; defaults
// the block's first and second columns).
class Oneway : public ColumnChoiceDialog {
 public:
  using Parameters = OnewaySettings;
  explicit Oneway(std::vector<BlockColumn> columns = {});
  const OnewaySettings& Result() const { return result_; }

 protected:
  void OnClick(const std::string& control) override;
  bool OnOk(shell::Host& host) override;

 private:
  void UpdateBoxes();
  OnewaySettings result_;
};
std::unique_ptr<shell::DialogModel> MakeOneway();

// One-way ANOVA ("mnuOneway"): the analysis-of-variance table, S and R²,
// the level means with their 95 % intervals from the pooled S, Tukey's
// simultaneous comparisons, and the interval plot. Log lines "One-way
// ANOVA is starting" / "... is completed"; a cancelled dialog writes
// "Cancel selection of variables", data it cannot use "Cancel one-way
// ANOVA" after the refusal.
void OnewayView(shell::Host& host);

// The one-way ANOVA of a one-factor design sheet, without the dialog: the
// response and factor columns over rows first_row to last_row of `sheet`
// (the factor named by its column header), with the same report, lines
// and refusals as OnewayView.
void OnewayOfDesign(shell::Host& host, const worksheet::Worksheet& sheet, long response_column, long factor_column,
                    long first_row, long last_row);

}  // namespace orvik::analyses
