#pragma once

namespace orvik::analyses {

// The alternative hypothesis of a test.
enum class Alternative { TwoSided, Greater, Less };

// Typed counts of one sample of items: how many were defective out of how
// many inspected.
struct ProportionCounts {
  long defects = 0;
  long sample = 0;
};

// What the interval-estimation dialogs store (Estimation, TwoEstimation,
// Proportions, TwoProportions) for the analyses to read.
struct EstimationSettings {
  // True: sigma is estimated from the data; false: the given sigmas are used.
  bool estimateSigma = true;
  double sigma1 = 1.0;  // the 1-sample sigma, or that of sample 1
  double sigma2 = 1.0;
  ProportionCounts counts1;  // the 1-sample counts, or those of sample 1
  ProportionCounts counts2;
};

// What the test dialogs store (MeanHypoth, HypothProportion,
// TwoHypothProportion, TwoHypoth).
struct TestSettings {
  bool estimateSigma = true;
  double sigma = 1.0;
  // The hypothesised mean, variance or proportion of a 1-sample test.
  double hypothesised = 0.0;
  // The significance level as the user typed it, in percent (5 for 5 %).
  double alphaPercent = 5.0;
  Alternative alternative = Alternative::TwoSided;
  bool equalVariance = true;  // the 2-sample t test's pooled form
  ProportionCounts counts1;
  ProportionCounts counts2;
};

}  // namespace orvik::analyses
