#include "capability/histogram.h"

#include <gtest/gtest.h>

#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "stats/decimal_numbers.h"
#include "support/case_table.h"

namespace orvik::capability {
namespace {

HistogramClasses ClassesOf(const std::vector<double>& values) {
  return MakeHistogramClasses(values, *std::min_element(values.begin(), values.end()),
                              *std::max_element(values.begin(), values.end()));
}

// Class counts by sample size and decimals by minimum (data/histogram_classes.tsv).
TEST(HistogramClassCountTest, CountsAndDecimalsOfTheTable) {
  for (const auto& row : testing_support::ReadCases("capability/data/histogram_classes.tsv")) {
    if (row[0] == "count") {
      EXPECT_EQ(HistogramClassCount(std::stol(row[1])), std::stol(row[2])) << row.Where();
    } else {
      EXPECT_EQ(HistogramDecimals(row.Number(1)), std::stoi(row[2])) << row.Where();
    }
  }
}

TEST(HistogramClassesTest, IntegerDataFromTenToTwenty) {
  const HistogramClasses classes = ClassesOf({10, 12, 13, 14, 15, 16, 17, 18, 19, 20});
  EXPECT_EQ(classes.classCount(), 6);
  EXPECT_EQ(classes.decimals, 1);
  EXPECT_EQ(classes.width, 2);
  EXPECT_EQ(classes.lowerLimits, (std::vector<double>{9, 11, 13, 15, 17, 19}));
  // 13, 15, 17 and 19 sit on a lower limit and belong to that class.
  EXPECT_EQ(classes.frequencies, (std::vector<long>{1, 1, 2, 2, 2, 2}));
}

TEST(HistogramClassesTest, AValueOnAShownLimitFallsInTheNextClassDespiteBinaryNoise) {
  // Limits formed by adding 0.1-multiples are inexact in binary; every value
  // that equals a shown limit must still open its class.
  std::vector<double> values;
  for (int i = 0; i <= 40; ++i) values.push_back(stats::Round(24.99 + 0.001 * i, 3));
  const HistogramClasses classes = ClassesOf(values);
  for (long i = 0; i < classes.classCount(); ++i)
    for (const double x : values)
      if (x == classes.lowerLimits[i]) {
        long cls = 0;
        while (cls + 1 < classes.classCount() && x >= classes.lowerLimits[cls + 1]) ++cls;
        EXPECT_EQ(cls, i) << x;
      }
  EXPECT_EQ(std::accumulate(classes.frequencies.begin(), classes.frequencies.end(), 0L), 41);
}

TEST(HistogramClassesTest, TheLastClassTakesAValueOnItsUpperLimit) {
  // 0, 1, 2: k = 4, h = Round(2 / 3, 1) = 0.7, classes from -0.4 by 0.7
  // up to 2.4. Adding 2.4 itself to the values must not lose it.
  const HistogramClasses classes = ClassesOf({0, 1, 2});
  EXPECT_EQ(classes.classCount(), 4);
  EXPECT_EQ(classes.width, 0.7);
  EXPECT_EQ(classes.lowerLimits, (std::vector<double>{-0.4, 0.3, 1.0, 1.7}));
  EXPECT_EQ(classes.lastUpperLimit, 2.4);
  EXPECT_EQ(classes.frequencies, (std::vector<long>{1, 0, 1, 1}));
  const HistogramClasses with_top = MakeHistogramClasses(std::vector<double>{0, 1, 2, 2.4}, 0, 2);
  EXPECT_EQ(with_top.frequencies, (std::vector<long>{1, 0, 1, 2}));
}

TEST(HistogramClassesTest, CountsLikeTheClassTestOnLargeSamples) {
  std::mt19937_64 random(7);
  std::normal_distribution<double> normal(50, 3);
  for (const long n : {100L, 10000L, 1000000L}) {
    std::vector<double> values;
    for (long i = 0; i < n; ++i) values.push_back(std::round(normal(random) * 1000) / 1000);
    const HistogramClasses classes = ClassesOf(values);
    EXPECT_EQ(classes.classCount(), HistogramClassCount(n));
    std::vector<long> expected(classes.classCount(), 0);
    for (const double x : values)
      for (long i = 0; i < classes.classCount(); ++i)
        if (classes.lowerLimits[i] <= x && (x < classes.upperLimit(i) || i + 1 == classes.classCount())) {
          ++expected[i];
          break;
        }
    EXPECT_EQ(classes.frequencies, expected) << n;
    EXPECT_EQ(std::accumulate(expected.begin(), expected.end(), 0L), n) << n;
  }
}

}  // namespace
}  // namespace orvik::capability
