// libFuzzer target: range notation as orvik-cli reads it, and the block it
// selects read from a 4 x 3 sheet. A range is refused or lies within the
// grid or beyond it; whichever, resolving and reading the block must end
// at once with no more numbers than the sheet holds, without overflow.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "cli/cell_range.h"
#include "worksheet/data_selection.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const auto selection = orvik::cli::ParseCellRange(text);
  if (!selection) return 0;
  static const orvik::worksheet::Worksheet sheet = [] {
    orvik::worksheet::Worksheet grid;
    for (long row = 1; row <= 4; ++row)
      for (long col = 1; col <= 3; ++col) grid.SetText(row, col, std::to_string(row * col));
    return grid;
  }();
  orvik::worksheet::Worksheet selected = sheet;
  selected.Selection = *selection;
  orvik::worksheet::DataSelection block;
  if (orvik::worksheet::ResolveBlock(&selected, block)) return 0;
  const auto figures = orvik::worksheet::CollectNumericCells(selected, block);
  if (figures.count > 12 || figures.improperCells < 0) std::abort();
  if (orvik::worksheet::NumericCellsRowByRow(selected, block).size() != static_cast<std::size_t>(figures.count))
    std::abort();
  return 0;
}
