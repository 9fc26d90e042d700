#pragma once

#include <span>
#include <vector>

namespace orvik::analyses {

// A straight line fitted by least squares, y = intercept + slope x, or
// through the origin (no constant), with everything its report and charts
// show. The fit works on centred sums of deviations taken on the typed
// decimals (CentredData), never on the normal equations of raw sums.
struct RegressionFit {
  bool constant = true;
  long n = 0;
  double intercept = 0.0;  // 0 without a constant
  double slope = 0.0;
  double interceptSe = 0.0;
  double slopeSe = 0.0;
  double interceptT = 0.0;
  double slopeT = 0.0;
  double interceptP = 0.0;
  double slopeP = 0.0;
  double s = 0.0;  // residual standard deviation
  double rSquared = 0.0;
  double adjustedRSquared = 0.0;
  // Analysis of variance: regression, residual error and total (the total
  // about the mean with a constant, about zero without).
  long regressionDf = 1;
  long residualDf = 0;
  long totalDf = 0;
  double regressionSS = 0.0;
  double residualSS = 0.0;
  double totalSS = 0.0;
  double regressionMS = 0.0;
  double residualMS = 0.0;
  double f = 0.0;
  double fP = 0.0;
  // Per observation, in input order.
  std::vector<double> fitted;
  std::vector<double> residuals;
  std::vector<double> leverage;
  std::vector<double> standardizedResiduals;
  // For the bands: the mean of x and the sum of squares of x about it (about
  // zero without a constant).
  double xMean = 0.0;
  double sxx = 0.0;
};

// Fits y on x. Preconditions (checked by the caller): x.size() == y.size()
// >= 3 and x not constant; y constant gives a horizontal line with zero
// residuals. Statistics that divide by a zero residual error come out
// infinite or NaN.
RegressionFit FitLine(std::span<const double> x, std::span<const double> y, bool constant);

// Half widths at x0 of the confidence interval of the mean response and of
// the prediction interval of a new observation, both for the two-sided
// confidence `level` (0.95).
struct BandWidths {
  double confidence = 0.0;
  double prediction = 0.0;
};
BandWidths BandsAt(const RegressionFit& fit, double x0, double level);

}  // namespace orvik::analyses
