#include "analyses/confidence_levels.h"

#include <gtest/gtest.h>

#include <string>

namespace orvik::analyses {
namespace {

struct RowCase {
  long df;
  int row;
};

TEST(TTableRowTest, OneRowPerDegreeOfFreedomUpToThirtyThenBands) {
  // Each band edge on both sides: 30 | 31..40 | 41..50 | 51..60 | 61..80 |
  // 81..100 | 101..120 | 121..1000 | above.
  const RowCase cases[] = {{1, 0},    {4, 3},     {29, 28},   {30, 29},   {31, 30},   {40, 30},
                           {41, 31},  {50, 31},   {51, 32},   {60, 32},   {61, 33},   {80, 33},
                           {81, 34},  {100, 34},  {101, 35},  {120, 35},  {121, 36},  {1000, 36},
                           {1001, 37}, {100000, 37}};
  for (const auto& c : cases) EXPECT_EQ(TTableRow(c.df), c.row) << "df " << c.df;
}

TEST(TTableRowTest, SampleSizesOfTheOneSampleBands) {
  // A sample of n values has n - 1 degrees of freedom: 31 values use row 29,
  // 32 row 30, 1001 row 36 and 1002 the normal row 37.
  EXPECT_EQ(TTableRow(31 - 1), 29);
  EXPECT_EQ(TTableRow(32 - 1), 30);
  EXPECT_EQ(TTableRow(41 - 1), 30);
  EXPECT_EQ(TTableRow(42 - 1), 31);
  EXPECT_EQ(TTableRow(122 - 1), 36);
  EXPECT_EQ(TTableRow(1001 - 1), 36);
  EXPECT_EQ(TTableRow(1002 - 1), 37);
}

TEST(FTableRowTest, OneRowPerDegreeOfFreedomUpToThirtyThenFourBands) {
  const RowCase cases[] = {{1, 0},   {30, 29},  {31, 30},  {40, 30},  {41, 31},
                           {60, 31}, {61, 32},  {120, 32}, {121, 33}, {5000, 33}};
  for (const auto& c : cases) EXPECT_EQ(FTableRow(c.df), c.row) << "df " << c.df;
}

TEST(ConfidenceLevelsTest, LabelsAndTheirRoundedNormalCriticalValues) {
  const char* labels[] = {"60.0%", "70.0%", "80.0%", "90.0%", "95.0%", "96.0%",
                          "98.0%", "99.0%", "99.5%", "99.8%", "99.9%"};
  const double z[] = {0.84, 1.036, 1.28, 1.645, 1.96, 2.05, 2.325, 2.575, 2.81, 3.08, 3.28};
  for (std::size_t i = 0; i < 11; ++i) {
    EXPECT_EQ(std::string(kConfidenceLabels[i]), labels[i]);
    EXPECT_EQ(kNormalCriticalValues[i], z[i]);
  }
  EXPECT_EQ(kReportedLevels[0], 3);
  EXPECT_EQ(kReportedLevels[1], 4);
  EXPECT_EQ(kReportedLevels[2], 7);
}

}  // namespace
}  // namespace orvik::analyses
