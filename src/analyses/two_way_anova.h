#pragma once

#include <memory>

#include "analyses/column_choice.h"
#include "shell/host.h"

namespace orvik::analyses {

struct TwowaySettings {
  long responseColumn = 0;  // sheet columns
  long rowFactor = 0;
  long columnFactor = 0;
};

// Twoway: the response ResponseColumn and the factors RowFactor and
// ColumnFactor, named by header or letters (defaults the block's first,
// second and third columns).
class Twoway : public ColumnChoiceDialog {
 public:
  using Parameters = TwowaySettings;
  explicit Twoway(std::vector<BlockColumn> columns = {});
  const TwowaySettings& Result() const { return result_; }

 protected:
  bool OnOk(shell::Host& host) override;

 private:
  TwowaySettings result_;
};
std::unique_ptr<shell::DialogModel> MakeTwoway();

// Two-way ANOVA ("mnuTwoway"): balanced data with replication fit the
// interaction, without replication the additive model; unbalanced data (a
// combination of levels without observations, or with a different number
// of them) are refused with kUnbalanced. Report: the analysis-of-variance
// table, S, R², the cell, row and column means; charts: the main-effects
// plots of both factors and the interaction plot. Log lines "Two-way ANOVA
// is starting" / "... is completed"; unusable data "Cancel two-way ANOVA".
inline constexpr const char* kUnbalanced =
    "Unbalanced data: every combination of the two factors needs the same number of observations";
void TwowayView(shell::Host& host);

// The two-way ANOVA of a two-factor design sheet, without the dialog: the
// response and the two factor columns over rows first_row to last_row of
// `sheet` (the factors named by their column headers), with the same
// report, lines and refusals as TwowayView.
void TwowayOfDesign(shell::Host& host, const worksheet::Worksheet& sheet, long response_column, long row_factor,
                    long column_factor, long first_row, long last_row);

}  // namespace orvik::analyses
