#include "worksheet/data_selection.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/case_table.h"

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

// Each kind of block of data/blocks.tsv resolves to its ends and steps and
// reads column by column.
TEST(ResolveBlockTest, ResolvesEachKindOfBlockAndReadsItColumnByColumn) {
  for (const auto& row : testing_support::ReadCases("worksheet/data/blocks.tsv")) {
    SCOPED_TRACE(row[0]);
    std::vector<long> n;
    for (std::size_t i = 1; i < 11; ++i) n.push_back(std::stol(row[i]));
    std::vector<double> values;
    const long improper = std::stol(row[11]);
    for (std::size_t i = 12; i < row.fields.size(); ++i) values.push_back(row.Number(i));
    Worksheet sheet = GridSheet();
    sheet.Selection = Block(n[0], n[1], n[2], n[3]);
    DataSelection selection;
    ASSERT_FALSE(ResolveBlock(&sheet, selection).has_value());
    EXPECT_EQ(selection.firstColumn, n[4]);
    EXPECT_EQ(selection.lastColumn, n[5]);
    EXPECT_EQ(selection.firstRow, n[6]);
    EXPECT_EQ(selection.lastRow, n[7]);
    EXPECT_EQ(selection.columnStep, n[8]);
    EXPECT_EQ(selection.rowStep, n[9]);
    const RunningFigures figures = CollectNumericCells(sheet, selection);
    EXPECT_EQ(figures.improperCells, improper);
    EXPECT_EQ(selection.values, values);
    EXPECT_EQ(selection.count, static_cast<long>(values.size()));
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

// Row by row, each row along the column step: columns of different lengths
// keep their places, whether the block lies on the data or reaches from the
// grid's far corner.
TEST(NumericCellsRowByRowTest, ReadsRowAfterRowOverColumnsOfDifferentLengths) {
  Worksheet sheet = GridSheet();
  sheet.SetText(4, 2, "");
  sheet.SetText(3, 3, "");
  sheet.SetText(4, 3, "");
  const struct {
    GridSelection block;
    std::vector<double> values;
  } cases[] = {
      {Block(1, 1, 3, 4), {1, 10, 100, 2, 20, 200, 3, 30, 4}},
      {Block(kGridMaxCols, kGridMaxRows, 1, 1), {4, 30, 3, 200, 20, 2, 100, 10, 1}},
      {Block(2, 2, kGridMaxCols, kGridMaxRows), {20, 200, 30}},
  };
  for (const auto& c : cases) {
    sheet.Selection = c.block;
    DataSelection selection;
    ASSERT_FALSE(ResolveBlock(&sheet, selection).has_value());
    EXPECT_EQ(NumericCellsRowByRow(sheet, selection), c.values);
  }
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
