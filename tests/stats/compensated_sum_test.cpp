#include "stats/compensated_sum.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "support/accuracy_sample.h"
#include "support/case_table.h"

namespace orvik::stats {
namespace {

constexpr double kU = 0x1p-53;  // the unit roundoff of a double

double Compensated(const std::vector<double>& terms) {
  CompensatedSum sum;
  for (const double x : terms) sum.Add(x);
  return sum.Value();
}

double Plain(const std::vector<double>& terms) {
  double sum = 0.0;
  for (const double x : terms) sum += x;
  return sum;
}

// The exact sum of terms that are all multiples of 2^-30 below 2^83 in
// magnitude, rounded once: scaled by 2^30 each term is an integer below
// 2^113, so up to 2^14 of them add exactly in 128-bit integers, whose
// conversion to double rounds to nearest.
double ExactSum(const std::vector<double>& terms) {
  __int128 total = 0;
  for (const double x : terms) {
    const double scaled = std::ldexp(x, 30);
    EXPECT_TRUE(scaled == std::trunc(scaled) && std::fabs(scaled) < 0x1p113) << x;
    total += static_cast<__int128>(scaled);
  }
  return std::ldexp(static_cast<double>(total), -30);
}

// Cancellations plain summation gets wrong, and the edges where both agree
// (data/compensated_sums.tsv).
TEST(CompensatedSumTest, CancellationsAndEdgesOfTheTable) {
  for (const auto& row : testing_support::ReadCases("stats/data/compensated_sums.tsv")) {
    const std::size_t first = row[0] == "cancel" ? 3 : row[0] == "plain" ? 2 : 1;
    std::vector<double> terms;
    for (std::size_t i = first; i < row.fields.size(); ++i) terms.push_back(row.Number(i));
    if (row[0] == "nan") {
      EXPECT_TRUE(std::isnan(Compensated(terms))) << row.Where();
    } else if (row[0] == "plain") {
      EXPECT_EQ(Compensated(terms), row.Number(1)) << row.Where();
      EXPECT_EQ(Plain(terms), row.Number(1)) << row.Where();
    } else {
      EXPECT_EQ(Compensated(terms), row.Number(2)) << row[1];
      EXPECT_EQ(CompensatedTotal(terms), row.Number(2)) << row[1];
      EXPECT_NE(Plain(terms), row.Number(2)) << row[1] << ": plain summation gets this one right, so it tests nothing";
    }
  }
}

// Random terms m 2^e with |m| < 2^53 and -30 <= e <= max_exponent <= 30.
std::vector<double> RandomTerms(std::mt19937_64& random, int count, int max_exponent) {
  std::uniform_int_distribution<long long> mantissa(-(1LL << 53) + 1, (1LL << 53) - 1);
  std::uniform_int_distribution<int> exponent(-30, max_exponent);
  std::vector<double> terms;
  for (int i = 0; i < count; ++i) terms.push_back(std::ldexp(static_cast<double>(mantissa(random)), exponent(random)));
  return terms;
}

// Against exact sums: the result lies within one rounding of the exact sum
// plus 2 n u^2 times the sum of the magnitudes (Neumaier's bound, with a
// factor of two to spare), however badly the terms cancel.
TEST(CompensatedSumTest, AgreesWithExactSums) {
  std::mt19937_64 random(20240611);
  const std::vector<double> accuracy_sample = testing_support::AccuracySampleValues();
  // Terms up to 2^53 and their exact negatives, shuffled among terms below
  // 2^-7 that make up the whole sum: plain summation errs by units here.
  std::vector<double> cancelling = RandomTerms(random, 500, 0);
  for (std::size_t i = 0; i < 500; ++i) cancelling.push_back(-cancelling[i]);
  std::uniform_int_distribution<int> small(-(1 << 23), 1 << 23);
  for (int i = 0; i < 500; ++i) cancelling.push_back(std::ldexp(small(random), -30));
  std::shuffle(cancelling.begin(), cancelling.end(), random);
  std::vector<double> units_after_a_large_one{0x1p60};
  units_after_a_large_one.insert(units_after_a_large_one.end(), 4000, 3.0);

  const struct {
    std::string name;
    std::vector<double> terms;
  } cases[] = {
      {"the accuracy sample", accuracy_sample},
      {"mixed magnitudes", RandomTerms(random, 2000, 30)},
      {"terms and their near negatives", cancelling},
      {"small terms after a large one", units_after_a_large_one},
  };
  for (const auto& c : cases) {
    const double exact = ExactSum(c.terms);
    double magnitudes = 0.0;
    for (const double x : c.terms) magnitudes += std::fabs(x);
    const double n = static_cast<double>(c.terms.size());
    EXPECT_LE(std::fabs(Compensated(c.terms) - exact), kU * std::fabs(exact) + 2 * n * kU * kU * magnitudes)
        << c.name << ": exact " << exact;
  }
  // The accuracy sample's terms are multiples of 2^-29 near 1e10 when
  // summed, so its exact sum is a long way from a tie: the compensated sum
  // is the exact sum rounded, while the plain one is 1e-4 off.
  EXPECT_EQ(Compensated(accuracy_sample), ExactSum(accuracy_sample));
  EXPECT_GT(std::fabs(Plain(accuracy_sample) - ExactSum(accuracy_sample)), 5e-5);
}

}  // namespace
}  // namespace orvik::stats
