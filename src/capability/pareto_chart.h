#pragma once

#include <string>
#include <vector>

#include "shell/host.h"
#include "shell/result_window.h"

namespace orvik::capability {

// One row of a Pareto table.
struct ParetoRow {
  std::string item;  // trimmed of blanks
  double quantity = 0.0;
  double percent = 0.0;             // rounded to 4 decimals
  double cumulativeQuantity = 0.0;
  double cumulativePercent = 0.0;   // rounded to 4 decimals
};

// An item and its quantity as read from the worksheet, in worksheet order.
struct ParetoEntry {
  std::string item;
  double quantity = 0.0;
};

// Orders the entries for the chart: every entry named "Other" is pooled into
// one row that comes last (when its total is above zero) whatever its size;
// the rest are sorted by quantity, largest first, equal quantities keeping
// their worksheet order. Then percentages and running sums are filled in.
// The total must be above zero.
std::vector<ParetoRow> ParetoRows(const std::vector<ParetoEntry>& entries);

// The DataChart window of a Pareto table: the six-column grid, the
// quantities as bars in row order and the cumulative percentage as a line on
// the right-hand axis.
shell::ResultWindow ParetoSelectView(const std::vector<ParetoRow>& rows);

// The command "mnuPareto": reads two columns (items, quantities) of the
// selected block and shows their Pareto chart.
void ParetoSelection(shell::Host& host);

}  // namespace orvik::capability
