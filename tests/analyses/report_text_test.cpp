#include "analyses/report_text.h"

#include <gtest/gtest.h>

namespace orvik::analyses {
namespace {

TEST(SixDecimalsTest, AlwaysSixPlacesWithTiesToEven) {
  EXPECT_EQ(SixDecimals(0.0), "0.000000");
  EXPECT_EQ(SixDecimals(1.0), "1.000000");
  EXPECT_EQ(SixDecimals(0.05), "0.050000");
  EXPECT_EQ(SixDecimals(7.6e-24), "0.000000");
  EXPECT_EQ(SixDecimals(0.0000004999), "0.000000");
  EXPECT_EQ(SixDecimals(0.0000005), "0.000000");  // tie to the even 0
  EXPECT_EQ(SixDecimals(0.0000015), "0.000002");  // tie to the even 2
  EXPECT_EQ(SixDecimals(0.0237103), "0.023710");
  EXPECT_EQ(SixDecimals(0.9999996), "1.000000");
}

TEST(IntervalTextTest, BoundsRoundedToEightPlacesBetweenParentheses) {
  EXPECT_EQ(IntervalText(1.123456785, 2.0), "(1.12345678 , 2)");  // tie to even
  EXPECT_EQ(IntervalText(-0.25558670049, 6.25558670049), "(-0.2555867 , 6.2555867)");
  EXPECT_EQ(IntervalText(-0.000000001, 0.000000004), "(0 , 0)");
  EXPECT_EQ(EmptyIntervalText(), "(0.000000 , 0.000000)");
}

TEST(StatisticTextTest, RoundedToSixPlaces) {
  EXPECT_EQ(StatisticText(2.8284271247), "2.828427");
  EXPECT_EQ(StatisticText(0.0), "0");
  EXPECT_EQ(StatisticText(-1.0000005), "-1");
}

}  // namespace
}  // namespace orvik::analyses
