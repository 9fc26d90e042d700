#include "formats/delimited_text.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace orvik::formats {
namespace {

worksheet::Worksheet Read(const std::string& text, char separator = ',') {
  worksheet::Worksheet sheet;
  std::istringstream in(text);
  ReadDelimitedText(in, separator, sheet);
  return sheet;
}

std::vector<std::string> Row(const worksheet::Worksheet& sheet, long row) {
  std::vector<std::string> cells;
  for (long col = 1; col <= sheet.DataColCnt(); ++col) cells.emplace_back(sheet.Text(row, col));
  return cells;
}

using Cells = std::vector<std::string>;

TEST(DelimitedTextTest, EveryFieldIsOneCellFromRowOneColumnA) {
  const auto sheet = Read("1,2,3\r\n4,,6\r\n");
  EXPECT_EQ(sheet.DataRowCnt(), 2);
  EXPECT_EQ(sheet.DataColCnt(), 3);
  EXPECT_EQ(Row(sheet, 1), (Cells{"1", "2", "3"}));
  EXPECT_EQ(Row(sheet, 2), (Cells{"4", "", "6"}));
}

TEST(DelimitedTextTest, QuotesAreRemovedAndEverythingElseKeptAsWritten) {
  const auto sheet = Read("\"a,b\",\" 12 \",\"say \"\"hi\"\"\"\n  x , y\n\"line\none\",z");
  EXPECT_EQ(Row(sheet, 1), (Cells{"a,b", " 12 ", "say \"hi\""}));
  EXPECT_EQ(Row(sheet, 2), (Cells{"  x ", " y", ""}));
  EXPECT_EQ(Row(sheet, 3), (Cells{"line\none", "z", ""}));
}

TEST(DelimitedTextTest, LineEndingsAndTheLastLine) {
  EXPECT_EQ(Read("1\n2\n").DataRowCnt(), 2);      // a final break makes no empty row
  EXPECT_EQ(Read("1\n2").DataRowCnt(), 2);        // nor does its absence lose the last row
  EXPECT_EQ(Read("1\r\n\r\n3\r\n").DataRowCnt(), 3);  // an empty line is an empty row
  const auto old_mac = Read("1\r2\r");
  EXPECT_EQ(old_mac.DataRowCnt(), 2);
  EXPECT_EQ(old_mac.Text(2, 1), "2");
  EXPECT_EQ(Read("").DataRowCnt(), 0);
  EXPECT_EQ(Read("\"\"").DataRowCnt(), 0);  // one empty quoted field is one empty cell
}

TEST(DelimitedTextTest, DropsAByteOrderMarkAndReadsTabs) {
  const auto sheet = Read("\xEF\xBB\xBF" "12\t13\n", '\t');
  EXPECT_EQ(Row(sheet, 1), (Cells{"12", "13"}));
}

TEST(DelimitedTextTest, FieldsSpanningReadBlocksArriveWhole) {
  // The reader takes the text in blocks of 1 MiB; build fields that cross a
  // block boundary, quoted and unquoted.
  std::string text;
  std::vector<std::string> expected;
  for (int i = 0; text.size() < 3u << 20; ++i) {
    std::string field = std::string(1 + i % 997, static_cast<char>('a' + i % 26));
    if (i % 3 == 0) {
      text += "\"" + field + "\"\"x\"\r\n";
      field += "\"x";
    } else {
      text += field + "\r\n";
    }
    expected.push_back(field);
  }
  const auto sheet = Read(text);
  ASSERT_EQ(sheet.DataRowCnt(), static_cast<long>(expected.size()));
  for (std::size_t i = 0; i < expected.size(); ++i) ASSERT_EQ(sheet.Text(static_cast<long>(i) + 1, 1), expected[i]) << i;
}

TEST(DelimitedTextTest, ChoosesTheSeparatorByExtension) {
  EXPECT_EQ(SeparatorForPath("data.csv"), ',');
  EXPECT_EQ(SeparatorForPath("DATA.TSV"), '\t');
  EXPECT_EQ(SeparatorForPath("dir.v2/data.txt"), '\t');
  worksheet::Worksheet sheet;
  EXPECT_THROW(ReadDelimitedFile("/nonexistent/file.csv", sheet), std::runtime_error);
}

}  // namespace
}  // namespace orvik::formats
