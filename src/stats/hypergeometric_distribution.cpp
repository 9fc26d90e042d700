// The hypergeometric distribution.
//
// Point probability: C(K, k) C(N - K, n - k) / C(N, n) written, as in R's
// dhyper, as the product of two binomial probabilities over a third, all
// with success probability n / N (carried in double-double), each from
// Loader's saddle-point form ("Fast and accurate computation of binomial
// probabilities", 2000; density_terms.h). The powers of n / N cancel, and
// each factor keeps full relative accuracy.
//
// Tails: the smaller tail is summed from its last point outward with the
// ratio P(X = x - 1) / P(X = x) = x (N - K - n + x) / ((n - x + 1)(K - x + 1)),
// stopping once a term no longer adds to the sum (Wu's algorithm as R's
// phyper uses it, "An accurate computation of the hypergeometric
// distribution function", ACM TOMS 19, 1993). Below the mean the sum gives
// the lower tail; above it the upper tail is summed as the lower tail of the
// number of failures, n - X. Only the larger tail, which is at least 1/2, is
// taken as 1 minus the smaller, where no digit is lost.

#include "stats/hypergeometric_distribution.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "stats/density_terms.h"
#include "stats/discrete_quantile.h"

namespace orvik::stats {

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

bool Whole(double v) { return v >= 0.0 && v < 9007199254740992.0 && v == std::floor(v); }
bool Invalid(double v, double population, double successes, double n) {
  return std::isnan(v) || !Whole(population) || !Whole(successes) || !Whole(n) || successes > population ||
         n > population;
}

// C(m, k) p^k q^(m-k) for whole 0 <= k <= m, with 0 < p < 1 and p + q = 1.
double BinomialTerm(double k, double m, detail::DD p, detail::DD q) {
  if (m == 0.0) return 1.0;
  if (k == 0.0) return detail::ExpDD(detail::LogDD(q) * m);
  if (k == m) return detail::ExpDD(detail::LogDD(p) * m);
  return detail::BetaPowerTerm(k, m - k, p, q) * (m / (k * (m - k)));
}

// P(X = k) for whole k inside the support.
double PointProbability(double k, double population, double successes, double n) {
  if (n == 0.0 || n == population || successes == 0.0 || successes == population) return 1.0;
  const detail::DD p = detail::Quotient(n, population);
  const detail::DD q = detail::Quotient(population - n, population);
  return BinomialTerm(k, successes, p, q) * BinomialTerm(n - k, population - successes, p, q) /
         BinomialTerm(n, population, p, q);
}

struct Tails {
  double lower;
  double upper;
};

Tails HypergeometricTails(double k, double population, double successes, double n) {
  k = std::floor(k);
  const double failures = population - successes;
  if (k < std::max(0.0, n - failures)) return {0.0, 1.0};
  if (k >= std::min(n, successes)) return {1.0, 0.0};
  double x = k, ones = successes, others = failures;
  bool lower = true;
  if (x * population > n * successes) {
    // Above the mean: P(X > k) = P(n - X <= n - k - 1), the number of
    // failures in the sample.
    std::swap(ones, others);
    x = n - x - 1.0;
    lower = false;
  }
  // Sum of P(X = j) / P(X = x) over j <= x.
  double sum = 1.0, term = 1.0;
  for (double j = x; j > 0.0 && term >= 1e-17 * sum; j -= 1.0) {
    term *= j * (others - n + j) / ((n + 1.0 - j) * (ones + 1.0 - j));
    sum += term;
  }
  const double small = PointProbability(x, population, ones, n) * sum;
  return lower ? Tails{small, 1.0 - small} : Tails{1.0 - small, small};
}

double Quantile(double target, bool upper_tail, double population, double successes, double n) {
  const double first = std::max(0.0, n - (population - successes));
  const double last = std::min(n, successes);
  const double mean = n * successes / population;
  const double variance = population > 1.0 ? mean * (population - successes) / population * (population - n) /
                                                 (population - 1.0)
                                           : 0.0;
  const auto lower = [&](double k) { return HypergeometricTails(k, population, successes, n).lower; };
  const auto upper = [&](double k) { return HypergeometricTails(k, population, successes, n).upper; };
  return detail::DiscreteQuantile(target, upper_tail, first, last, mean, std::sqrt(variance), lower, upper);
}

}  // namespace

double GetDFHypergeometric(double k, double population, double successes, double n) {
  if (Invalid(k, population, successes, n)) return kNaN;
  return HypergeometricTails(k, population, successes, n).lower;
}

double GetDFHypergeometricUpper(double k, double population, double successes, double n) {
  if (Invalid(k, population, successes, n)) return kNaN;
  return HypergeometricTails(k, population, successes, n).upper;
}

double HypergeometricProbability(double k, double population, double successes, double n) {
  if (Invalid(k, population, successes, n)) return kNaN;
  if (k != std::floor(k) || k < std::max(0.0, n - (population - successes)) || k > std::min(n, successes))
    return 0.0;
  return PointProbability(k, population, successes, n);
}

double GetInvHypergeometric(double prob, double population, double successes, double n) {
  if (Invalid(prob, population, successes, n) || prob < 0.0 || prob > 1.0) return kNaN;
  return Quantile(prob, false, population, successes, n);
}

double GetInvHypergeometricUpper(double q, double population, double successes, double n) {
  if (Invalid(q, population, successes, n) || q < 0.0 || q > 1.0) return kNaN;
  return Quantile(q, true, population, successes, n);
}

}  // namespace orvik::stats
