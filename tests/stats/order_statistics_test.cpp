#include "stats/order_statistics.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace orvik::stats {
namespace {

TEST(OrderStatisticsTest, MedianOfOddAndEvenSamples) {
  EXPECT_EQ(SortedMedian(std::vector<double>{1, 2, 3}), 2);
  EXPECT_EQ(SortedMedian(std::vector<double>{1, 2, 3, 4}), 2.5);
  EXPECT_EQ(SortedMedian(std::vector<double>{-7}), -7);
  EXPECT_TRUE(std::isnan(SortedMedian(std::vector<double>{})));
}

TEST(OrderStatisticsTest, InterpolatesBetweenNeighboursAtFractionalPositions) {
  const std::vector<double> x{1, 2, 3, 4};
  EXPECT_EQ(ValueAtPosition(x, 1.25), 1.25);  // Q1 of N = 4
  EXPECT_EQ(ValueAtPosition(x, 3.75), 3.75);  // Q3 of N = 4
  EXPECT_EQ(ValueAtPosition(x, 2), 2);        // whole positions read the value itself
  const std::vector<double> y{10, 20, 40, 80, 160};
  EXPECT_EQ(ValueAtPosition(y, 1.5), 15);     // Q1 of N = 5
  EXPECT_EQ(ValueAtPosition(y, 4.5), 120);    // Q3 of N = 5
}

TEST(OrderStatisticsTest, PositionsOutsideTheSampleReadItsEnds) {
  const std::vector<double> one{5};
  EXPECT_EQ(ValueAtPosition(one, 0.5), 5);   // Q1 of N = 1
  EXPECT_EQ(ValueAtPosition(one, 1.5), 5);   // Q3 of N = 1
  const std::vector<double> two{3, 9};
  EXPECT_EQ(ValueAtPosition(two, 0.75), 3);  // Q1 of N = 2
  EXPECT_EQ(ValueAtPosition(two, 2.25), 9);  // Q3 of N = 2
  EXPECT_TRUE(std::isnan(ValueAtPosition(std::vector<double>{}, 1)));
}

}  // namespace
}  // namespace orvik::stats
