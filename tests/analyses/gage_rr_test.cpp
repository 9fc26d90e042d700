#include "analyses/gage_rr_analysis.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <map>
#include <set>

#include "analyses/gage_rr_study.h"
#include "cli/cli_host.h"
#include "formats/workbook_file.h"
#include "cli/cell_range.h"
#include "support/case_table.h"

namespace orvik::analyses {
namespace {

using testing_support::ReadCases;

GageStudy Study(const std::vector<std::vector<std::vector<double>>>& cells) {
  GageStudy study;
  for (std::size_t i = 0; i < cells.size(); ++i) study.parts.push_back(std::to_string(i + 1));
  for (std::size_t j = 0; j < cells.front().size(); ++j) study.appraisers.push_back(std::string(1, 'A' + j));
  study.cells = cells;
  return study;
}

TEST(GageRRTest, KConstantsMeetTheManualsFourDecimals) {
  for (const auto& row : ReadCases("analyses/data/gage_constants.tsv")) {
    const int n = std::stoi(row[0]);
    if (row[1] != "-") {
      EXPECT_NEAR(TrialsConstant(n), row.Number(1), 0.00005) << row.Where();
    }
    EXPECT_NEAR(SingleRangeConstant(n), row.Number(2), 0.00005) << row.Where();
  }
  // Exactly: d2(2) = 2 / sqrt(pi) and d2* of one range of two = sqrt(2).
  EXPECT_NEAR(TrialsConstant(2), std::sqrt(std::acos(-1.0)) / 2.0, 1e-10);
  EXPECT_NEAR(SingleRangeConstant(2), std::sqrt(0.5), 1e-10);
  // Every size the dialog allows has its constant.
  for (const int n : {2, 10, 50}) EXPECT_TRUE(std::isfinite(SingleRangeConstant(n))) << n;
}

TEST(GageRRTest, InteractionIsPooledAboveAQuarterAndNegativeComponentsAreZero) {
  for (const auto& row : ReadCases("analyses/data/gage_pooling.tsv")) {
    const double e = row.Number(0);
    std::vector<std::vector<std::vector<double>>> cells(2, std::vector<std::vector<double>>(2));
    for (int i = 0; i < 2; ++i)
      for (int j = 0; j < 2; ++j) {
        const double mean = 10.0 + 5.0 * i + (i == j ? e : -e);
        cells[i][j] = {mean - 1.0, mean + 1.0};
      }
    const GageAnova anova = FitGageAnova(Study(cells));
    EXPECT_NEAR(anova.interaction.p, row.Number(1), 1e-9) << row.Where();
    EXPECT_EQ(anova.pooled, row[2] == "1") << row.Where();
    EXPECT_NEAR(anova.variances.repeatability, row.Number(3), 1e-9) << row.Where();
    EXPECT_NEAR(anova.variances.interaction, row.Number(4), 1e-9) << row.Where();
    EXPECT_EQ(anova.variances.appraiser, 0.0) << row.Where();
  }
}

TEST(GageRRTest, DistinctCategoriesHaveTheirFloorAndNoneWithoutGaugeVariation) {
  struct Case { double part, gage; std::optional<long> ndc; };
  for (const Case& c : {Case{0.0, 1.0, 1}, Case{1.0, 1.0, 1}, Case{4.0, 1.0, 2}, Case{100.0, 1.0, 14},
                        Case{1.0, 0.0, std::nullopt}}) {
    GageVariances v;
    v.part = c.part;
    v.repeatability = c.gage;
    EXPECT_EQ(DistinctCategories(v), c.ndc) << c.part << " " << c.gage;
  }
}

TEST(GageRRTest, StudiesThatCannotBeAnalysedAreRefused) {
  const GageRows good{{"1", "1", "1", "1", "2", "2", "2", "2"}, {"A", "A", "B", "B", "A", "A", "B", "B"},
                      {1, 2, 3, 4, 5, 6, 7, 8}};
  ASSERT_TRUE(MakeGageStudy(good));
  EXPECT_EQ(MakeGageStudy(good)->Trials(), 2);
  const auto broken = [&](auto change) { GageRows rows = good; change(rows); return MakeGageStudy(rows).has_value(); };
  EXPECT_FALSE(broken([](GageRows& r) { r.measurements[3] = NAN; }));
  EXPECT_FALSE(broken([](GageRows& r) { r.parts[0].clear(); }));
  EXPECT_FALSE(broken([](GageRows& r) { r.appraisers[7].clear(); }));
  EXPECT_FALSE(broken([](GageRows& r) { r.appraisers[7] = "A"; }));  // unbalanced
  EXPECT_FALSE(broken([](GageRows& r) { r.appraisers.assign(8, "A"); }));  // one appraiser
  EXPECT_FALSE(broken([](GageRows& r) { r.parts = {"1", "2", "3", "4", "1", "2", "3", "4"}; }));  // one trial
}

TEST(GageRRTest, StudyDialogRefusesInvalidEntriesAndStaysOpen) {
  for (const auto& row : ReadCases("analyses/data/gage_rr_factor_cases.tsv")) {
    cli::CliHost host(worksheet::Worksheet("WorkSheet 1"), {}, {});
    GageRRFactor dialog;
    dialog.Type(row[0], row[1]);
    EXPECT_EQ(dialog.PressOk(host), row[2] == "ok") << row.Where();
    if (row[2] == "ok") continue;
    ASSERT_EQ(host.Messages().size(), 1u) << row.Where();
    EXPECT_EQ(host.Messages().front().text, "Please, input valid numerical data");
  }
}

TEST(GageRRTest, StudyDialogKeepsItsSettingsForTheAnalysis) {
  cli::CliHost host(worksheet::Worksheet("WorkSheet 1"), {}, {});
  GageRRFactor dialog;
  dialog.Type("Appraiserstxt", "2");
  EXPECT_FALSE(dialog.Control("Name3txt").enabled);
  dialog.Click("Randomize");
  EXPECT_FALSE(dialog.Control("Seedtxt").enabled);
  dialog.Type("Tolerancetxt", "0.6");
  dialog.Click("XbarRMethod");
  ASSERT_TRUE(dialog.PressOk(host));
  const GageRRSettings& kept = host.Settings().Last<GageRRSettings>();
  EXPECT_EQ(kept.appraiserNames, (std::vector<std::string>{"A", "B"}));
  EXPECT_FALSE(kept.seed);
  EXPECT_EQ(kept.tolerance, 0.6);
  EXPECT_EQ(kept.method, GageMethod::XbarR);
  // They also go with the runs that follow, so a block analysis replays
  // under the same settings.
  const auto& options = host.OptionsBeforeCommand();
  EXPECT_NE(std::find(options.begin(), options.end(), shell::ControlSetting{"GageRRFactor", "Tolerancetxt", "0.6"}),
            options.end());
  dialog.PressCancel(host);
  EXPECT_EQ(host.Log().Text(), "Welcome to Orvik 2.0\r\nCancel Gagre R&R study");
}

// The AIAG study laid out on a study sheet, in its randomized run order,
// gives the report of the same measurements selected on a worksheet, under
// the settings the sheet keeps rather than the program's last ones.
TEST(GageRRTest, StudySheetIsReadWholeUnderItsOwnSettings) {
  GageRRSettings design;
  design.seed = 7;
  design.tolerance = 5.0;
  design.method = GageMethod::XbarR;
  worksheet::Worksheet sheet = GageStudySheet("Gage Study 1", design);
  ASSERT_EQ(sheet.DataRowCnt(), 90);
  std::set<std::string> runs;
  for (long row = 1; row <= 90; ++row) {
    const auto text = [&](long col) { return std::string(sheet.Text(row, col)); };
    EXPECT_EQ(text(1), std::to_string(row));
    EXPECT_TRUE(runs.insert(text(2) + "/" + text(3) + "/" + text(4)).second) << row;
    // Each appraiser's round of ten parts in one block, trial after trial.
    EXPECT_EQ(text(3), std::string(1, "ABC"[(row - 1) / 10 % 3])) << row;
    EXPECT_EQ(text(4), std::to_string((row - 1) / 30 + 1)) << row;
  }
  std::map<std::string, std::string> measured;  // part/appraiser/trial
  std::ifstream in(std::string(ORVIK_SOURCE_DIR) + "/examples/gage_study.csv");
  std::map<std::string, int> trial;
  for (std::string line; std::getline(in, line);) {
    const auto a = line.find(','), b = line.find(',', a + 1);
    const std::string key = line.substr(0, b);
    measured[line.substr(0, a) + "/" + line.substr(a + 1, b - a - 1) + "/" + std::to_string(++trial[key])] =
        line.substr(b + 1);
  }
  const auto analyse = [&] {
    cli::CliHost host(sheet, {}, {});
    GageRRAnalysis(host);
    return host;
  };
  cli::CliHost empty = analyse();
  ASSERT_EQ(empty.Messages().size(), 1u);
  EXPECT_EQ(empty.Messages().front().text, "Include improper data or null cells");
  for (long row = 1; row <= 90; ++row)
    sheet.SetText(row, 5, measured.at(std::string(sheet.Text(row, 2)) + "/" + std::string(sheet.Text(row, 3)) + "/" +
                                      std::string(sheet.Text(row, 4))));
  cli::CliHost on_sheet = analyse();
  ASSERT_EQ(on_sheet.Windows().size(), 1u);

  const std::vector<cli::DialogSetting> settings{{"GageRRFactor", "XbarRMethod", "1"}, {"GageRRFactor", "Tolerancetxt", "5"}};
  worksheet::Worksheet block("WorkSheet 1");
  formats::ReadFirstSheet(std::string(ORVIK_SOURCE_DIR) + "/examples/gage_study.csv", block);
  block.Selection = *cli::ParseCellRange("A:C");
  cli::CliHost on_block(std::move(block), settings, {});
  ASSERT_TRUE(cli::RunDialogsBeforeCommand(on_block, settings, {}));
  GageRRAnalysis(on_block);
  ASSERT_EQ(on_block.Windows().size(), 1u);
  EXPECT_EQ(on_sheet.Windows().front().table->TextRows(), on_block.Windows().front().table->TextRows());
  EXPECT_EQ(on_sheet.Log().Text(), on_block.Log().Text());
}

}  // namespace
}  // namespace orvik::analyses
