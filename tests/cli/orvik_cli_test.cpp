// orvik-cli run as a user runs it, on sheets written here: the select and
// calc commands, usage errors and the sheet files. The runs of analyses are
// golden cases (tests/golden).
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/wait.h>

#include "analyses/design_sheets.h"
#include "formats/project_file.h"
#include "formats/workbook_file.h"
#include "support/case_table.h"

namespace {

struct Answer {
  int status = -1;
  std::string out;
};

Answer RunCli(const std::string& arguments) {
  const std::string command = std::string(ORVIK_CLI_PATH) + " " + arguments + " 2>&1";
  Answer answer;
  FILE* pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) return answer;
  std::array<char, 4096> buffer;
  while (std::size_t got = std::fread(buffer.data(), 1, buffer.size(), pipe)) answer.out.append(buffer.data(), got);
  const int status = pclose(pipe);
  answer.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  return answer;
}

std::string WriteSheet(const std::string& name, const std::string& text) {
  const auto path = std::filesystem::temp_directory_path() / ("orvik_cli_test_" + name);
  std::ofstream(path, std::ios::binary) << text;
  return path.string();
}

TEST(OrvikCliTest, SelectPrintsTheResolvedBlockAndItsValues) {
  const std::string sheet = WriteSheet("grid.csv", "1,10,100\r\n2,20,200\r\n3,30,300\r\n4,40,400\r\n");
  const Answer answer = RunCli("select --sheet " + sheet + " --select C2:A1 --format json");
  EXPECT_EQ(answer.status, 0);
  EXPECT_EQ(answer.out,
            R"({"outcome":"completed","messages":[],"selection":{"firstColumn":3,"lastColumn":1,"firstRow":2,)"
            R"("lastRow":1,"columnStep":-1,"rowStep":-1,"values":[200,100,20,10,2,1],"count":6}})"
            "\n");
}

TEST(OrvikCliTest, SelectShowsTheCommonRefusals) {
  const std::string mixed = WriteSheet("mixed.tsv", "12\n\nabc\n7.5e1\n");
  const Answer answer = RunCli("select --sheet " + mixed + " --select A:A --format json");
  EXPECT_EQ(answer.out,
            R"({"outcome":"refused","messages":[{"title":"Confirmation Data","text":"All data are not enough to )"
            R"(analysis","icon":"exclamation","buttons":"ok"}],"selection":{"firstColumn":1,"lastColumn":1,)"
            R"("firstRow":1,"lastRow":4,"columnStep":1,"rowStep":1,"values":[12,75],"count":2}})"
            "\n");
  const Answer unresolved = RunCli("select --sheet " + mixed + " --format json");
  EXPECT_NE(unresolved.out.find(R"("text":"Please, select valid data")"), std::string::npos);
  EXPECT_NE(unresolved.out.find(R"("selection":null)"), std::string::npos);
}

TEST(OrvikCliTest, UsageErrorsExitWithTwoAndSayWhatWasWrong) {
  const std::string sheet = WriteSheet("small.csv", "1\n2\n3\n");
  const struct {
    std::string arguments;
    std::string says;
  } cases[] = {
      {"run mnuNoSuchKey --sheet " + sheet, "unknown tool key: mnuNoSuchKey"},
      {"run mnuCut --sheet " + sheet, "mnuCut works on the windows of the application"},
      {"select --sheet " + sheet + " --select A1:??", "bad range: A1:??"},
      // The grid ends at column XFD and row 2^24.
      {"select --sheet " + sheet + " --select XFE1:A1", "bad range: XFE1:A1 lies beyond the grid"},
      {"select --sheet " + sheet + " --select 1:16777217", "bad range: 1:16777217 lies beyond the grid"},
      {"run mnuBarX-R --sheet " + sheet + " --select 1:1099511627776", "bad range: 1:1099511627776 lies beyond"},
      {"run mnuHistogram --sheet " + sheet + " --select A:ZZZZZZZZ", "bad range: A:ZZZZZZZZ lies beyond"},
      {"select --sheet " + sheet + " --select ZZZZZZZZ99999999999:A1", "bad range: ZZZZZZZZ99999999999:A1 lies"},
      {"select --sheet /nonexistent.csv --select A1", "cannot read /nonexistent.csv"},
      {"select --sheet " + sheet + " --format xml", "--format takes json or text"},
      {"calc NoSuchFunction 1", "unknown function: NoSuchFunction"},
      {"calc Round 1", "Round takes 2 arguments"},
      {"calc Round x 1", "not a number: x"},
      {"frobnicate", "unknown command: frobnicate"},
  };
  for (const auto& c : cases) {
    const Answer answer = RunCli(c.arguments);
    EXPECT_EQ(answer.status, 2) << c.arguments;
    EXPECT_NE(answer.out.find(c.says), std::string::npos) << c.arguments << " said: " << answer.out;
  }
}

// Values near the largest double (data/overflow_runs.tsv): a result that is
// representable is computed around the overflow, one that is not takes the
// run-time failure path; no run prints a number that is not finite.
TEST(OrvikCliTest, OverflowGivesARepresentableResultOrTheFailurePath) {
  for (const auto& row : orvik::testing_support::ReadCases("cli/data/overflow_runs.tsv")) {
    const std::string sheet = std::string(ORVIK_SOURCE_DIR) + "/tests/cli/data/" + row[2];
    const Answer answer = RunCli("run " + row[0] + " --sheet " + sheet + " --select " + row[1] + " --format json");
    EXPECT_EQ(answer.status, 0) << row.Where();
    EXPECT_NE(answer.out.find("\"outcome\":\"" + row[3] + "\""), std::string::npos) << row.Where() << answer.out;
    EXPECT_NE(answer.out.find(row[4]), std::string::npos) << row.Where() << " said: " << answer.out;
    for (const char* word : {"null", "NaN", "Infinity"})
      EXPECT_EQ(answer.out.find(word), std::string::npos) << row.Where() << " shows " << word;
  }
}

TEST(OrvikCliTest, CalcPrintsSeventeenSignificantDigits) {
  const Answer answer = RunCli("calc Round 2.675 2");
  EXPECT_EQ(answer.status, 0);
  EXPECT_EQ(answer.out, "2.6800000000000002\n");
}

// --sheet reads any data file the way the window application opens it (the
// first sheet of a workbook or project: formats/workbook_file_test); a
// damaged project is a usage error with the reader's message.
TEST(OrvikCliFilesTest, SheetsComeFromWorkbooksAndDamagedProjectsAreUsageErrors) {
  orvik::worksheet::Worksheet data("Measurements"), other("Other");
  const char* const values[] = {"10.5", "11", "9.75", "10.25"};
  for (long row = 1; row <= 4; ++row) data.SetText(row, 2, values[row - 1]);
  other.SetText(1, 2, "12");
  const std::string xlsx = (std::filesystem::temp_directory_path() / "orvik_cli_test_same.xlsx").string();
  orvik::formats::WriteXlsx(xlsx, {&data, &other}, false);
  const Answer from_xlsx = RunCli("select --sheet " + xlsx + " --select B:B --format json");
  EXPECT_NE(from_xlsx.out.find(R"("values":[10.5,11,9.75,10.25])"), std::string::npos) << from_xlsx.out;

  const std::string broken = WriteSheet("broken.orv", "SQLite format 3");
  const Answer refused = RunCli("select --sheet " + broken + " --select B:B");
  EXPECT_EQ(refused.status, 2);
  EXPECT_NE(refused.out.find("is incomplete"), std::string::npos) << refused.out;
}

// A design sheet saved in a project and filled in there is analysed from
// its kept design: the factor columns hold real settings (Temp 150 and 180),
// coded from the design's low and high, and the runs are in random order.
TEST(OrvikCliFilesTest, AProjectsDesignSheetIsAnalysedFromItsKeptDesign) {
  orvik::analyses::FactorialSettings settings{4, 1, 0, false, {"Temp", "B", "C", "D"}, {150, -1, -1, -1},
                                              {180, 1, 1, 1}, 7u};
  orvik::formats::Project project;
  project.sheets.push_back({orvik::analyses::FactorialSheet("Design 1", settings), {}, std::nullopt});
  project.order = {{orvik::formats::Project::Document::Kind::Sheet, 0}};
  orvik::worksheet::Worksheet& sheet = project.sheets[0].sheet;
  // Montgomery's filtration rates by standard order.
  const char* const rates[] = {"45", "71", "48", "65", "68", "60", "80", "65",
                               "43", "100", "45", "104", "75", "86", "70", "96"};
  for (long row = 1; row <= 16; ++row) sheet.SetText(row, 8, rates[std::stoi(std::string(sheet.Text(row, 1))) - 1]);
  const std::string path = (std::filesystem::temp_directory_path() / "orvik_cli_test_design.orv").string();
  orvik::formats::SaveProject(path, project);
  const Answer answer = RunCli("run DOEAnalysis --sheet " + path + " --format json");
  EXPECT_NE(answer.out.find(R"(["A","Temp","150","180"])"), std::string::npos) << answer.out;
  EXPECT_NE(answer.out.find(R"(["Active effects","A, C, AC, D, AD"])"), std::string::npos) << answer.out;
  EXPECT_NE(answer.out.find("Factorial ANOVA is completed"), std::string::npos);
}

}  // namespace
