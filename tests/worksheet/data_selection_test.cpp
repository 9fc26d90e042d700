#include "worksheet/data_selection.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orvik::worksheet {
namespace {

// A 4 x 3 sheet: column A 1..4, B 10..40, C 100..400.
Worksheet GridSheet() {
  Worksheet sheet("WorkSheet 1");
  for (long row = 1; row <= 4; ++row)
    for (long col = 1; col <= 3; ++col) sheet.SetText(row, col, std::to_string(row * (col == 1 ? 1 : col == 2 ? 10 : 100)));
  return sheet;
}

GridSelection Block(long col, long row, long col2, long row2) { return {true, col, col2, row, row2}; }

struct BlockCase {
  const char* name;
  GridSelection selection;
  long firstColumn, lastColumn, firstRow, lastRow;
  int columnStep, rowStep;
  std::vector<double> values;
};

TEST(ResolveBlockTest, ResolvesEachKindOfBlockAndReadsItColumnByColumn) {
  const BlockCase cases[] = {
      {"block inside the data", Block(1, 2, 2, 3), 1, 2, 2, 3, 1, 1, {2, 3, 20, 30}},
      {"dragged right to left", Block(3, 2, 1, 1), 3, 1, 2, 1, -1, -1, {200, 100, 20, 10, 2, 1}},
      {"dragged bottom to top", Block(2, 4, 2, 2), 2, 2, 4, 2, 1, -1, {40, 30, 20}},
      {"past the last row and column", Block(2, 3, 5, 99), 2, 3, 3, 4, 1, 1, {30, 40, 300, 400}},
      {"past the last row only", Block(1, 3, 2, 50), 1, 2, 3, 4, 1, 1, {3, 4, 30, 40}},
      {"past the last column only", Block(2, 1, 9, 2), 2, 3, 1, 2, 1, 1, {10, 20, 100, 200}},
      {"whole columns", Block(2, -1, 3, -1), 2, 3, 1, 4, 1, 1, {10, 20, 30, 40, 100, 200, 300, 400}},
      {"whole columns right to left", Block(3, -1, 2, -1), 3, 2, 1, 4, -1, 1, {100, 200, 300, 400, 10, 20, 30, 40}},
      {"whole columns beyond the data", Block(3, -1, 6, -1), 3, 6, 1, 4, 1, 1, {100, 200, 300, 400}},
      {"whole rows", Block(-1, 2, -1, 3), 1, 3, 2, 3, 1, 1, {2, 3, 20, 30, 200, 300}},
      {"whole sheet", Block(-1, -1, -1, -1), 1, 3, 1, 4, 1, 1, {1, 2, 3, 4, 10, 20, 30, 40, 100, 200, 300, 400}},
      {"one cell", Block(2, 2, 2, 2), 2, 2, 2, 2, 1, 1, {20}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    Worksheet sheet = GridSheet();
    sheet.Selection = c.selection;
    DataSelection selection;
    ASSERT_FALSE(ResolveBlock(&sheet, selection).has_value());
    EXPECT_EQ(selection.firstColumn, c.firstColumn);
    EXPECT_EQ(selection.lastColumn, c.lastColumn);
    EXPECT_EQ(selection.firstRow, c.firstRow);
    EXPECT_EQ(selection.lastRow, c.lastRow);
    EXPECT_EQ(selection.columnStep, c.columnStep);
    EXPECT_EQ(selection.rowStep, c.rowStep);
    CollectNumericCells(sheet, selection);
    EXPECT_EQ(selection.values, c.values);
    EXPECT_EQ(selection.count, static_cast<long>(c.values.size()));
  }
}

TEST(ResolveBlockTest, RefusesAnEmptySheetBeforeLookingAtTheBlock) {
  Worksheet empty;
  empty.Selection = Block(1, 1, 2, 2);
  DataSelection selection;
  EXPECT_EQ(ResolveBlock(&empty, selection), "Select data from worksheet");
  empty.Selection.IsBlockSelected = false;
  EXPECT_EQ(ResolveBlock(&empty, selection), "Select data from worksheet");
  EXPECT_EQ(ResolveBlock(nullptr, selection), "Select data from worksheet");
}

TEST(ResolveBlockTest, RefusesASheetWithoutSelectedBlockButSetsTheStepsFirst) {
  Worksheet sheet = GridSheet();
  sheet.Selection = {false, 3, 1, 4, 2};
  DataSelection selection;
  EXPECT_EQ(ResolveBlock(&sheet, selection), "Please, select valid data");
  EXPECT_EQ(selection.columnStep, -1);
  EXPECT_EQ(selection.rowStep, -1);
}

TEST(ResolveBlockTest, ABlockStartingBelowTheDataReadsNothing) {
  // Only the end of a block is clipped: a start past the data stays, so the
  // walk has nothing to read rather than reading backwards.
  Worksheet sheet = GridSheet();
  sheet.Selection = Block(1, 9, 2, 12);
  DataSelection selection;
  ASSERT_FALSE(ResolveBlock(&sheet, selection).has_value());
  EXPECT_EQ(selection.firstRow, 9);
  EXPECT_EQ(selection.lastRow, 4);
  const RunningFigures figures = CollectNumericCells(sheet, selection);
  EXPECT_EQ(figures.count, 0);
  EXPECT_TRUE(selection.values.empty());
}

TEST(CollectNumericCellsTest, SkipsEmptyAndTextCellsWithoutLeavingGaps) {
  Worksheet sheet;
  const char* column[] = {"12", "", "abc", "7.5e1", " 5 ", "1,5"};
  for (long row = 1; row <= 6; ++row) sheet.SetText(row, 1, column[row - 1]);
  sheet.Selection = Block(1, 1, 1, 6);
  DataSelection selection;
  ASSERT_FALSE(ResolveBlock(&sheet, selection).has_value());
  const RunningFigures figures = CollectNumericCells(sheet, selection);
  EXPECT_EQ(selection.values, (std::vector<double>{12, 75, 5}));
  EXPECT_EQ(figures.count, 3);
  EXPECT_EQ(figures.improperCells, 3);
  EXPECT_EQ(figures.minimum, 5);
  EXPECT_EQ(figures.maximum, 75);
  EXPECT_EQ(figures.sum, 92);
  EXPECT_EQ(figures.equalToFirst, 1);
}

RunningFigures FiguresOf(const std::vector<const char*>& texts) {
  Worksheet sheet;
  for (std::size_t i = 0; i < texts.size(); ++i) sheet.SetText(static_cast<long>(i) + 1, 1, texts[i]);
  sheet.SetText(1, 2, "label");  // keeps the sheet non-empty when the column holds no number
  sheet.Selection = Block(1, 1, 1, static_cast<long>(texts.size()) + 1);
  DataSelection selection;
  EXPECT_FALSE(ResolveBlock(&sheet, selection).has_value());
  return CollectNumericCells(sheet, selection);
}

TEST(CommonDataChecksTest, AppliesTheThreeChecksInTheirOrder) {
  struct CheckCase {
    std::vector<const char*> texts;
    std::optional<std::string> refusal;
  } cases[] = {
      {{"5", "5", "5"}, "All data are same"},
      {{"5"}, "All data are same"},  // a single value is all the same
      {{"5", "6"}, "All data are not enough to analysis"},
      {{}, "All data are not enough to analysis"},  // no number at all
      {{"abc", ""}, "All data are not enough to analysis"},
      {{"-2", "1", "1"}, "Please, select valid data"},
      {{"-1", "0", "1"}, "Please, select valid data"},  // refused although valid: the sum is 0
      {{"0", "0"}, "All data are same"},                 // same wins over the sum
      {{"5", "5", "6"}, std::nullopt},
      {{"1", "2", "3"}, std::nullopt},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::PrintToString(c.texts.size()) + " values");
    EXPECT_EQ(CommonDataChecks(FiguresOf(c.texts)), c.refusal);
  }
}

}  // namespace
}  // namespace orvik::worksheet
