// The binomial and Poisson distributions.
//
// Method: the tails through the incomplete beta and gamma functions,
//   P(X <= k) = I_(1-p)(n - k, k + 1) = 1 - I_p(k + 1, n - k)  (binomial),
//   P(X <= k) = Q(k + 1, mean)                               (Poisson),
// (Abramowitz and Stegun 26.5.24 and 26.4.21), each tail taken from its own
// function so that a tail near 0 keeps its relative accuracy. The point
// probabilities use Loader's saddle-point form ("Fast and accurate
// computation of binomial probabilities", 2000) through the power terms of
// density_terms.h: C(n, k) p^k (1-p)^(n-k) is the power term
// p^k (1-p)^(n-k) / B(k, n - k) times n / (k (n - k)), and
// mean^k e^-mean / k! is the gamma power term. Quantiles by the stepping
// search of discrete_quantile.h.

#include "stats/binomial_distribution.h"

#include <cmath>
#include <limits>

#include "stats/density_terms.h"
#include "stats/discrete_quantile.h"
#include "stats/incomplete_beta.h"
#include "stats/incomplete_gamma.h"

namespace orvik::stats {

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

bool InvalidBinomial(double v, double n, double p) {
  return std::isnan(v) || !(n >= 0.0 && n < 9007199254740992.0 && n == std::floor(n)) || !(p >= 0.0 && p <= 1.0);
}
bool InvalidPoisson(double v, double mean) { return std::isnan(v) || !(mean > 0.0 && mean < HUGE_VAL); }
bool InvalidProbability(double v) { return !(v >= 0.0 && v <= 1.0); }

// {P(X <= k), P(X > k)} for the whole part of k.
struct Tails {
  double lower;
  double upper;
};

Tails BinomialTails(double k, double n, double p) {
  k = std::floor(k);
  if (k < 0.0) return {0.0, 1.0};
  if (k >= n) return {1.0, 0.0};
  if (p == 0.0) return {1.0, 0.0};
  if (p == 1.0) return {0.0, 1.0};
  const detail::BetaTails t = detail::IncompleteBeta(k + 1.0, n - k, detail::DD{p, 0.0}, detail::TwoSum(1.0, -p));
  return {t.upper, t.lower};
}

Tails PoissonTails(double k, double mean) {
  k = std::floor(k);
  if (k < 0.0) return {0.0, 1.0};
  if (std::isinf(k)) return {1.0, 0.0};
  const detail::GammaTails t = detail::IncompleteGamma(k + 1.0, detail::DD{mean, 0.0});
  return {t.upper, t.lower};
}

}  // namespace

double GetDFBinomial(double k, double n, double p) {
  return InvalidBinomial(k, n, p) ? kNaN : BinomialTails(k, n, p).lower;
}

double GetDFBinomialUpper(double k, double n, double p) {
  return InvalidBinomial(k, n, p) ? kNaN : BinomialTails(k, n, p).upper;
}

double BinomialProbability(double k, double n, double p) {
  if (InvalidBinomial(k, n, p)) return kNaN;
  if (k < 0.0 || k > n || k != std::floor(k)) return 0.0;
  const detail::DD q = detail::TwoSum(1.0, -p);
  if (p == 0.0) return k == 0.0 ? 1.0 : 0.0;
  if (p == 1.0) return k == n ? 1.0 : 0.0;
  if (k == 0.0) return detail::ExpDD(detail::LogDD(q) * n);
  if (k == n) return detail::ExpDD(detail::LogDD(p) * n);
  return detail::BetaPowerTerm(k, n - k, detail::DD{p, 0.0}, q) * (n / (k * (n - k)));
}

double GetInvBinomial(double prob, double n, double p) {
  if (InvalidBinomial(prob, n, p) || InvalidProbability(prob)) return kNaN;
  const auto lower = [&](double k) { return BinomialTails(k, n, p).lower; };
  const auto upper = [&](double k) { return BinomialTails(k, n, p).upper; };
  return detail::DiscreteQuantile(prob, false, 0.0, n, n * p, std::sqrt(n * p * (1.0 - p)), lower, upper);
}

double GetInvBinomialUpper(double q, double n, double p) {
  if (InvalidBinomial(q, n, p) || InvalidProbability(q)) return kNaN;
  const auto lower = [&](double k) { return BinomialTails(k, n, p).lower; };
  const auto upper = [&](double k) { return BinomialTails(k, n, p).upper; };
  return detail::DiscreteQuantile(q, true, 0.0, n, n * p, std::sqrt(n * p * (1.0 - p)), lower, upper);
}

double GetDFPoisson(double k, double mean) { return InvalidPoisson(k, mean) ? kNaN : PoissonTails(k, mean).lower; }

double GetDFPoissonUpper(double k, double mean) {
  return InvalidPoisson(k, mean) ? kNaN : PoissonTails(k, mean).upper;
}

double PoissonProbability(double k, double mean) {
  if (InvalidPoisson(k, mean)) return kNaN;
  if (k < 0.0 || k != std::floor(k) || std::isinf(k)) return 0.0;
  if (k == 0.0) return std::exp(-mean);
  return detail::GammaPowerTerm(k, detail::DD{mean, 0.0});
}

double GetInvPoisson(double prob, double mean) {
  if (InvalidPoisson(prob, mean) || InvalidProbability(prob)) return kNaN;
  if (prob == 1.0) return HUGE_VAL;
  const auto lower = [&](double k) { return PoissonTails(k, mean).lower; };
  const auto upper = [&](double k) { return PoissonTails(k, mean).upper; };
  return detail::DiscreteQuantile(prob, false, 0.0, HUGE_VAL, mean, std::sqrt(mean), lower, upper);
}

double GetInvPoissonUpper(double q, double mean) {
  if (InvalidPoisson(q, mean) || InvalidProbability(q)) return kNaN;
  if (q == 0.0) return HUGE_VAL;
  const auto lower = [&](double k) { return PoissonTails(k, mean).lower; };
  const auto upper = [&](double k) { return PoissonTails(k, mean).upper; };
  return detail::DiscreteQuantile(q, true, 0.0, HUGE_VAL, mean, std::sqrt(mean), lower, upper);
}

}  // namespace orvik::stats
