#include "stats/critical_value_tables.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>

// Every entry is checked against Boost.Math in critical_value_accuracy_test.

namespace orvik::stats {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

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
