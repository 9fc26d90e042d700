#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "shell/dialog_model.h"
#include "shell/host.h"
#include "worksheet/data_selection.h"

namespace orvik::charts {

// Subgroups in rows: each row of the block, walked with the row step, is
// one subgroup; its observations are the row's cells walked with the column
// step. Every subgroup has the block's column count n of observations.
struct Subgroups {
  long size = 0;               // n
  std::vector<double> values;  // subgroup after subgroup, n values each
  long Count() const { return size == 0 ? 0 : static_cast<long>(values.size()) / size; }
};

// Reads the subgroups of `selection`. Returns nothing when a cell of the
// block is empty or not numeric: the factors assume subgroups of equal
// size, and a subgroup quietly shortened by a missing measurement would be
// charted against the wrong limits, so the chart refuses such a block.
std::optional<Subgroups> ReadSubgroups(const worksheet::Worksheet& sheet, const worksheet::DataSelection& selection);

// What the column dialog `Selection` confirms: the first and last column of
// the subgroups.
struct SubgroupColumns {
  long first = 0;
  long last = 0;
};

// The column dialog `Selection` that the xbar-R, xbar-s and x-MR charts open
// first. FirstColtxt and LastColtxt hold the first and last column of the
// subgroups (letters such as "B" or numbers); they start with the selected
// block's columns, and OK with them unchanged, or empty, confirms the
// block's columns. Cancel writes "Cancel Subgroup selection".
class SubgroupSelection : public shell::DialogModel {
 public:
  using Parameters = SubgroupColumns;

  SubgroupSelection();
  // Shows the block's columns.
  void Prefill(const worksheet::DataSelection& selection);
  // The columns OK confirmed; valid after an accepted OK.
  const SubgroupColumns& Result() const { return result_; }

 protected:
  bool OnOk(shell::Host& host) override;
  void OnCancel(shell::Host& host) override;

 private:
  SubgroupColumns result_;
};

std::unique_ptr<shell::DialogModel> MakeSubgroupSelection();

// Column letters or a column number to a column number; nothing for a text
// that is neither.
std::optional<long> ParseColumn(const std::string& text);

// The input steps of a variables chart: resolve the block, read and check
// it (`read_and_check` shows its own refusal and returns false), write the
// starting line of chart `name`, and where the chart has it open the column
// dialog, re-reading the block when the user changed its columns. Returns
// false when the chart ends here.
bool PrepareChartInput(shell::Host& host, const std::string& name, bool opens_selection,
                       const std::function<bool()>& read_and_check);

}  // namespace orvik::charts
