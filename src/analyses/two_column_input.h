#pragma once

#include <array>
#include <vector>

#include "worksheet/data_selection.h"
#include "worksheet/worksheet.h"

namespace orvik::analyses {

// The numbers of the block's first two columns in walking order (a block
// dragged from right to left has its right column first), each column read
// along the row step with empty and non-numeric cells skipped. A column the
// block does not reach comes back empty.
std::array<std::vector<double>, 2> ColumnSamples(const worksheet::Worksheet& sheet,
                                                 const worksheet::DataSelection& selection);

// The rows of the block's first two columns taken as pairs. A row whose two
// cells are both not numeric (a blank line) is passed over; a row with a
// number on one side only makes the pairing unusable.
struct PairedColumns {
  std::vector<double> first;
  std::vector<double> second;
  bool unmatched = false;
};
PairedColumns PairedRows(const worksheet::Worksheet& sheet, const worksheet::DataSelection& selection);

// The row differences first - second of the pairs.
std::vector<double> Differences(const PairedColumns& pairs);

}  // namespace orvik::analyses
