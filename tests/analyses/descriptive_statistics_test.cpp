#include "analyses/descriptive_statistics.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/accuracy_sample.h"
#include "support/case_table.h"
#include "support/sheet_host.h"

namespace orvik::analyses {
namespace {

using testing_support::Block;
using testing_support::HostOver;
using testing_support::Column;

// The value column of the grid, keyed by the label column.
std::string Cell(const shell::ResultWindow& window, const std::string& label) {
  for (const auto& row : window.table->TextRows())
    if (row.at(0) == label) return row.at(1);
  return "<no row " + label + ">";
}

TEST(DescriptiveStatisticsTest, OneToFourGivesTheTextbookSummary) {
  auto host = HostOver(Column({"1", "2", "3", "4"}), Block(1, 1, 1, 4));
  DescriptiveStatistics(host);
  ASSERT_EQ(host.Windows().size(), 1u);
  const std::vector<std::vector<std::string>> expected = {
      {"N", "4"},        {"Mean", "2.5"},         {"Variance", "1.666667"},
      {"Standard deviation", "1.290994"},         {"Median", "2.5"},
      {"Maximum", "4"},  {"Minimum", "1"},        {"Range", "3"},
      {"Q1", "1.25"},    {"Q3", "3.75"},          {"Interquartile range(IQR)", "2.5"},
      {"Coefficient of variation(CV)", "51.639778%"}, {"Sum", "10"},
  };
  EXPECT_EQ(host.Windows()[0].table->TextRows(), expected);
}

// Mean zero, a negative mean, identical values (data/spread_cases.tsv).
TEST(DescriptiveStatisticsTest, MeanZeroNegativeMeanAndIdenticalValues) {
  for (const auto& row : testing_support::ReadCases("analyses/data/spread_cases.tsv")) {
    SCOPED_TRACE(row.Where());
    const std::vector<std::string> values(row.fields.begin() + 2, row.fields.end());
    auto host = HostOver(Column(values), Block(1, 1, 1, static_cast<long>(values.size())));
    DescriptiveStatistics(host);
    ASSERT_EQ(host.Windows().size(), 1u);
    EXPECT_EQ(Cell(host.Windows()[0], "Coefficient of variation(CV)"), row[0]);
    EXPECT_EQ(Cell(host.Windows()[0], "Variance"), row[1]);
  }
}

TEST(DescriptiveStatisticsTest, LargeValuesOfSmallSpreadKeepEveryShownDigit) {
  // Column A whole. In decimal the 1001 values sum to 1001 x 10000000.2 and
  // deviate from their mean by 0.1 each but the first: variance 10 / 1000.
  auto host = HostOver(Column(testing_support::AccuracySampleTexts()), Block(1, -1, 1, -1));
  DescriptiveStatistics(host);
  ASSERT_EQ(host.Windows().size(), 1u);
  const auto& window = host.Windows()[0];
  EXPECT_EQ(Cell(window, "N"), "1001");
  EXPECT_EQ(Cell(window, "Sum"), "10010000200.2");
  EXPECT_EQ(Cell(window, "Mean"), "10000000.2");
  EXPECT_EQ(Cell(window, "Variance"), "0.01");
  EXPECT_EQ(Cell(window, "Standard deviation"), "0.1");
}

TEST(SummariseSampleTest, MatchesTwoPassFiguresOnAMillionValues) {
  std::vector<double> sample;
  for (long long i = 0; i < 1000000; ++i) sample.push_back(25.0 + static_cast<double>((i * 7919) % 1000) * 0.001);
  const DescriptiveSummary s = SummariseSample(sample);
  double mean = 0;
  for (const double x : sample) mean += x;
  mean /= static_cast<double>(sample.size());
  double squares = 0;
  for (const double x : sample) squares += (x - mean) * (x - mean);
  EXPECT_NEAR(s.mean, mean, 1e-11);
  EXPECT_NEAR(s.variance, squares / (sample.size() - 1), 1e-11);
  EXPECT_EQ(s.minimum, 25.0);
  EXPECT_NEAR(s.maximum, 25.999, 1e-12);
}

}  // namespace
}  // namespace orvik::analyses
