#include "analyses/test_statistics.h"

#include <cmath>

#include "analyses/interval_estimation.h"
#include "analyses/p_values.h"
#include "stats/decimal_numbers.h"

namespace orvik::analyses {

namespace {

double Count(long n) { return static_cast<double>(n); }

TestStatistic WithTails(double value, const Tails& tails, Alternative alternative) {
  return {value, PValue(tails, alternative)};
}

TestStatistic TStatistic(double t, double df, Alternative alternative) {
  return WithTails(t, TTails(t, df), alternative);
}

}  // namespace

TestStatistic OneSampleMeanTest(const SampleSummary& s, double mu0, std::optional<double> sigma,
                                Alternative alternative) {
  const double root_n = std::sqrt(Count(s.n));
  if (sigma) {
    const double z = (s.mean - mu0) / (*sigma / root_n);
    return WithTails(z, NormalTails(z), alternative);
  }
  return TStatistic((s.mean - mu0) / (s.standardDeviation / root_n), Count(s.n - 1), alternative);
}

TestStatistic OneSampleVarianceTest(const SampleSummary& s, double variance0, Alternative alternative) {
  const double df = Count(s.n - 1);
  const double chi_square = df * s.variance / variance0;
  return WithTails(chi_square, ChiSquareTails(chi_square, df), alternative);
}

TestStatistic OneProportionTest(const ProportionCounts& counts, double p0, Alternative alternative) {
  const double n = Count(counts.sample);
  const double z = stats::Round((Count(counts.defects) - n * p0) / std::sqrt(n * p0 * (1.0 - p0)), 12);
  return WithTails(z, NormalTails(z), alternative);
}

TestStatistic TwoProportionTest(const ProportionCounts& first, const ProportionCounts& second,
                                Alternative alternative) {
  const double n1 = Count(first.sample), n2 = Count(second.sample);
  const double p1 = Count(first.defects) / n1, p2 = Count(second.defects) / n2;
  const double pooled = Count(first.defects + second.defects) / (n1 + n2);
  const double z = (p1 - p2) / std::sqrt(pooled * (1.0 - pooled) * (1.0 / n1 + 1.0 / n2));
  return WithTails(z, NormalTails(z), alternative);
}

TestStatistic TwoVarianceTest(const SampleSummary& first, const SampleSummary& second, Alternative alternative) {
  const double f = first.variance / second.variance;
  return WithTails(f, FTails(f, Count(first.n - 1), Count(second.n - 1)), alternative);
}

double WelchDegreesOfFreedom(const SampleSummary& first, const SampleSummary& second) {
  const double a = first.variance / Count(first.n), b = second.variance / Count(second.n);
  return (a + b) * (a + b) / (a * a / Count(first.n - 1) + b * b / Count(second.n - 1));
}

TestStatistic TwoMeanTest(const SampleSummary& first, const SampleSummary& second, bool equal_variance,
                          Alternative alternative) {
  const double n1 = Count(first.n), n2 = Count(second.n);
  const double difference = first.mean - second.mean;
  if (equal_variance) {
    const double t = difference / (std::sqrt(PooledVariance(first, second)) * std::sqrt(1.0 / n1 + 1.0 / n2));
    return TStatistic(t, n1 + n2 - 2, alternative);
  }
  const double t = difference / std::sqrt(first.variance / n1 + second.variance / n2);
  return TStatistic(t, WelchDegreesOfFreedom(first, second), alternative);
}

TestStatistic PairedTest(const SampleSummary& d, Alternative alternative) {
  return TStatistic(d.mean / (d.standardDeviation / std::sqrt(Count(d.n))), Count(d.n - 1), alternative);
}

}  // namespace orvik::analyses
