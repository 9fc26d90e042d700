#include "worksheet/worksheet.h"

#include <gtest/gtest.h>
#include <malloc.h>

#include <string>

namespace orvik::worksheet {
namespace {

TEST(WorksheetTest, EmptySheetHasNoDataExtentAndEmptyCells) {
  Worksheet sheet("WorkSheet 1");
  EXPECT_EQ(sheet.DataRowCnt(), 0);
  EXPECT_EQ(sheet.DataColCnt(), 0);
  EXPECT_EQ(sheet.Text(1, 1), "");
  EXPECT_EQ(sheet.Text(500000, 300), "");
  EXPECT_EQ(sheet.Name(), "WorkSheet 1");
  EXPECT_FALSE(sheet.Selection.IsBlockSelected);
}

// Cells far down a column (as a crafted file places them) cost their texts,
// not the empty rows above them: 16,384 columns each with a cell in row 1
// and one in row 16,777,216 stay within a few megabytes (one span per row
// would take 2 TiB). Row edits and overwrites keep every cell, and a column
// that fills up reads the same.
TEST(WorksheetTest, CellsFarDownCostNothingForTheEmptyRowsAbove) {
  const std::size_t before = mallinfo2().uordblks;
  Worksheet sheet;
  for (long col = 1; col <= kGridMaxCols; ++col) {
    sheet.SetText(kGridMaxRows, col, "far");
    sheet.SetText(1, col, "top");
  }
  EXPECT_LT(mallinfo2().uordblks - before, std::size_t{64} << 20);
  EXPECT_EQ(sheet.DataRowCnt(), kGridMaxRows);
  EXPECT_EQ(sheet.LastFilledRow(77), kGridMaxRows);
  EXPECT_EQ(sheet.Text(kGridMaxRows, 77), "far");
  EXPECT_EQ(sheet.Text(kGridMaxRows - 1, 77), "");
  sheet.InsertRows(2, 3);
  EXPECT_EQ(sheet.Text(1, 5), "top");
  EXPECT_EQ(sheet.Text(kGridMaxRows + 3, 5), "far");
  sheet.DeleteRows(10, 20);
  EXPECT_EQ(sheet.Text(kGridMaxRows - 17, 5), "far");
  sheet.SetText(kGridMaxRows - 17, 5, "");
  EXPECT_EQ(sheet.LastFilledRow(5), 1);
  // Filling a column row after row below a far cell keeps it readable.
  sheet.SetText(100000, 5, "x");
  for (long row = 1; row <= 30000; ++row) sheet.SetText(row, 5, std::to_string(row));
  EXPECT_EQ(sheet.Text(30000, 5), "30000");
  EXPECT_EQ(sheet.Text(1, 5), "1");
  EXPECT_EQ(sheet.Text(100000, 5), "x");
  sheet.DeleteRows(1, 30000);
  EXPECT_EQ(sheet.Text(70000, 5), "x");
  EXPECT_EQ(sheet.LastFilledRow(5), 70000);
}

TEST(WorksheetTest, DataExtentFollowsTheLastFilledCellBothWays) {
  Worksheet sheet;
  sheet.SetText(3, 2, "1.5");
  sheet.SetText(7, 1, "x");
  EXPECT_EQ(sheet.DataRowCnt(), 7);
  EXPECT_EQ(sheet.DataColCnt(), 2);

  sheet.SetText(7, 1, "");  // clearing the last row shrinks to the next filled row
  EXPECT_EQ(sheet.DataRowCnt(), 3);
  EXPECT_EQ(sheet.DataColCnt(), 2);

  sheet.SetText(3, 2, "");  // clearing the last column's only cell empties the sheet
  EXPECT_EQ(sheet.DataRowCnt(), 0);
  EXPECT_EQ(sheet.DataColCnt(), 0);
}

TEST(WorksheetTest, ClearingAnInnerColumnKeepsTheExtentOfTheOthers) {
  Worksheet sheet;
  sheet.SetText(2, 1, "a");
  sheet.SetText(5, 2, "b");
  sheet.SetText(4, 3, "c");
  sheet.SetText(5, 2, "");
  EXPECT_EQ(sheet.DataRowCnt(), 4);
  EXPECT_EQ(sheet.DataColCnt(), 3);
}

TEST(WorksheetTest, OverwritingCellsKeepsEveryOtherCellIntact) {
  // Overwrites leave garbage in the column pool until it is compacted; the
  // other cells must read back unchanged through every compaction.
  Worksheet sheet;
  for (long row = 1; row <= 2000; ++row) sheet.SetText(row, 1, "v" + std::to_string(row));
  for (int round = 0; round < 20; ++round)
    for (long row = 1; row <= 2000; row += 2) sheet.SetText(row, 1, "overwritten text " + std::to_string(round));
  EXPECT_EQ(sheet.Text(1, 1), "overwritten text 19");
  EXPECT_EQ(sheet.Text(2, 1), "v2");
  EXPECT_EQ(sheet.Text(2000, 1), "v2000");
  sheet.ShrinkToFit();
  EXPECT_EQ(sheet.Text(1999, 1), "overwritten text 19");
  EXPECT_EQ(sheet.Text(1000, 1), "v1000");
}

TEST(WorksheetTest, WritingPastTheGridGrowsIt) {
  Worksheet sheet("s", 10, 5);
  sheet.SetText(25, 8, "9");
  EXPECT_EQ(sheet.MaxRows(), 25);
  EXPECT_EQ(sheet.MaxCols(), 8);
  EXPECT_THROW(sheet.SetText(0, 1, "x"), std::out_of_range);
}

TEST(WorksheetTest, ShrinkingTheGridDropsCellsOutsideIt) {
  Worksheet sheet;
  sheet.SetText(10, 4, "far");
  sheet.SetText(2, 2, "near");
  sheet.SetMaxRows(5);
  sheet.SetMaxCols(3);
  EXPECT_EQ(sheet.Text(10, 4), "");
  EXPECT_EQ(sheet.Text(2, 2), "near");
  EXPECT_EQ(sheet.DataRowCnt(), 2);
  EXPECT_EQ(sheet.DataColCnt(), 2);
}

TEST(WorksheetTest, InsertAndDeleteRowsMoveTheCellsBelow) {
  Worksheet sheet;
  for (long row = 1; row <= 4; ++row) sheet.SetText(row, 1, std::to_string(row));
  sheet.InsertRows(2, 2);
  EXPECT_EQ(sheet.Text(1, 1), "1");
  EXPECT_EQ(sheet.Text(2, 1), "");
  EXPECT_EQ(sheet.Text(4, 1), "2");
  EXPECT_EQ(sheet.DataRowCnt(), 6);
  sheet.DeleteRows(1, 3);
  EXPECT_EQ(sheet.Text(1, 1), "2");
  EXPECT_EQ(sheet.DataRowCnt(), 3);
  sheet.DeleteRows(1, 100);
  EXPECT_EQ(sheet.DataRowCnt(), 0);
  EXPECT_EQ(sheet.DataColCnt(), 0);
}

TEST(WorksheetTest, InsertAndDeleteColumnsCarryTheirHeaderNames) {
  Worksheet sheet;
  sheet.SetText(1, 1, "a");
  sheet.SetText(1, 2, "b");
  sheet.SetColumnHeader(2, "Diameter");
  sheet.InsertColumns(1, 1);
  EXPECT_EQ(sheet.Text(1, 2), "a");
  EXPECT_EQ(sheet.ColumnHeader(3), "Diameter");
  EXPECT_EQ(sheet.ColumnHeader(1), "A");
  sheet.DeleteColumns(1, 2);
  EXPECT_EQ(sheet.Text(1, 1), "b");
  EXPECT_EQ(sheet.ColumnHeader(1), "Diameter");
  EXPECT_EQ(sheet.DataColCnt(), 1);
}

TEST(WorksheetTest, ColumnHeadersShowLettersUntilNamed) {
  Worksheet sheet;
  EXPECT_EQ(sheet.ColumnHeader(1), "A");
  EXPECT_EQ(sheet.ColumnHeader(26), "Z");
  EXPECT_EQ(sheet.ColumnHeader(27), "AA");
  EXPECT_EQ(sheet.ColumnHeader(52), "AZ");
  EXPECT_EQ(sheet.ColumnHeader(703), "AAA");
  sheet.SetColumnHeader(3, "Weight");
  EXPECT_EQ(sheet.ColumnHeader(3), "Weight");
  EXPECT_EQ(sheet.ColumnHeaderName(2), "");
  sheet.SetColumnHeader(3, "");
  EXPECT_EQ(sheet.ColumnHeader(3), "C");
}

}  // namespace
}  // namespace orvik::worksheet
