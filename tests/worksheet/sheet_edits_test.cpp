#include "worksheet/sheet_edits.h"

#include <gtest/gtest.h>

namespace orvik::worksheet {
namespace {

Worksheet SheetOf(const std::vector<std::vector<std::string>>& rows) {
  Worksheet sheet("WorkSheet 1");
  for (std::size_t r = 0; r < rows.size(); ++r)
    for (std::size_t c = 0; c < rows[r].size(); ++c)
      sheet.SetText(static_cast<long>(r + 1), static_cast<long>(c + 1), rows[r][c]);
  return sheet;
}

std::vector<std::string> Column(const Worksheet& sheet, long col, long rows) {
  std::vector<std::string> out;
  for (long row = 1; row <= rows; ++row) out.emplace_back(sheet.Text(row, col));
  return out;
}

TEST(SelectedCells, WidensWholeRowsColumnsAndSheetToTheGrid) {
  Worksheet sheet("s", 100, 10);
  EXPECT_FALSE(SelectedCells(sheet));
  sheet.Selection = {true, 4, 2, 9, 3};  // dragged right to left, bottom to top
  EXPECT_EQ(*SelectedCells(sheet), (CellBlock{3, 2, 9, 4}));
  sheet.Selection = {true, 2, 3, -1, -1};
  EXPECT_EQ(*SelectedCells(sheet), (CellBlock{1, 2, 100, 3}));
  sheet.Selection = {true, -1, -1, 5, 6};
  EXPECT_EQ(*SelectedCells(sheet), (CellBlock{5, 1, 6, 10}));
  sheet.Selection = {true, -1, -1, -1, -1};
  EXPECT_EQ(*SelectedCells(sheet), (CellBlock{1, 1, 100, 10}));
}

TEST(PlanWriteBlock, LeavesOutUnchangedCellsAndKeepsOldTexts) {
  Worksheet sheet = SheetOf({{"1", "2"}, {"3", "4"}});
  const auto edits = PlanWriteBlock(sheet, 2, 2, {{"4", "x"}, {"y", ""}});
  ASSERT_EQ(edits.size(), 2u);
  EXPECT_EQ(edits[0].row, 2);
  EXPECT_EQ(edits[0].col, 3);
  EXPECT_EQ(edits[0].before, "");
  EXPECT_EQ(edits[0].after, "x");
  EXPECT_EQ(edits[1].row, 3);
  EXPECT_EQ(edits[1].after, "y");
}

TEST(SheetEditor, ApplyAndUndoRestoreTextsAndNotifyTheBlock) {
  Worksheet sheet = SheetOf({{"1", "2"}, {"3", "4"}});
  SheetEditor editor(sheet);
  std::vector<SheetChange> changes;
  editor.SetListener([&](const SheetChange& change) { changes.push_back(change); });
  const auto edits = PlanClear(sheet, {1, 1, 1000, 2});
  EXPECT_EQ(edits.size(), 4u);  // only filled cells, not the grid's 1000 rows
  editor.Apply(edits);
  EXPECT_EQ(sheet.DataRowCnt(), 0);
  editor.Apply(edits, true);
  EXPECT_EQ(Column(sheet, 2, 2), (std::vector<std::string>{"2", "4"}));
  ASSERT_EQ(changes.size(), 2u);
  EXPECT_EQ(changes[0].kind, SheetChange::Kind::Cells);
  EXPECT_EQ(changes[0].block, (CellBlock{1, 1, 2, 2}));
}

TEST(SheetEditor, DeleteRowsReturnsRemovedCellsAndAnnouncesBeforeAndAfter) {
  Worksheet sheet = SheetOf({{"1", "a"}, {"2", "b"}, {"3", "c"}});
  SheetEditor editor(sheet);
  std::vector<SheetChange::Phase> phases;
  editor.SetListener([&](const SheetChange& change) { phases.push_back(change.phase); });
  const auto removed = editor.DeleteRows(2, 1);
  EXPECT_EQ(Column(sheet, 1, 2), (std::vector<std::string>{"1", "3"}));
  ASSERT_EQ(removed.size(), 2u);
  EXPECT_EQ(removed[1].before, "b");
  EXPECT_EQ(phases, (std::vector<SheetChange::Phase>{SheetChange::Phase::Before, SheetChange::Phase::After}));
  editor.InsertRows(2, 1);
  editor.Apply(removed, true);
  EXPECT_EQ(Column(sheet, 2, 3), (std::vector<std::string>{"a", "b", "c"}));
}

TEST(PlanSort, NumbersBeforeTextsEmptiesLastRowsMoveWhole) {
  Worksheet sheet = SheetOf({{"10", "a"}, {"x", "b"}, {"", "c"}, {"2.5", "d"}, {"1e1", "e"}, {"-3", "f"}});
  SheetEditor editor(sheet);
  editor.Apply(PlanSort(sheet, {1, 1, 6, 2}, {{1, true}}));
  EXPECT_EQ(Column(sheet, 1, 6), (std::vector<std::string>{"-3", "2.5", "10", "1e1", "x", ""}));
  // Equal keys 10 and 1e1 keep their order; the second column moved along.
  EXPECT_EQ(Column(sheet, 2, 6), (std::vector<std::string>{"f", "d", "a", "e", "b", "c"}));
  editor.Apply(PlanSort(sheet, {1, 1, 6, 2}, {{1, false}}));
  EXPECT_EQ(Column(sheet, 1, 6), (std::vector<std::string>{"10", "1e1", "2.5", "-3", "x", ""}));
}

TEST(PlanSort, CellsOutsideTheBlockStay) {
  Worksheet sheet = SheetOf({{"3", "z"}, {"1", "y"}, {"2", "x"}});
  const auto edits = PlanSort(sheet, {1, 1, 3, 1}, {{1, true}});
  SheetEditor editor(sheet);
  editor.Apply(edits);
  EXPECT_EQ(Column(sheet, 1, 3), (std::vector<std::string>{"1", "2", "3"}));
  EXPECT_EQ(Column(sheet, 2, 3), (std::vector<std::string>{"z", "y", "x"}));
}

TEST(PlanSort, FurtherKeysOrderRowsTheEarlierOnesFindEqual) {
  // Operator, then measurement descending, then part: the third key only
  // breaks the tie of two rows equal in both.
  Worksheet sheet = SheetOf({{"B", "2", "p1"}, {"A", "5", "p2"}, {"B", "7", "p3"}, {"A", "5", "p0"}, {"A", "", "p4"}});
  SheetEditor editor(sheet);
  editor.Apply(PlanSort(sheet, {1, 1, 5, 3}, {{1, true}, {2, false}, {3, true}}));
  EXPECT_EQ(Column(sheet, 3, 5), (std::vector<std::string>{"p0", "p2", "p4", "p3", "p1"}));
}

TEST(SortRegion, WidensToNeighbouringColumnsWithDataInTheBlocksRows) {
  // Columns A to C hold data, D is empty, E holds data again; F holds data
  // only below the block's rows.
  Worksheet sheet = SheetOf({{"1", "a", "x", "", "e"}, {"2", "b", "y", "", "f"}, {"", "", "", "", "", "far"}});
  const struct {
    CellBlock block;
    CellBlock region;
  } cases[] = {
      {{1, 2, 2, 2}, {1, 1, 2, 3}},   // B1:B2 -> A1:C2
      {{1, 1, 2, 1}, {1, 1, 2, 3}},   // A1:A2 -> A1:C2
      {{1, 5, 2, 5}, {1, 5, 2, 5}},   // E1:E2 stands alone
      {{1, 4, 2, 4}, {1, 1, 2, 5}},   // the empty D1:D2 joins both sides
      {{5, 1, 9, 1}, {5, 1, 9, 1}},   // below the data: nothing to join
  };
  for (const auto& c : cases) {
    const CellBlock region = SortRegion(sheet, c.block);
    EXPECT_EQ(std::tuple(region.top, region.left, region.bottom, region.right),
              std::tuple(c.region.top, c.region.left, c.region.bottom, c.region.right))
        << c.block.top << "," << c.block.left;
  }
}

TEST(Find, WalksAlongRowsWrapsAndHonoursOptions) {
  Worksheet sheet = SheetOf({{"apple", "Pear"}, {"pearl", "fig"}});
  FindOptions loose;
  EXPECT_EQ(FindCell(sheet, "pear", 1, 1, loose), std::make_pair(1L, 2L));
  EXPECT_EQ(FindCell(sheet, "pear", 1, 2, loose), std::make_pair(2L, 1L));
  EXPECT_EQ(FindCell(sheet, "pear", 2, 1, loose), std::make_pair(1L, 2L));  // wraps
  EXPECT_EQ(FindCell(sheet, "pear", 2, 2, {true, false}), std::make_pair(2L, 1L));
  EXPECT_EQ(FindCell(sheet, "pear", 1, 1, {false, true}), std::make_pair(1L, 2L));
  EXPECT_EQ(FindCell(sheet, "fig", 2, 2, loose), std::make_pair(2L, 2L));  // itself last
  EXPECT_FALSE(FindCell(sheet, "kiwi", 1, 1, loose));
  EXPECT_FALSE(FindCell(sheet, "", 1, 1, loose));
}

TEST(Replace, ReplacesEveryOccurrenceOrWholeCells) {
  EXPECT_EQ(ReplaceInCell("aAbaa", "a", "x", {}), "xxbxx");
  EXPECT_EQ(ReplaceInCell("aAbaa", "a", "x", {true, false}), "xAbxx");
  EXPECT_EQ(ReplaceInCell("ab", "ab", "", {false, true}), "");
  EXPECT_EQ(ReplaceInCell("abc", "ab", "z", {false, true}), "abc");
  Worksheet sheet = SheetOf({{"1.5", "x1.5"}, {"2", "1.5"}});
  const auto edits = PlanReplaceAll(sheet, "1.5", "7", {false, true});
  ASSERT_EQ(edits.size(), 2u);
  EXPECT_EQ(edits[0].row, 1);
  EXPECT_EQ(edits[1].row, 2);
}

TEST(SheetFormats, LaterActionsWinAndBlocksFollowRowAndColumnEdits) {
  SheetFormats formats;
  FormatChange bold;
  bold.bold = true;
  FormatChange plain;
  plain.bold = false;
  plain.background = 0xFFFF00;
  formats.Apply({1, 1, 1'000'000, 1}, bold);  // a whole column costs one record
  formats.Apply({3, 1, 4, 2}, plain);
  EXPECT_TRUE(formats.At(1, 1).bold);
  EXPECT_FALSE(formats.At(3, 1).bold);
  EXPECT_EQ(formats.At(4, 2).background, 0xFFFF00u);
  EXPECT_FALSE(formats.At(1, 2).bold);
  formats.InsertRows(1, 2);
  EXPECT_EQ(formats.At(6, 2).background, 0xFFFF00u);
  EXPECT_FALSE(formats.At(4, 2).background.has_value());
  formats.DeleteRows(5, 2);  // removes the coloured rows entirely
  EXPECT_EQ(formats.Runs().size(), 1u);
  formats.DeleteColumns(1, 1);
  EXPECT_TRUE(formats.Runs().empty());
}

TEST(SheetFormats, DeletingPartOfABlockShrinksIt) {
  SheetFormats formats;
  FormatChange italic;
  italic.italic = true;
  formats.Apply({2, 1, 6, 1}, italic);
  formats.DeleteRows(5, 3);  // rows 5..7: the block keeps 2..4
  EXPECT_EQ(formats.Runs()[0].block, (CellBlock{2, 1, 4, 1}));
  formats.DeleteRows(1, 2);  // rows 1..2: the block keeps old 3..4 as 1..2
  EXPECT_EQ(formats.Runs()[0].block, (CellBlock{1, 1, 2, 1}));
}

}  // namespace
}  // namespace orvik::worksheet
