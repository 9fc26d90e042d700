#include "analyses/gage_rr_analysis.h"

#include <gtest/gtest.h>

#include <cmath>

#include "cli/cli_host.h"
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
  EXPECT_FALSE(kept.randomize);
  EXPECT_EQ(kept.tolerance, 0.6);
  EXPECT_EQ(kept.method, GageMethod::XbarR);
  dialog.PressCancel(host);
  EXPECT_EQ(host.Log().Text(), "Welcome to Orvik 2.0\r\nCancel Gagre R&R study");
}

}  // namespace
}  // namespace orvik::analyses
