// Every entry of the critical-value tables against Boost.Math, measured as
// the relative distance to the exact quantile (boost_reference.h).

#include <gtest/gtest.h>

#include <iostream>

#include "stats/boost_reference.h"
#include "stats/critical_value_tables.h"

namespace orvik::stats {
namespace {

using namespace testing;
namespace bm = boost::math;

constexpr double kHalfAlpha[] = {0.2, 0.15, 0.1, 0.05, 0.025, 0.02, 0.01, 0.005, 0.0025, 0.001, 0.0005};
constexpr double kTDegrees[] = {1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14,  15,  16,  17,   18, 19,
                                20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 40, 50, 60, 80, 100, 120, 1000};
constexpr double kFDegrees[] = {1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14, 15,  16,
                                17, 18, 19, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 40, 60, 120};
constexpr double kFTail[] = {0.10, 0.05, 0.025, 0.01};

void Report(const WorstError& worst) {
  std::cout << worst.Report() << "\n";
  ::testing::Test::RecordProperty("worst_relative_error", worst.Report());
  EXPECT_LE(worst.worst(), 1e-13) << worst.Report();
}

TEST(CriticalValueAccuracy, TTable) {
  WorstError worst("Estt");
  for (int row = 0; row < 38; ++row) {
    for (int column = 0; column < 11; ++column) {
      const double value = Estt(row, column);
      const std::string where = Where("row %g column %g", row, column);
      if (row == 37) {
        CheckQuantile(worst, value, kHalfAlpha[column], true, bm::normal_distribution<Long>(),
                      bm::normal_distribution<Precise>(), false, where);
      } else {
        const double df = kTDegrees[row];
        CheckQuantile(worst, value, kHalfAlpha[column], true, bm::students_t_distribution<Long>(df),
                      bm::students_t_distribution<Precise>(df), false, where);
      }
    }
  }
  Report(worst);
}

TEST(CriticalValueAccuracy, ChiSquareTables) {
  WorstError upper("EstChi"), lower("EstinvChi");
  for (int row = 0; row < 800; ++row) {
    const bm::chi_squared_distribution<Long> d(row + 1.0);
    const bm::chi_squared_distribution<Precise> dp(row + 1.0);
    for (int column = 0; column < 11; ++column) {
      const std::string where = Where("row %g column %g", row, column);
      CheckQuantile(upper, EstChi(row, column), kHalfAlpha[column], true, d, dp, false, where);
      CheckQuantile(lower, EstinvChi(row, column), kHalfAlpha[column], false, d, dp, false, where);
    }
  }
  Report(upper);
  Report(lower);
}

TEST(CriticalValueAccuracy, FTable) {
  WorstError worst("EstF");
  for (int numerator = 0; numerator < 34; ++numerator) {
    for (int denominator = 0; denominator < 34; ++denominator) {
      for (int level = 0; level < 4; ++level) {
        const double value = EstF(numerator, denominator, level);
        const std::string where = Where("rows %g %g level %g", numerator, denominator, level);
        const double tail = kFTail[level];
        if (numerator == 33 && denominator == 33) {
          EXPECT_EQ(value, 1.0);
        } else if (denominator == 33) {  // chi-square(df1) / df1
          const double df1 = kFDegrees[numerator];
          CheckQuantile(worst, value * df1, tail, true, bm::chi_squared_distribution<Long>(df1),
                        bm::chi_squared_distribution<Precise>(df1), false, where);
        } else if (numerator == 33) {  // df2 / chi-square(df2)
          const double df2 = kFDegrees[denominator];
          CheckQuantile(worst, df2 / value, tail, false, bm::chi_squared_distribution<Long>(df2),
                        bm::chi_squared_distribution<Precise>(df2), false, where);
        } else {
          const double df1 = kFDegrees[numerator];
          const double df2 = kFDegrees[denominator];
          CheckQuantile(worst, value, tail, true, bm::fisher_f_distribution<Long>(df1, df2),
                        bm::fisher_f_distribution<Precise>(df1, df2), false, where);
        }
      }
    }
  }
  Report(worst);
}

}  // namespace
}  // namespace orvik::stats
