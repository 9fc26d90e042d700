#pragma once

#include <optional>
#include <string_view>

#include "worksheet/worksheet.h"

namespace orvik::cli {

// Reads a range in spreadsheet notation into the selection fields a user's
// drag would set; the first corner is where the drag began:
//   "B2:D20" a block, "D20:B2" the same block dragged the other way,
//   "B:D" whole columns (row fields -1), "3:7" whole rows (column fields -1),
//   "all" the whole sheet (all four -1), "B2" a block of one cell.
// Letters may be lower case. Returns nullopt for anything else.
std::optional<worksheet::GridSelection> ParseCellRange(std::string_view text);

}  // namespace orvik::cli
