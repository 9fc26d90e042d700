#include "worksheet/delimited_cells.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orvik::worksheet {
namespace {

using Rows = std::vector<std::vector<std::string>>;

TEST(DelimitedCellsTest, RoundTripsQuotesSeparatorsAndLineBreaks) {
  const Rows cells = {{"1", "a\tb", ""}, {"say \"hi\"", "two\nlines", "x,y"}};
  const std::string tabs = FormatDelimited(cells, '\t');
  EXPECT_EQ(tabs, "1\t\"a\tb\"\t\r\n\"say \"\"hi\"\"\"\t\"two\nlines\"\tx,y\r\n");
  EXPECT_EQ(ParseDelimited(tabs, '\t'), cells);
  const std::string commas = FormatDelimited(cells, ',');
  EXPECT_EQ(commas, "1,a\tb,\r\n\"say \"\"hi\"\"\",\"two\nlines\",\"x,y\"\r\n");
  EXPECT_EQ(ParseDelimited(commas, ','), cells);
}

TEST(DelimitedCellsTest, ParsesWhatSpreadsheetsPutOnTheClipboard) {
  // LF or CR LF rows, no final line break, empty cells kept, ragged rows.
  EXPECT_EQ(ParseDelimited("1\t2\n3", '\t'), (Rows{{"1", "2"}, {"3"}}));
  EXPECT_EQ(ParseDelimited("\t5\r\n\r\n", '\t'), (Rows{{"", "5"}, {""}}));
  EXPECT_EQ(ParseDelimited("1\r2\r", '\t'), (Rows{{"1"}, {"2"}}));  // lone CR ends rows too
  EXPECT_TRUE(ParseDelimited("", '\t').empty());
}

TEST(DelimitedCellsTest, QuotesOnlyWhereNeeded) {
  std::string out;
  AppendDelimitedField(out, "plain text", ',');
  AppendDelimitedField(out, "\xEF\xBB\xBFmark", ',');  // a leading byte-order mark survives a reader
  EXPECT_EQ(out, "plain text\"\xEF\xBB\xBFmark\"");
}

TEST(DelimitedCellsTest, FieldsSplitAcrossPiecesArriveWhole) {
  Rows rows;
  DelimitedParser parser(',', [&rows](long row, long, std::string_view text) {
    if (static_cast<long>(rows.size()) <= row) rows.resize(row + 1);
    rows[row].emplace_back(text);
  });
  for (const char* piece : {"ab", "c,\"d", "\"\"e\"", ",f\r", "\ng"}) parser.Feed(piece);
  parser.Finish();
  EXPECT_EQ(rows, (Rows{{"abc", "d\"e", "f"}, {"g"}}));
}

}  // namespace
}  // namespace orvik::worksheet
