#include "stats/critical_value_tables.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>

#include "stats/chi_square_distribution.h"
#include "stats/f_distribution.h"
#include "stats/normal_distribution.h"
#include "stats/t_distribution.h"

namespace orvik::stats {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(CriticalValueTables, TRowsFollowTheDegreeOfFreedomBands) {
  // 95 % two-sided, column 4: rows 0..29 are 1..30 df, then 40, 50, 60, 80,
  // 100, 120, 1000, and the normal limit.
  EXPECT_DOUBLE_EQ(Estt(3, 4), 2.7764451051977943);
  EXPECT_EQ(Estt(0, 4), GetInvTUpper(0.025, 1.0));
  EXPECT_EQ(Estt(29, 4), GetInvTUpper(0.025, 30.0));
  const double banded[] = {40, 50, 60, 80, 100, 120, 1000};
  for (int row = 30; row <= 36; ++row) EXPECT_EQ(Estt(row, 4), GetInvTUpper(0.025, banded[row - 30])) << row;
  EXPECT_EQ(Estt(37, 4), GetInvNormalUpper(0.025));
  // Columns run 60 % .. 99.9 %, so every row increases along them.
  for (int row = 0; row < 38; ++row)
    for (int column = 1; column < 11; ++column) EXPECT_GT(Estt(row, column), Estt(row, column - 1));
  EXPECT_EQ(Estt(2, 7), GetInvTUpper(0.005, 3.0));
}

TEST(CriticalValueTables, ChiSquareRowsAreDegreesOfFreedomMinusOne) {
  EXPECT_EQ(EstChi(0, 4), GetInvChisqUpper(0.025, 1.0));
  EXPECT_EQ(EstinvChi(0, 4), GetInvChisq(0.025, 1.0));
  EXPECT_EQ(EstChi(799, 10), GetInvChisqUpper(0.0005, 800.0));
  EXPECT_EQ(EstinvChi(799, 0), GetInvChisq(0.2, 800.0));
  for (int row : {0, 1, 9, 98, 799})
    for (int column = 0; column < 11; ++column) EXPECT_LT(EstinvChi(row, column), EstChi(row, column));
}

TEST(CriticalValueTables, FRowsAndLevels) {
  // Levels 0..3 are upper-tail areas 0.10, 0.05, 0.025, 0.01.
  EXPECT_EQ(EstF(0, 0, 1), GetInvFUpper(0.05, 1.0, 1.0));
  EXPECT_EQ(EstF(29, 5, 3), GetInvFUpper(0.01, 30.0, 6.0));
  EXPECT_EQ(EstF(30, 31, 2), GetInvFUpper(0.025, 40.0, 60.0));
  EXPECT_EQ(EstF(32, 0, 0), GetInvFUpper(0.10, 120.0, 1.0));
  EXPECT_EQ(EstF(33, 33, 2), 1.0);
  EXPECT_NEAR(EstF(4, 33, 1), GetInvChisqUpper(0.05, 5.0) / 5.0, 1e-14);
  EXPECT_NEAR(EstF(33, 4, 1), 5.0 / GetInvChisq(0.05, 5.0), 1e-13);
}

TEST(CriticalValueTables, IndicesOutsideATableThrow) {
  const struct {
    double a, b;
  } bad_t[] = {{-1, 0}, {38, 0}, {0, 11}, {0, -1}, {2.5, 0}, {kNaN, 0}, {0, kNaN}, {1e300, 0}};
  for (const auto& c : bad_t) {
    EXPECT_THROW(Estt(c.a, c.b), std::out_of_range) << c.a << " " << c.b;
    EXPECT_THROW(EstChi(c.a == 38 ? 800 : c.a, c.b), std::out_of_range) << c.a << " " << c.b;
    EXPECT_THROW(EstinvChi(c.a == 38 ? 800 : c.a, c.b), std::out_of_range) << c.a << " " << c.b;
  }
  EXPECT_THROW(EstF(34, 0, 0), std::out_of_range);
  EXPECT_THROW(EstF(0, 34, 0), std::out_of_range);
  EXPECT_THROW(EstF(0, 0, 4), std::out_of_range);
  EXPECT_THROW(EstF(0, 0, -1), std::out_of_range);
  try {
    Estt(38, 0);
    FAIL();
  } catch (const std::out_of_range& error) {
    EXPECT_STREQ(error.what(), "row 38 is outside the t table (whole numbers 0 to 37)");
  }
}

}  // namespace
}  // namespace orvik::stats
