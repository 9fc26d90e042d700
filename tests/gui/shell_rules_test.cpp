#include "gui/shell_rules.h"

#include <gtest/gtest.h>

namespace orvik::gui {
namespace {

TEST(WorksheetCounter, NumbersAreNeverReused) {
  WorksheetCounter counter;
  EXPECT_EQ(counter.NextName(), "WorkSheet 1");
  EXPECT_EQ(counter.NextName(), "WorkSheet 2");
  EXPECT_EQ(counter.NextName(), "WorkSheet 3");
  EXPECT_EQ(counter.Value(), 3);
}

TEST(Questions, CloseAndExitTextsTitlesIconsAndButtons) {
  const shell::MessageBox close = CloseWorksheetQuestion("WorkSheet 2");
  EXPECT_EQ(close.text, "WorkSheet 2 include data\r\n\r Are you sure you want to close?");
  EXPECT_EQ(close.title, "Confirmation");
  EXPECT_EQ(close.icon, shell::MessageIcon::Question);
  EXPECT_EQ(close.buttons, shell::MessageButtons::OkCancel);
  const shell::MessageBox exit = ExitQuestion();
  EXPECT_EQ(exit.text, "WorkSheets or Windows are still open.\r\n\rAre you sure you want to end your session?");
  EXPECT_EQ(exit.title, "Confirmation");
  EXPECT_EQ(exit.buttons, shell::MessageButtons::OkCancel);
  EXPECT_EQ(WorksheetMadeLine("WorkSheet 3"), "WorkSheet 3 generation is completed");
  EXPECT_EQ(WorksheetClosedLine("WorkSheet 3"), "WorkSheet 3 elimination is completed");
}

TEST(MenuRules, CountsOfDocumentWindows) {
  EXPECT_FALSE(ExitNeedsQuestion(0));
  EXPECT_TRUE(ExitNeedsQuestion(1));
  EXPECT_TRUE(CloseDisablesMenus(1));
  EXPECT_FALSE(CloseDisablesMenus(2));
  EXPECT_FALSE(CloseDisablesMenus(0));
}

TEST(SelectionFromGrid, DragDirectionGivesTheStartFields) {
  // Model coordinates are 0-based; the fields are 1-based.
  const GridRange block{1, 1, 5, 3};  // B2:D6
  auto s = SelectionFromGrid(block, {1, 1}, 1000, 52);
  EXPECT_TRUE(s.IsBlockSelected);
  EXPECT_EQ(s.SelBlockCol, 2);
  EXPECT_EQ(s.SelBlockCol2, 4);
  EXPECT_EQ(s.SelBlockRow, 2);
  EXPECT_EQ(s.SelBlockRow2, 6);
  s = SelectionFromGrid(block, {5, 3}, 1000, 52);  // dragged from D6 up to B2
  EXPECT_EQ(s.SelBlockCol, 4);
  EXPECT_EQ(s.SelBlockCol2, 2);
  EXPECT_EQ(s.SelBlockRow, 6);
  EXPECT_EQ(s.SelBlockRow2, 2);
  s = SelectionFromGrid(block, {1, 3}, 1000, 52);  // from D2 to B6
  EXPECT_EQ(s.SelBlockCol, 4);
  EXPECT_EQ(s.SelBlockRow, 2);
  s = SelectionFromGrid(block, {40, 40}, 1000, 52);  // anchor elsewhere: top left
  EXPECT_EQ(s.SelBlockCol, 2);
  EXPECT_EQ(s.SelBlockRow, 2);
}

TEST(SelectionFromGrid, WholeColumnsRowsSheetAndNothing) {
  auto s = SelectionFromGrid(GridRange{0, 3, 999, 1}, {0, 3}, 1000, 52);
  EXPECT_EQ(s.SelBlockRow, -1);
  EXPECT_EQ(s.SelBlockRow2, -1);
  s = SelectionFromGrid(GridRange{0, 1, 999, 3}, {0, 3}, 1000, 52);  // D:B
  EXPECT_EQ(s.SelBlockCol, 4);
  EXPECT_EQ(s.SelBlockCol2, 2);
  s = SelectionFromGrid(GridRange{2, 0, 6, 51}, {6, 0}, 1000, 52);  // rows 7:3
  EXPECT_EQ(s.SelBlockCol, -1);
  EXPECT_EQ(s.SelBlockCol2, -1);
  EXPECT_EQ(s.SelBlockRow, 7);
  EXPECT_EQ(s.SelBlockRow2, 3);
  s = SelectionFromGrid(GridRange{0, 0, 999, 51}, {0, 0}, 1000, 52);
  EXPECT_EQ(s.SelBlockCol, -1);
  EXPECT_EQ(s.SelBlockCol2, -1);
  EXPECT_EQ(s.SelBlockRow, -1);
  EXPECT_EQ(s.SelBlockRow2, -1);
  s = SelectionFromGrid(std::nullopt, {0, 0}, 1000, 52);
  EXPECT_FALSE(s.IsBlockSelected);
}

TEST(KeyTables, EditsAndStylesByKey) {
  EXPECT_EQ(RowColumnEditForKey("mnuDelCol"), RowColumnEditKind::DeleteColumn);
  EXPECT_EQ(RowColumnEditForKey("mnuInsertRow"), RowColumnEditKind::InsertRow);
  EXPECT_FALSE(RowColumnEditForKey("mnuInsert"));
  EXPECT_EQ(FontStyleForKey("mnuUnderline"), FontStyle::Underline);
  EXPECT_FALSE(FontStyleForKey("mnuLeft"));
}

}  // namespace
}  // namespace orvik::gui
