#include "gui/shell_rules.h"

#include <gtest/gtest.h>

// The worksheet numbering, the questions and the menu rules are checked on
// the real windows (main_window_test).
namespace orvik::gui {
namespace {

// The fields as "IsBlockSelected SelBlockCol SelBlockCol2 SelBlockRow SelBlockRow2".
std::string Fields(const std::optional<GridRange>& range, GridPoint anchor) {
  const auto s = SelectionFromGrid(range, anchor, 1000, 52);
  return std::to_string(s.IsBlockSelected) + " " + std::to_string(s.SelBlockCol) + " " +
         std::to_string(s.SelBlockCol2) + " " + std::to_string(s.SelBlockRow) + " " + std::to_string(s.SelBlockRow2);
}

TEST(SelectionFromGrid, DragDirectionGivesTheStartFields) {
  // Model coordinates are 0-based; the fields are 1-based.
  const GridRange block{1, 1, 5, 3};  // B2:D6
  EXPECT_EQ(Fields(block, {1, 1}), "1 2 4 2 6");
  EXPECT_EQ(Fields(block, {5, 3}), "1 4 2 6 2");    // dragged from D6 up to B2
  EXPECT_EQ(Fields(block, {1, 3}), "1 4 2 2 6");    // from D2 to B6
  EXPECT_EQ(Fields(block, {40, 40}), "1 2 4 2 6");  // anchor elsewhere: top left
}

TEST(SelectionFromGrid, WholeColumnsRowsSheetAndNothing) {
  EXPECT_EQ(Fields(GridRange{0, 1, 999, 3}, {0, 3}), "1 4 2 -1 -1");  // D:B
  EXPECT_EQ(Fields(GridRange{2, 0, 6, 51}, {6, 0}), "1 -1 -1 7 3");   // rows 7:3
  EXPECT_EQ(Fields(GridRange{0, 0, 999, 51}, {0, 0}), "1 -1 -1 -1 -1");
  EXPECT_EQ(Fields(std::nullopt, {0, 0}).substr(0, 1), "0");
}

}  // namespace
}  // namespace orvik::gui
