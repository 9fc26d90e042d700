#pragma once

#include <optional>
#include <utility>

namespace orvik::analyses {

// The alternative hypothesis of a test.
enum class Alternative { TwoSided, Greater, Less };

// Typed counts of one sample of items: how many were defective out of how
// many inspected.
struct ProportionCounts {
  long defects = 0;
  long sample = 0;
};

// The parameter records of the interval-estimation and test dialogs, one
// type per dialog: OK fills the dialog's record, the command computes from
// it, and the program keeps the last one of each type.

// Estimation (1-sample mean interval): the given sigma, or nothing when
// sigma is estimated from the data.
struct MeanIntervalSettings {
  std::optional<double> sigma;
};

// TwoEstimation (2-sample mean interval): the given sigmas of samples 1 and
// 2, or nothing when they are estimated.
struct DiffMeanIntervalSettings {
  std::optional<std::pair<double, double>> sigmas;
};

// Proportions (1-sample proportion interval): the typed counts.
struct ProportionIntervalSettings {
  ProportionCounts counts;
};

// TwoProportions (2-sample proportion interval): the counts of both samples.
struct TwoProportionIntervalSettings {
  ProportionCounts first;
  ProportionCounts second;
};

// MeanHypoth (1-sample mean and variance tests): the given sigma (nothing
// when estimated, and always for the variance), the hypothesised mean or
// variance, the significance level as typed in percent (5 for 5 %) and the
// alternative.
struct OneSampleTestSettings {
  std::optional<double> sigma;
  double hypothesised = 0.0;
  double alphaPercent = 5.0;
  Alternative alternative = Alternative::TwoSided;
};

// HypothProportion (1-sample proportion test).
struct ProportionTestSettings {
  ProportionCounts counts;
  double hypothesised = 0.0;
  double alphaPercent = 5.0;
  Alternative alternative = Alternative::TwoSided;
};

// TwoHypothProportion (2-sample proportion test).
struct TwoProportionTestSettings {
  ProportionCounts first;
  ProportionCounts second;
  double alphaPercent = 5.0;
  Alternative alternative = Alternative::TwoSided;
};

// TwoHypoth (2-sample variance, 2-sample t and paired t tests);
// `equalVariance` chooses the 2-sample t test's pooled form.
struct TwoSampleTestSettings {
  double alphaPercent = 5.0;
  Alternative alternative = Alternative::TwoSided;
  bool equalVariance = true;
};

}  // namespace orvik::analyses
