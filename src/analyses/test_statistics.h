#pragma once

#include <optional>

#include "analyses/analysis_settings.h"
#include "analyses/sample_summary.h"

namespace orvik::analyses {

// A test statistic with its p-value under the chosen alternative. A value
// that is not finite (a sample without spread, a pooled proportion of 0 or
// 1) means the test cannot be carried out.
struct TestStatistic {
  double value = 0.0;
  double pValue = 1.0;
};

// Z = (mean - mu0) / (sigma / sqrt n) with a given sigma, otherwise
// t = (mean - mu0) / (s / sqrt n) on n - 1 degrees of freedom.
TestStatistic OneSampleMeanTest(const SampleSummary& sample, double mu0, std::optional<double> sigma,
                                Alternative alternative);

// Chi-Square = (n - 1) s^2 / sigma0^2 on n - 1 degrees of freedom.
TestStatistic OneSampleVarianceTest(const SampleSummary& sample, double variance0, Alternative alternative);

// Z = (x - n p0) / sqrt(n p0 (1 - p0)), rounded to 12 places.
TestStatistic OneProportionTest(const ProportionCounts& counts, double p0, Alternative alternative);

// Z = (p1 - p2) / sqrt(p (1 - p) (1/n1 + 1/n2)) with the pooled proportion
// p = (x1 + x2) / (n1 + n2): under H0 both samples share one proportion, so
// the standard error is estimated from both together.
TestStatistic TwoProportionTest(const ProportionCounts& first, const ProportionCounts& second,
                                Alternative alternative);

// F = s1^2 / s2^2 on n1 - 1 and n2 - 1 degrees of freedom.
TestStatistic TwoVarianceTest(const SampleSummary& first, const SampleSummary& second, Alternative alternative);

// Welch's degrees of freedom of the unequal-variance t test (not a whole
// number in general).
double WelchDegreesOfFreedom(const SampleSummary& first, const SampleSummary& second);

// t of the difference of two means: with the pooled variance on
// n1 + n2 - 2 degrees of freedom when equal variances are assumed,
// otherwise (mean1 - mean2) / sqrt(s1^2/n1 + s2^2/n2) on Welch's degrees
// of freedom.
TestStatistic TwoMeanTest(const SampleSummary& first, const SampleSummary& second, bool equal_variance,
                          Alternative alternative);

// t = mean / (s / sqrt n) of the row differences, on n - 1 degrees of freedom.
TestStatistic PairedTest(const SampleSummary& differences, Alternative alternative);

}  // namespace orvik::analyses
