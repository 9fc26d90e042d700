#include "worksheet/delimited_cells.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

// The codec's round trips with every separator, its line endings and its
// quoting are tested through the delimited files (formats/delimited_text_test)
// and the clipboard (gui/worksheet_window_test).
namespace orvik::worksheet {
namespace {

using Rows = std::vector<std::vector<std::string>>;

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
