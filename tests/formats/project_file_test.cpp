#include "formats/project_file.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/file.h>
#include <signal.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <bit>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>
#include <memory>

#include "formats/test_files.h"
#include "support/case_table.h"

namespace orvik::formats {
namespace {

namespace fs = std::filesystem;
using worksheet::Worksheet;

// A project with the content that breaks naive writers: quotes, separators,
// line breaks, UTF-8, empty cells inside the data, long texts, header names,
// formats, selections; result windows with styled grid rows and charts with
// NaN, infinities and extreme numbers, made by runs that read one data sheet.
Project AwkwardProject() {
  Project project;
  project.worksheetCounter = 7;
  project.options = {{"RuleSettings", "ProfileCustom", "1"}, {"RuleSettings", "RuleAKtxt", "8 \"x\""}};

  ProjectSheet first{Worksheet("WorkSheet 2", 1200, 60), {}, WindowPlacement{10, 20, 640, 480, false, false}};
  Worksheet& a = first.sheet;
  a.SetText(1, 1, "say \"hi\", then\r\nleave");
  a.SetText(1, 2, "측정값 µm ✓");
  a.SetText(2, 1, "1.7976931348623157e308");
  a.SetText(3, 3, " padded\t");
  a.SetText(1100, 55, std::string(100000, 'x'));  // far corner, long text
  a.SetColumnHeader(1, "Diameter, \"mm\"");
  a.SetColumnHeader(3, "Länge");
  a.ActiveRow = 3;
  a.ActiveCol = 2;
  a.Selection = {true, 4, 2, 20, 3};
  first.formats.push_back({{1, 1, 2, 3}, {true, std::nullopt, false, worksheet::Alignment::Center, 0xFF0000u, {}}});
  first.formats.push_back({{1, 1, 1000, 1}, {std::nullopt, true, std::nullopt, std::nullopt, {}, 0x00FF00u}});
  // A design sheet whose names hold the characters its stored text escapes.
  worksheet::SheetDesign design{"Factorial", "DOEAnalysis", {"StdOrder", "Temp\\t\tC", "Response"},
                                {{"Temp\\t\tC", {}, -1.5, 2e300}, {"Line\n2", {"x", "", "y\r"}, {}, {}}}, "Response",
                                {{"Seed", ""}, {"Replicates", "2"}}};
  a.SetDesign(design);
  // The sheet as both windows' runs read it, before a later edit.
  auto data = std::make_shared<Worksheet>(a);
  data->SetText(4, 2, "as it was");
  project.sheets.push_back(std::move(first));

  ProjectSheet second{Worksheet("Empty one"), {}, std::nullopt};
  second.sheet.Selection = {true, -1, -1, 5, 9};
  project.sheets.push_back(std::move(second));

  shell::ResultWindow control = shell::MakeControlForm("xbar-R control chart", true);
  control.commandKey = "mnuBarX-R";
  control.table.emplace();
  control.table->columns = {"No.", "xbar", "", "R"};
  control.table->AddRow({"1", "10.25", "", "0.5"});
  control.table->AddRow({"Legend", "UCL=\"1\"", "a\nb", ""}, {shell::kBlue, shell::kWhite, true});
  control.table->background = shell::kWhite;
  shell::ChartSeries& one = control.Chart("ChartOne");
  one.title = "xbar";
  one.xTitle = "Subgroup";
  one.yTitle = "Mean";
  one.series.push_back({"xbar", shell::SeriesType::Line, {1, 2, 3}, {0.1, std::nan(""), -0.0}, {2, 3}, shell::kRed, false, false, false, {}});
  one.series.back().markCodes = {"* ", "B C "};
  one.series.push_back({"big", shell::SeriesType::Points, {std::numeric_limits<double>::infinity()},
                        {std::numeric_limits<double>::denorm_min()}, {}, std::nullopt, true, false, false, {}});
  shell::PlotSeries limit{"UCL", shell::SeriesType::Line, {1, 2, 3}, {0.3, 0.25, 0.3}, {}, shell::kRed, false, false, false, {}};
  limit.stepped = true;
  one.series.push_back(limit);
  limit.name = "Upper 2 sigma";
  limit.dashed = true;
  one.series.push_back(limit);
  one.lines.push_back({shell::LineOrientation::Horizontal, 10.5, "UCL= 10.5", shell::kRed, true});
  one.lines.push_back({shell::LineOrientation::Vertical, -1e-300, "", std::nullopt, false});
  one.labels.push_back({"n = 25", std::nullopt, std::nullopt});
  one.labels.push_back({"here", 1.5, -2.25});
  control.run = std::make_shared<const shell::CommandRun>(shell::CommandRun{
      "mnuBarX-R", data, {true, 1, 2, 1, 25},
      {{"ControlTwoLimit", "ControlOpt", "1"}, {"ControlTwoLimit", "UCL1txt", "25.01"},
       {"SubGroup", "Note", "say \"hi\",\n측정"}, {"SubGroup", "Empty", ""}}});
  // A restyled chart: texts with the codec's own separators, extreme and
  // negative numbers, a series left plain between two styled ones.
  shell::ChartPresentation look;
  look.chart = "ChartOne";
  look.title = "Means = \\n\nline two";
  look.x.title = "";
  look.y = {"µm", true, -1e-300, 1.7976931348623157e308, true, 3};
  look.fontFamily = "DejaVu Serif";
  look.titleSize = 30;
  look.gridLines = false;
  look.legend = shell::LegendPlace::BottomLeft;
  look.series.resize(3);
  look.series[0] = {shell::Rgb{0x123456}, 2.5, shell::LineStyle::DashDot, shell::MarkerShape::Star, 9.0, shell::kBlack};
  look.series[2].marker = shell::MarkerShape::None;
  look.limitColor = shell::Rgb{0};
  look.limitStyle = shell::LineStyle::None;
  look.limitDecimals = 0;
  control.presentation = {look, shell::PlainPresentation("ChartTwo")};
  project.results.push_back({std::move(control), WindowPlacement{0, 0, 800, 600, false, true}});

  shell::ResultWindow graph = shell::MakeDataChart("Pareto chart");
  graph.Chart("DataChartView").categories = {"Scratch", "Dent, deep", ""};
  graph.Chart("DataChartView").series.push_back({"count", shell::SeriesType::Bar, {1, 2, 3}, {5, 3, 0}, {}, {}, false, false, false, {}});
  graph.run = std::make_shared<const shell::CommandRun>(shell::CommandRun{"mnuPareto", data, {true, -1, -1, 3, 9}, {}});
  project.results.push_back({std::move(graph), std::nullopt});

  project.order = {{Project::Document::Kind::Result, 1},
                   {Project::Document::Kind::Sheet, 0},
                   {Project::Document::Kind::Result, 0},
                   {Project::Document::Kind::Sheet, 1}};
  project.active = 2;
  return project;
}

TEST(ProjectFileTest, AwkwardProjectComesBackExactly) {
  TempFolder folder;
  const std::string path = folder.Path("session.orv");
  const Project saved = AwkwardProject();
  SaveProject(path, saved);
  ExpectSameProject(LoadProject(path), saved);
  // Saving over an existing project replaces it whole.
  Project smaller;
  smaller.worksheetCounter = 1;
  smaller.sheets.push_back({Worksheet("WorkSheet 1"), {}, std::nullopt});
  smaller.sheets[0].sheet.SetText(1, 1, "only");
  // A run made with no worksheet open reads no data.
  smaller.results.push_back({shell::MakeDataChart("Histogram"), std::nullopt});
  smaller.results[0].window.run = std::make_shared<const shell::CommandRun>(
      shell::CommandRun{"mnuHistogram", nullptr, {}, {{"Histogram", "Bins", "10"}}});
  smaller.order = {{Project::Document::Kind::Sheet, 0}, {Project::Document::Kind::Result, 0}};
  SaveProject(path, smaller);
  ExpectSameProject(LoadProject(path), smaller);
  EXPECT_EQ(folder.Entries(), std::vector<std::string>{"session.orv"});  // no temporaries left
}

void ExecSql(const std::string& path, const std::string& sql) {
  sqlite3* db = nullptr;
  ASSERT_EQ(sqlite3_open(path.c_str(), &db), SQLITE_OK);
  EXPECT_EQ(sqlite3_exec(db, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK) << sql << ": " << sqlite3_errmsg(db);
  sqlite3_close(db);
}

// The project as a file of a format before the series' style reads it:
// plain series and charts in the program's own look.
void WithPlainSeries(Project& project) {
  for (auto& result : project.results) result.window.presentation.clear();
  for (auto& result : project.results)
    for (auto& chart : result.window.charts)
      for (auto& series : chart.series) series.stepped = series.dashed = false;
}

// Formats before 4 stored no designs: their sheets open as plain worksheets.
void WithoutDesigns(Project& project) {
  for (auto& entry : project.sheets) entry.sheet.SetDesign(std::nullopt);
}

// Format 1 stored no runs: its windows open without one.
TEST(ProjectFileTest, AProjectOfFormatOneOpensWithoutRuns) {
  TempFolder folder;
  const std::string path = folder.Path("old.orv");
  Project old = AwkwardProject();
  for (auto& result : old.results) result.window.run = nullptr;
  SaveProject(path, old);
  ExecSql(path, "DROP TABLE runs; DROP TABLE run_settings; DROP TABLE run_data; DROP TABLE sheet_designs; DROP TABLE chart_looks; "
                "ALTER TABLE chart_series DROP COLUMN style; PRAGMA user_version=1;");
  WithPlainSeries(old);
  WithoutDesigns(old);
  ExpectSameProject(LoadProject(path), old);
}

// Format 2 stored no series style: its series open as plain lines.
TEST(ProjectFileTest, AProjectOfFormatTwoOpensWithPlainSeries) {
  TempFolder folder;
  const std::string path = folder.Path("old.orv");
  Project old = AwkwardProject();
  SaveProject(path, old);
  ExecSql(path, "DROP TABLE sheet_designs; DROP TABLE chart_looks; ALTER TABLE chart_series DROP COLUMN style; PRAGMA user_version=2;");
  WithPlainSeries(old);
  WithoutDesigns(old);
  ExpectSameProject(LoadProject(path), old);
}

// Format 3 stored no designs: a design sheet of a newer file, saved there,
// would open as a plain worksheet.
TEST(ProjectFileTest, AProjectOfFormatThreeOpensWithoutDesigns) {
  TempFolder folder;
  const std::string path = folder.Path("old.orv");
  Project old = AwkwardProject();
  SaveProject(path, old);
  ExecSql(path, "DROP TABLE sheet_designs; PRAGMA user_version=3;");
  WithoutDesigns(old);
  ExpectSameProject(LoadProject(path), old);
}

// Loading `path` must fail with a message that starts with `message_start`.
void ExpectRefused(const std::string& path, const std::string& message_part) {
  try {
    LoadProject(path);
    ADD_FAILURE() << path << " was read";
  } catch (const ProjectFileError& error) {
    EXPECT_NE(std::string(error.what()).find(message_part), std::string::npos) << error.what();
    EXPECT_NE(std::string(error.what()).find(path), std::string::npos) << "the message names the file";
  }
}

TEST(ProjectFileTest, FilesThatAreNotReadableProjectsGiveAClearMessage) {
  TempFolder folder;
  const std::string good = folder.Path("good.orv");
  SaveProject(good, AwkwardProject());
  const std::string bytes = ReadAll(good);

  ExpectRefused(folder.Path("missing.orv"), "could not be opened");
  WriteAll(folder.Path("empty.orv"), "");
  ExpectRefused(folder.Path("empty.orv"), "is not an Orvik project file");
  WriteAll(folder.Path("data.orv"), "1,2,3\r\n4,5,6\r\n");
  ExpectRefused(folder.Path("data.orv"), "is not an Orvik project file");

  // Another program's SQLite database.
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(folder.Path("other.orv").c_str(), &other), SQLITE_OK);
  sqlite3_exec(other, "CREATE TABLE t(a); INSERT INTO t VALUES(1);", nullptr, nullptr, nullptr);
  sqlite3_close(other);
  ExpectRefused(folder.Path("other.orv"), "is not an Orvik project file");

  const std::string newer = folder.Path("newer.orv");
  fs::copy_file(good, newer);
  ExecSql(newer, "PRAGMA user_version=" + std::to_string(kProjectFormatVersion + 1));
  ExpectRefused(newer, "saved by a newer version of Orvik (project format " +
                           std::to_string(kProjectFormatVersion + 1) + "); this version reads project formats up to " +
                           std::to_string(kProjectFormatVersion) + ".");

  // Cut short at several points: inside the header, at a page boundary, mid-page.
  for (const std::size_t size : {std::size_t{10}, std::size_t{99}, std::size_t{65536}, bytes.size() / 2,
                                 bytes.size() - 1}) {
    const std::string cut = folder.Path("cut" + std::to_string(size) + ".orv");
    WriteAll(cut, bytes.substr(0, size));
    ExpectRefused(cut, "is incomplete");
  }

  // Damage: each page after the first overwritten with garbage, and one byte
  // changed inside the stored cell texts, which the database's own checks
  // cannot see.
  std::vector<std::string> damaged_files;
  for (std::size_t at = 65536; at < bytes.size(); at += 65536) {
    std::string damaged = bytes;
    for (std::size_t i = at; i < std::min(at + 65536, damaged.size()); ++i) damaged[i] = static_cast<char>(i * 37 >> 3);
    damaged_files.push_back(folder.Path("damaged" + std::to_string(at) + ".orv"));
    WriteAll(damaged_files.back(), damaged);
  }
  std::string flipped = bytes;
  const std::size_t text_at = flipped.find(std::string(1000, 'x'));
  ASSERT_NE(text_at, std::string::npos);
  flipped[text_at + 500] = 'y';
  damaged_files.push_back(folder.Path("flipped.orv"));
  WriteAll(damaged_files.back(), flipped);
  int refused = 0, attempts = 0;
  for (const std::string& path : damaged_files) {
    ++attempts;
    try {
      LoadProject(path);
      ADD_FAILURE() << path << " was read";
    } catch (const ProjectFileError& error) {
      ++refused;
      EXPECT_NE(std::string(error.what()).find("is damaged"), std::string::npos) << error.what();
    }
  }
  EXPECT_GT(attempts, 0);
  EXPECT_EQ(refused, attempts);
}

// Runs a save of `project` over `path` in a child process that is killed at
// `stage` (or, without one, after `delay_us` microseconds by the parent).
void SaveAndKill(const std::string& path, const Project& project, std::optional<SaveStage> stage, int delay_us) {
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    try {
      SaveProject(path, project, [stage](SaveStage reached) {
        if (stage && reached == *stage) raise(SIGKILL);
      });
    } catch (...) {
    }
    _exit(stage ? 3 : 0);  // a staged kill that never came is a failure
  }
  if (!stage) usleep(static_cast<useconds_t>(delay_us));
  if (!stage) kill(child, SIGKILL);
  int status = 0;
  waitpid(child, &status, 0);
  if (stage) {
    ASSERT_TRUE(WIFSIGNALED(status)) << "the save was not stopped at its stage";
  }
}

TEST(ProjectFileTest, ASaveKilledAtAnyMomentLeavesTheOldFileReadable) {
  TempFolder folder;
  const std::string path = folder.Path("work.orv");
  const Project old_project = AwkwardProject();
  SaveProject(path, old_project);

  Project new_project = AwkwardProject();
  new_project.worksheetCounter = 9;
  Worksheet& sheet = new_project.sheets[0].sheet;
  for (long row = 1; row <= 200000; ++row) sheet.SetText(row, 2, std::to_string(row));

  // Killed before the rename: the old project, whole.
  for (SaveStage stage : {SaveStage::TemporaryCreated, SaveStage::SheetsWritten, SaveStage::ResultsWritten,
                          SaveStage::Committed, SaveStage::Synced}) {
    SaveAndKill(path, new_project, stage, 0);
    ExpectSameProject(LoadProject(path), old_project);
  }
  // Killed at arbitrary moments: always one whole project, old or new.
  for (int delay_us : {0, 2000, 10000, 40000, 80000, 150000, 300000}) {
    SaveProject(path, old_project);
    SaveAndKill(path, new_project, std::nullopt, delay_us);
    const Project loaded = LoadProject(path);
    ExpectSameProject(loaded, loaded.worksheetCounter == 9 ? new_project : old_project);
  }
  // Killed after the rename: the new project, its 200,000 rows whole.
  SaveAndKill(path, new_project, SaveStage::Renamed, 0);
  ExpectSameProject(LoadProject(path), new_project);
}

// Crafted files (data/hostile_projects.tsv) are refused as damaged before
// any of their own code can run, and quickly.
TEST(ProjectFileTest, CraftedSchemasAreRefusedAsDamaged) {
  TempFolder folder;
  const std::string good = folder.Path("good.orv");
  SaveProject(good, AwkwardProject());
  int n = 0;
  for (const auto& row : testing_support::ReadCases("formats/data/hostile_projects.tsv")) {
    const std::string path = folder.Path("crafted" + std::to_string(++n) + ".orv");
    fs::copy_file(good, path);
    ExecSql(path, row[0]);
    const auto start = std::chrono::steady_clock::now();
    ExpectRefused(path, "is damaged and cannot be opened (" + row[1]);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5)) << row.Where();
  }
}

// A save killed before its rename leaves its temporary; the next open or
// save of the same project removes it. The locked temporary of a save still
// running and the temporaries of other projects stay.
TEST(ProjectFileTest, StaleSaveTemporariesGoOnTheNextOpenOrSave) {
  TempFolder folder;
  const std::string path = folder.Path("work.orv");
  const Project project = AwkwardProject();
  SaveProject(path, project);
  std::ofstream(folder.Path(".other.orv.saving-abcdef")) << "x";
  const std::string running = folder.Path(".work.orv.saving-RUNNIN");
  std::ofstream(running) << "x";
  const int lock = ::open(running.c_str(), O_RDONLY);
  ASSERT_EQ(::flock(lock, LOCK_EX), 0);
  const std::vector<std::string> kept{".other.orv.saving-abcdef", ".work.orv.saving-RUNNIN", "work.orv"};
  for (const bool by_save : {false, true}) {
    SCOPED_TRACE(by_save ? "save" : "open");
    SaveAndKill(path, project, SaveStage::SheetsWritten, 0);
    ASSERT_EQ(folder.Entries().size(), kept.size() + 1);  // the killed save's temporary
    if (by_save) SaveProject(path, project);
    else ExpectSameProject(LoadProject(path), project);
    EXPECT_EQ(folder.Entries(), kept);
  }
  ::close(lock);
  ExpectSameProject(LoadProject(path), project);
  EXPECT_EQ(folder.Entries(), (std::vector<std::string>{".other.orv.saving-abcdef", "work.orv"}));
}

TEST(ProjectFileTest, AFailedSaveKeepsTheOldFileAndLeavesNoTemporary) {
  TempFolder folder;
  const std::string path = folder.Path("keep.orv");
  const Project project = AwkwardProject();
  SaveProject(path, project);
  Project broken = project;
  broken.order.push_back({Project::Document::Kind::Sheet, 99});  // names no window
  EXPECT_THROW(SaveProject(path, broken), ProjectFileError);
  ExpectSameProject(LoadProject(path), project);
  EXPECT_EQ(folder.Entries(), std::vector<std::string>{"keep.orv"});
  EXPECT_THROW(SaveProject(folder.Path("no/such/folder/x.orv"), project), ProjectFileError);
}

TEST(ProjectFileTest, ProjectPathsEndInOrv) {
  EXPECT_TRUE(IsProjectPath("a/b/Line 3.ORV"));
  EXPECT_FALSE(IsProjectPath("data.csv"));
  EXPECT_FALSE(IsProjectPath("orv"));
}

}  // namespace
}  // namespace orvik::formats
