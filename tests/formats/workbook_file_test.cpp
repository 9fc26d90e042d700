#include "formats/workbook_file.h"

#include <gtest/gtest.h>

#include <zip.h>

#include "formats/delimited_text.h"
#include "formats/test_files.h"

namespace orvik::formats {
namespace {

using worksheet::Worksheet;

// Texts that a careless workbook writer changes: numbers in forms Excel
// would rewrite, huge and tiny numbers, XML's special characters, control
// characters, "_x" sequences that look like OOXML escapes, UTF-8, blanks.
// Numbers go out as numbers and come back in the digits they showed; the
// second text, where given, is how a number comes back when its text held
// more than the number (blanks, digits beyond those that make the double).
const std::vector<std::pair<std::string, std::string>> kAwkwardTexts = {
    {"12.5", ""}, {"1.50", ""}, {"007", ""}, {" 3", "3"}, {"1E+20", ""}, {"1.7976931348623157E+308", ""},
    {"-0", ""}, {"0.1", ""}, {"0.30000000000000004", ""}, {"4.9406564584124654E-324", "5e-324"},
    {"-0012.340", ""}, {"TRUE", ""}, {"=1+2", ""}, {"<b>&amp;</b>", ""}, {"a\"b'c", ""}, {"line\nbreak", ""},
    {"cr\r\nlf", ""}, {"tab\there", ""}, {"_x0041_", ""}, {"x_x000D_y", ""}, {"Größe µm ✓ 측정", ""},
    {"trail ", ""}, {"#N/A", ""}};

// The awkward texts as written, or as they read back.
Worksheet AwkwardSheet(const std::string& name, bool read_back = false) {
  Worksheet sheet(name);
  for (std::size_t i = 0; i < kAwkwardTexts.size(); ++i) {
    const auto& [text, back] = kAwkwardTexts[i];
    sheet.SetText(static_cast<long>(i % 7) + 1, static_cast<long>(i / 7) + 1, read_back && !back.empty() ? back : text);
  }
  sheet.SetText(30, 40, "far corner");
  return sheet;
}

void ExpectSameCells(const Worksheet& got, const Worksheet& want) {
  ASSERT_EQ(got.DataRowCnt(), want.DataRowCnt());
  ASSERT_EQ(got.DataColCnt(), want.DataColCnt());
  for (long row = 1; row <= want.DataRowCnt(); ++row)
    for (long col = 1; col <= want.DataColCnt(); ++col)
      EXPECT_EQ(got.Text(row, col), want.Text(row, col)) << row << "," << col;
}

TEST(WorkbookFileTest, XlsxRoundTripKeepsEveryTextAndSheetName) {
  TempFolder folder;
  const std::string path = folder.Path("book.xlsx");
  Worksheet first = AwkwardSheet("WorkSheet 1");
  first.SetColumnHeader(2, "Length [mm]");
  Worksheet second = AwkwardSheet("A very long name: with/bad*chars?[]");
  Worksheet third = AwkwardSheet("worksheet 1");  // clashes with the first, ignoring case
  WriteXlsx(path, {&first, &second, &third}, false);
  EXPECT_EQ(XlsxSheetNames(path),
            (std::vector<std::string>{"WorkSheet 1", "A very long name_ with_bad_char", "worksheet 1 (2)"}));
  const Worksheet expected = AwkwardSheet("", true);
  for (std::size_t i = 0; i < 3; ++i) {
    Worksheet back;
    ReadXlsxSheet(path, i, false, back);
    ExpectSameCells(back, expected);
  }
  // With the header row the names go to row 1 and come back as names.
  WriteXlsx(path, {&first}, true);
  Worksheet named;
  ReadXlsxSheet(path, 0, true, named);
  EXPECT_EQ(named.ColumnHeaderName(2), "Length [mm]");
  EXPECT_EQ(named.ColumnHeaderName(1), "");
  ExpectSameCells(named, expected);
  Worksheet unnamed;
  ReadXlsxSheet(path, 0, false, unnamed);
  EXPECT_EQ(unnamed.Text(1, 2), "Length [mm]");
  EXPECT_EQ(unnamed.Text(2, 1), "12.5");
  EXPECT_EQ(folder.Entries(), std::vector<std::string>{"book.xlsx"});
}

TEST(WorkbookFileTest, AFullHeightSheetRoundTripsAndALargerOneIsRefused) {
  TempFolder folder;
  Worksheet sheet("Tall");
  for (long row = 1; row <= kWorkbookMaxRows; ++row) sheet.SetText(row, 1, std::to_string(row % 1000) + ".25");
  sheet.SetText(kWorkbookMaxRows, 3, "last");
  const std::string path = folder.Path("tall.xlsx");
  WriteXlsx(path, {&sheet}, false);
  Worksheet back;
  ReadXlsxSheet(path, 0, false, back);
  EXPECT_EQ(back.DataRowCnt(), kWorkbookMaxRows);
  EXPECT_EQ(back.Text(kWorkbookMaxRows, 3), "last");
  EXPECT_EQ(back.Text(kWorkbookMaxRows - 1, 1), "575.25");
  for (long row = 1; row <= kWorkbookMaxRows; row += 4099) ASSERT_EQ(back.Text(row, 1), sheet.Text(row, 1));

  sheet.SetText(kWorkbookMaxRows + 1, 1, "one too many");
  try {
    WriteXlsx(folder.Path("too.xlsx"), {&sheet}, false);
    ADD_FAILURE() << "a sheet taller than Excel's was written";
  } catch (const WorkbookError& error) {
    EXPECT_NE(std::string(error.what()).find("larger than an Excel sheet"), std::string::npos);
  }
  EXPECT_EQ(folder.Entries(), std::vector<std::string>{"tall.xlsx"});
}

// Writes a zip archive of the given parts.
void WriteZip(const std::string& path, const std::vector<std::pair<std::string, std::string>>& parts) {
  int error = 0;
  zip_t* archive = zip_open(path.c_str(), ZIP_CREATE | ZIP_TRUNCATE, &error);
  ASSERT_NE(archive, nullptr);
  for (const auto& [name, text] : parts) {
    zip_source_t* source = zip_source_buffer(archive, text.data(), text.size(), 0);
    zip_file_add(archive, name.c_str(), source, ZIP_FL_OVERWRITE);
  }
  ASSERT_EQ(zip_close(archive), 0);
}

TEST(WorkbookFileTest, ReadsWorkbooksOfOtherWritersAndRefusesBrokenOnes) {
  TempFolder folder;
  // Shared strings with rich-text runs and phonetic runs, a boolean, an
  // inline string, a formula's cached string, cells without references, and
  // parts in unusual places.
  const std::string rels =
      R"(<?xml version="1.0"?><Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">)"
      R"(<Relationship Id="rId1" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument" Target="/wb/book.xml"/></Relationships>)";
  const std::string book =
      R"(<workbook xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main" xmlns:r="http://schemas.openxmlformats.org/officeDocument/2006/relationships">)"
      R"(<sheets><sheet name="Data &amp; more" sheetId="1" r:id="rId7"/></sheets></workbook>)";
  const std::string book_rels =
      R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">)"
      R"(<Relationship Id="rId7" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/worksheet" Target="sheets/../s1.xml"/>)"
      R"(<Relationship Id="rId8" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/sharedStrings" Target="strings.xml"/></Relationships>)";
  const std::string strings =
      R"(<sst xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main"><si><t>plain</t></si>)"
      R"(<si><r><t>rich </t></r><r><rPr><b/></rPr><t xml:space="preserve">text</t></r><rPh><t>ignored</t></rPh></si></sst>)";
  const std::string sheet =
      R"(<worksheet xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main"><sheetData>)"
      R"(<row r="1"><c r="A1" t="s"><v>1</v></c><c t="b"><v>1</v></c><c r="D1" t="inlineStr"><is><t>in line</t></is></c></row>)"
      R"(<row r="3"><c r="B3"><f>1/3</f><v>0.33333333333333331</v></c><c r="C3" t="str"><f>"a"</f><v>a</v></c><c r="E3" t="s"><v>0</v></c></row>)"
      R"(</sheetData></worksheet>)";
  const std::string good = folder.Path("other.xlsx");
  WriteZip(good, {{"_rels/.rels", rels}, {"wb/book.xml", book}, {"wb/_rels/book.xml.rels", book_rels},
                  {"wb/strings.xml", strings}, {"wb/s1.xml", sheet}});
  EXPECT_EQ(XlsxSheetNames(good), std::vector<std::string>{"Data & more"});
  Worksheet read;
  ReadXlsxSheet(good, 0, false, read);
  EXPECT_EQ(read.Text(1, 1), "rich text");
  EXPECT_EQ(read.Text(1, 2), "TRUE");
  EXPECT_EQ(read.Text(1, 4), "in line");
  EXPECT_EQ(read.Text(3, 2), "0.3333333333333333");  // the shortest text of the same number
  EXPECT_EQ(read.Text(3, 3), "a");
  EXPECT_EQ(read.Text(3, 5), "plain");
  EXPECT_EQ(read.DataRowCnt(), 3);

  const auto expect_refused = [](const std::string& path) {
    Worksheet untouched;
    EXPECT_THROW(ReadXlsxSheet(path, 0, false, untouched), WorkbookError) << path;
  };
  WriteAll(folder.Path("text.xlsx"), "a,b\r\n");
  expect_refused(folder.Path("text.xlsx"));
  const std::string whole = ReadAll(good);
  WriteAll(folder.Path("cut.xlsx"), whole.substr(0, whole.size() / 2));
  expect_refused(folder.Path("cut.xlsx"));
  WriteZip(folder.Path("badxml.xlsx"), {{"_rels/.rels", rels}, {"wb/book.xml", book}, {"wb/_rels/book.xml.rels", book_rels},
                                        {"wb/strings.xml", strings}, {"wb/s1.xml", sheet.substr(0, sheet.size() - 20)}});
  expect_refused(folder.Path("badxml.xlsx"));
  std::string bad_index = sheet;
  bad_index.replace(bad_index.find("<v>0</v>"), 8, "<v>9</v>");
  WriteZip(folder.Path("index.xlsx"), {{"_rels/.rels", rels}, {"wb/book.xml", book}, {"wb/_rels/book.xml.rels", book_rels},
                                       {"wb/strings.xml", strings}, {"wb/s1.xml", bad_index}});
  expect_refused(folder.Path("index.xlsx"));
  WriteZip(folder.Path("nobook.xlsx"), {{"_rels/.rels", rels}});
  expect_refused(folder.Path("nobook.xlsx"));
  Worksheet none;
  EXPECT_THROW(ReadXlsSheet(folder.Path("text.xlsx"), 0, false, none), WorkbookError);
  // 32 bytes that are no compound document (found by fuzzing: the .xls
  // library took them as a bare stream and claimed 230 MB).
  WriteAll(folder.Path("bare.xls"), std::string("\x09\0\0\0\0\0\x0a\0\0\0\xef\0\0\0\xea\xea\xea\xea\xea\xea\xea\xea\xea\0\x01\0\0\x0a\0\0\0\x09", 32));
  EXPECT_THROW(ReadXlsSheet(folder.Path("bare.xls"), 0, false, none), WorkbookError);
}

// Crafted workbooks end at the limit they reach, which the message names in
// plain words, before they cost memory: a cell or shared string longer than
// Excel allows, a cell past its last column or row, a part that inflates
// out of all proportion to its packed size. A cell of exactly 32,767
// characters (two bytes each) is read.
TEST(WorkbookFileTest, CraftedWorkbooksStopAtTheLimitTheyReach) {
  TempFolder folder;
  const std::string rels =
      R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">)"
      R"(<Relationship Id="r1" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument" Target="b.xml"/></Relationships>)";
  const std::string book =
      R"(<workbook xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main" xmlns:r="http://schemas.openxmlformats.org/officeDocument/2006/relationships">)"
      R"(<sheets><sheet name="S" sheetId="1" r:id="r7"/></sheets></workbook>)";
  const std::string book_rels =
      R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">)"
      R"(<Relationship Id="r7" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/worksheet" Target="s.xml"/>)"
      R"(<Relationship Id="r8" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/sharedStrings" Target="t.xml"/></Relationships>)";
  const auto sheet_of = [](const std::string& cells) {
    return R"(<worksheet xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main"><sheetData><row>)" + cells +
           "</row></sheetData></worksheet>";
  };
  const auto strings_of = [](const std::string& text) {
    return R"(<sst xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main"><si><t>)" + text + "</t></si></sst>";
  };
  std::string longest;
  for (int i = 0; i < 32767; ++i) longest += "\xC3\xA9";
  const struct {
    std::string sheet;
    std::string strings;
    std::string says;  // empty: read
  } cases[] = {
      {sheet_of(R"(<c r="A1" t="inlineStr"><is><t>)" + std::string(40000, 'a') + "</t></is></c>"), strings_of("x"),
       "a cell is longer than 32,767 characters"},
      {sheet_of(R"(<c r="A1" t="s"><v>0</v></c>)"), strings_of(std::string(32768, 'a')),
       "a cell is longer than 32,767 characters"},
      {sheet_of(R"(<c r="XFE1"><v>1</v></c>)"), strings_of("x"), "the sheet has more than 16,384 columns"},
      {sheet_of(R"(<c r="A1048577"><v>1</v></c>)"), strings_of("x"), "the sheet has more than 1,048,576 rows"},
      {sheet_of(R"(<c r="A1"><v>1</v></c>)" + std::string(8 << 20, ' ')), strings_of("x"),
       "inflates to more than 250 times its packed size"},
      {sheet_of(R"(<c r="B2" t="s"><v>0</v></c><c r="XFD1048576" t="inlineStr"><is><t>)" + longest + "</t></is></c>"),
       strings_of(longest), ""},
  };
  int n = 0;
  for (const auto& c : cases) {
    const std::string path = folder.Path("crafted" + std::to_string(++n) + ".xlsx");
    WriteZip(path, {{"_rels/.rels", rels}, {"b.xml", book}, {"_rels/b.xml.rels", book_rels}, {"t.xml", c.strings},
                    {"s.xml", c.sheet}});
    Worksheet read;
    if (c.says.empty()) {
      ReadXlsxSheet(path, 0, false, read);
      EXPECT_EQ(read.Text(2, 2), longest);
      EXPECT_EQ(read.Text(kWorkbookMaxRows, kWorkbookMaxCols), longest);
      continue;
    }
    try {
      ReadXlsxSheet(path, 0, false, read);
      ADD_FAILURE() << "case " << n << " was read";
    } catch (const WorkbookError& error) {
      EXPECT_NE(std::string(error.what()).find(c.says), std::string::npos) << error.what();
    }
  }
}

// The XML of one cell of the first sheet of a workbook written here.
std::string CellXml(const std::string& path, const std::string& ref) {
  int error = 0;
  zip_t* archive = zip_open(path.c_str(), ZIP_RDONLY, &error);
  if (archive == nullptr) return "";
  zip_stat_t stat;
  zip_stat(archive, "xl/worksheets/sheet1.xml", 0, &stat);
  std::string xml(stat.size, '\0');
  zip_file_t* part = zip_fopen(archive, "xl/worksheets/sheet1.xml", 0);
  zip_fread(part, xml.data(), xml.size());
  zip_fclose(part);
  zip_close(archive);
  const std::size_t start = xml.find("<c r=\"" + ref + "\"");
  return start == std::string::npos ? "" : xml.substr(start, xml.find("</c>", start) - start);
}

// Every value of the example subgroups is a number cell, in the decimals the
// worksheet shows; so are 9.8 and 499.0, which 16 digits do not print alike.
TEST(WorkbookFileTest, NumbersAreExportedAsNumberCells) {
  TempFolder folder;
  Worksheet sheet;
  ReadDelimitedFile(ORVIK_SOURCE_DIR "/examples/subgroups.csv", {',', false}, sheet);
  ASSERT_EQ(sheet.DataRowCnt() * sheet.DataColCnt(), 125);
  sheet.SetText(26, 1, "9.8");
  sheet.SetText(26, 2, "499.0");
  sheet.SetText(26, 3, "0.30000000000000004");
  const std::string path = folder.Path("subgroups.xlsx");
  WriteXlsx(path, {&sheet}, false);
  for (long row = 1; row <= 26; ++row)
    for (long col = 1; col <= (row == 26 ? 2 : 5); ++col) {
      const std::string ref = worksheet::ColumnLetters(col) + std::to_string(row);
      const std::string cell = CellXml(path, ref);
      EXPECT_TRUE(cell.find("<v>") != std::string::npos && cell.find(" t=") == std::string::npos) << ref << ": " << cell;
    }
  EXPECT_NE(CellXml(path, "C26").find(" t="), std::string::npos);  // 16 digits would change it: text
  Worksheet back;
  ReadXlsxSheet(path, 0, false, back);
  ExpectSameCells(back, sheet);
}

TEST(WorkbookFileTest, TheFirstSheetOfEveryKindOfFile) {
  TempFolder folder;
  Worksheet data = AwkwardSheet("Data");
  WriteXlsx(folder.Path("a.xlsx"), {&data}, false);
  WriteAll(folder.Path("a.tsv"), "1\t2\r\n3\t4\r\n");
  Project project;
  project.sheets.push_back({Worksheet("Second"), {}, std::nullopt});
  project.sheets.push_back({AwkwardSheet("First"), {}, std::nullopt});
  project.sheets[1].sheet.SetColumnHeader(1, "Named");
  project.sheets[1].sheet.Selection = {true, 1, 1, 2, 2};
  project.results.push_back({shell::MakeDataChart("Histogram"), std::nullopt});
  project.order = {{Project::Document::Kind::Result, 0}, {Project::Document::Kind::Sheet, 1},
                   {Project::Document::Kind::Sheet, 0}};
  SaveProject(folder.Path("a.orv"), project);

  Worksheet from_xlsx("WorkSheet 1");
  ReadFirstSheet(folder.Path("a.xlsx"), from_xlsx);
  ExpectSameCells(from_xlsx, AwkwardSheet("Data", true));
  Worksheet from_project("WorkSheet 1");
  ReadFirstSheet(folder.Path("a.orv"), from_project);
  ExpectSameCells(from_project, project.sheets[1].sheet);  // the first in window order
  EXPECT_EQ(from_project.Name(), "WorkSheet 1");
  EXPECT_EQ(from_project.ColumnHeaderName(1), "Named");
  EXPECT_FALSE(from_project.Selection.IsBlockSelected);
  Worksheet from_tsv;
  ReadFirstSheet(folder.Path("a.tsv"), from_tsv);
  EXPECT_EQ(from_tsv.Text(2, 2), "4");
  EXPECT_EQ(DataFileSheetNames(folder.Path("a.orv")), (std::vector<std::string>{"Second", "First"}));
}

}  // namespace
}  // namespace orvik::formats
