#include "formats/delimited_text.h"

#include <gtest/gtest.h>

#include <algorithm>

#include <sstream>
#include <string>
#include <vector>

#include "formats/text_decoder.h"
#include "support/case_table.h"

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

std::string FromHex(const std::string& hex) {
  std::string bytes;
  std::istringstream in(hex);
  for (unsigned byte = 0; in >> std::hex >> byte;) bytes.push_back(static_cast<char>(byte));
  return bytes;
}

// The UTF-8 of `bytes` fed to a decoder in pieces of `piece` bytes (0: whole).
std::pair<std::string, bool> DecodeInPieces(const std::string& bytes, std::size_t piece) {
  TextDecoder decoder;
  std::string out;
  for (std::size_t at = 0; at < bytes.size(); at += piece ? piece : bytes.size())
    decoder.Decode(std::string_view(bytes).substr(at, piece ? piece : bytes.size()), out);
  decoder.Finish(out);
  return {out, decoder.Repaired()};
}

// Every cell holds UTF-8 whatever the bytes were (data/text_encodings.tsv),
// and the user is told once when the bytes were not all UTF-8 or a quote
// was never closed.
TEST(DelimitedTextTest, DecodesAtTheDoorAndTellsWhatItRepaired) {
  for (const auto& row : testing_support::ReadCases("formats/data/text_encodings.tsv")) {
    const Cells expected(row.fields.begin() + 2, row.fields.end());
    std::vector<std::string> want_notices;
    if (row[1] == "latin1") want_notices.emplace_back(kNotUtf8Notice);
    else if (row[1] != "none")
      want_notices.push_back("The quote that opens on line " + row[1] +
                             " is never closed: everything after it was read into one cell.");
    worksheet::Worksheet sheet;
    std::istringstream in(FromHex(row[0]));
    EXPECT_EQ(ReadDelimitedText(in, ',', sheet), want_notices) << row.Where();
    EXPECT_EQ(Row(sheet, 1), expected) << row.Where();
    // A sequence or a byte-order mark cut between two reads decodes alike.
    for (const std::size_t piece : {1, 2, 3})
      EXPECT_EQ(DecodeInPieces(FromHex(row[0]), piece), DecodeInPieces(FromHex(row[0]), 0)) << row.Where();
  }
}

// Empty fields cost nothing however many there are; a text past the grid's
// last column ends the reading with the limit it reached.
TEST(DelimitedTextTest, ALinePastTheLastColumnIsRefusedAndEmptyFieldsAreFree) {
  const auto sheet = Read(std::string(1000000, ',') + "\n1," + std::string(100000, ',') + "\n");
  EXPECT_EQ(sheet.DataColCnt(), 1);
  EXPECT_EQ(sheet.DataRowCnt(), 2);
  EXPECT_EQ(Read(std::string(16383, ',') + "x").Text(1, 16384), "x");
  try {
    Read(std::string(16384, ',') + "x");
    ADD_FAILURE() << "a text in column 16,385 was read";
  } catch (const std::length_error& error) {
    EXPECT_STREQ(error.what(), "the sheet has more than 16,384 columns");
  }
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

// A sheet with every kind of awkward text: separators of each kind, quotes,
// line breaks of each kind, UTF-8, a leading byte-order mark, blanks kept,
// empty cells inside rows and at the ends of rows, and a ragged right edge.
worksheet::Worksheet AwkwardSheet() {
  worksheet::Worksheet sheet("Awkward");
  const std::vector<std::vector<std::string>> cells = {
      {"a,b", "tab\there", "semi;colon", "space here"},
      {"\"quoted\"", "", "line\nbreak", "cr\r\nlf"},
      {"", "", "", ""},
      {"Größe µm ✓ 측정", "\xEF\xBB\xBFmark", " lead", "trail "},
      {"1.7976931348623157e308", "-0", "", "\"\""},
      {"lone\rcr", "", "", ""},
  };
  for (std::size_t r = 0; r < cells.size(); ++r)
    for (std::size_t c = 0; c < cells[r].size(); ++c)
      sheet.SetText(static_cast<long>(r) + 1, static_cast<long>(c) + 1, cells[r][c]);
  sheet.SetText(7, 6, "far");
  return sheet;
}

TEST(DelimitedTextTest, WrittenTextReadsBackToTheSameCellsWithEverySeparator) {
  const worksheet::Worksheet sheet = AwkwardSheet();
  for (const char separator : {',', '\t', ';', ' ', '|'}) {
    for (const bool bom : {false, true}) {
      std::ostringstream out;
      if (bom) out << "\xEF\xBB\xBF";
      WriteDelimitedText(out, sheet, {separator, false});
      worksheet::Worksheet back;
      std::istringstream in(out.str());
      ReadDelimitedText(in, {separator, false}, back);
      ASSERT_EQ(back.DataRowCnt(), sheet.DataRowCnt()) << separator;
      ASSERT_EQ(back.DataColCnt(), sheet.DataColCnt()) << separator;
      for (long row = 1; row <= sheet.DataRowCnt(); ++row)
        for (long col = 1; col <= sheet.DataColCnt(); ++col)
          EXPECT_EQ(back.Text(row, col), sheet.Text(row, col)) << "separator " << int(separator) << " " << row << "," << col;
    }
  }
  std::ostringstream out;
  WriteDelimitedText(out, sheet, {',', false});
  // Every row carries all six fields and ends with CR LF.
  EXPECT_TRUE(out.str().starts_with("\"a,b\",tab\there,semi;colon,space here,,\r\n")) << out.str();
  EXPECT_THROW(WriteDelimitedText(out, sheet, {'"', false}), std::invalid_argument);
}

TEST(DelimitedTextTest, AHeaderRowNamesTheColumns) {
  const auto sheet = [] {
    worksheet::Worksheet read;
    std::istringstream in("\xEF\xBB\xBF" "Diameter;\"Length; mm\";;Note\r\n1,5;2;;x\r\n");
    ReadDelimitedText(in, {';', true}, read);
    return read;
  }();
  EXPECT_EQ(sheet.ColumnHeaderName(1), "Diameter");
  EXPECT_EQ(sheet.ColumnHeaderName(2), "Length; mm");
  EXPECT_EQ(sheet.ColumnHeader(3), "C");  // an empty name leaves the letters
  EXPECT_EQ(sheet.ColumnHeaderName(4), "Note");
  EXPECT_EQ(sheet.DataRowCnt(), 1);
  EXPECT_EQ(Row(sheet, 1), (Cells{"1,5", "2", "", "x"}));

  // Written with its header row and read back with one: names and cells.
  std::ostringstream out;
  WriteDelimitedText(out, sheet, {'\t', true});
  EXPECT_EQ(out.str(), "Diameter\tLength; mm\t\tNote\r\n1,5\t2\t\tx\r\n");
  worksheet::Worksheet back;
  std::istringstream in(out.str());
  ReadDelimitedText(in, {'\t', true}, back);
  for (long col = 1; col <= 4; ++col) EXPECT_EQ(back.ColumnHeaderName(col), sheet.ColumnHeaderName(col));
  EXPECT_EQ(Row(back, 1), Row(sheet, 1));
  // Without the option the header row is not written.
  std::ostringstream plain;
  WriteDelimitedText(plain, sheet, {',', false});
  EXPECT_EQ(plain.str(), "\"1,5\",2,,x\r\n");
}

}  // namespace
}  // namespace orvik::formats
