#include "analyses/regression_fit.h"

#include <cmath>

#include "analyses/centred_data.h"
#include "stats/compensated_sum.h"
#include "stats/f_distribution.h"
#include "stats/t_distribution.h"

namespace orvik::analyses {

namespace {

double TwoSidedT(double t, double df) {
  if (std::isnan(t)) return t;
  return 2.0 * stats::GetDFTUpper(std::fabs(t), df);
}

}  // namespace

RegressionFit FitLine(std::span<const double> x, std::span<const double> y, bool constant) {
  RegressionFit fit;
  fit.constant = constant;
  const long n = static_cast<long>(x.size());
  fit.n = n;
  const double nd = static_cast<double>(n);
  // Deviations from the first observation (with a constant) or the values
  // themselves (through the origin, where zero is the reference).
  const CentredData cx = constant ? Centre(x) : Centre(x, 0.0);
  const CentredData cy = constant ? Centre(y) : Centre(y, 0.0);
  const double mx = constant ? Mean(cx.deviations) : 0.0;
  const double my = constant ? Mean(cy.deviations) : 0.0;
  stats::CompensatedSum sxx, sxy, syy;
  for (long i = 0; i < n; ++i) {
    const double dx = cx.deviations[i] - mx;
    const double dy = cy.deviations[i] - my;
    sxx.Add(dx * dx);
    sxy.Add(dx * dy);
    syy.Add(dy * dy);
  }
  fit.sxx = sxx.Value();
  fit.xMean = constant ? cx.Value(mx) : 0.0;
  fit.slope = sxy.Value() / fit.sxx;
  if (constant) {
    // ybar - b xbar, with the product's rounding error carried by fma.
    const double ybar = cy.Value(my);
    const double product = fit.slope * fit.xMean;
    const double product_error = std::fma(fit.slope, fit.xMean, -product);
    fit.intercept = (ybar - product) - product_error;
  }
  stats::CompensatedSum sse;
  fit.fitted.resize(n);
  fit.residuals.resize(n);
  for (long i = 0; i < n; ++i) {
    const double dx = cx.deviations[i] - mx;
    const double residual = (cy.deviations[i] - my) - fit.slope * dx;
    fit.residuals[i] = residual;
    fit.fitted[i] = y[i] - residual;
    sse.Add(residual * residual);
  }
  fit.totalDf = constant ? n - 1 : n;
  fit.residualDf = fit.totalDf - 1;
  fit.regressionDf = 1;
  fit.totalSS = syy.Value();
  fit.residualSS = sse.Value();
  fit.regressionSS = fit.slope * fit.slope * fit.sxx;
  fit.regressionMS = fit.regressionSS;
  fit.residualMS = fit.residualSS / static_cast<double>(fit.residualDf);
  fit.s = std::sqrt(fit.residualMS);
  fit.f = fit.regressionMS / fit.residualMS;
  fit.fP = std::isnan(fit.f) ? fit.f : stats::GetDFFUpper(fit.f, 1.0, static_cast<double>(fit.residualDf));
  fit.rSquared = fit.regressionSS / fit.totalSS;
  fit.adjustedRSquared =
      1.0 - (fit.residualSS / static_cast<double>(fit.residualDf)) / (fit.totalSS / static_cast<double>(fit.totalDf));
  const double df = static_cast<double>(fit.residualDf);
  fit.slopeSe = fit.s / std::sqrt(fit.sxx);
  fit.slopeT = fit.slope / fit.slopeSe;
  fit.slopeP = TwoSidedT(fit.slopeT, df);
  if (constant) {
    fit.interceptSe = fit.s * std::sqrt(1.0 / nd + fit.xMean * fit.xMean / fit.sxx);
    fit.interceptT = fit.intercept / fit.interceptSe;
    fit.interceptP = TwoSidedT(fit.interceptT, df);
  }
  fit.leverage.resize(n);
  fit.standardizedResiduals.resize(n);
  for (long i = 0; i < n; ++i) {
    const double dx = cx.deviations[i] - mx;
    fit.leverage[i] = (constant ? 1.0 / nd : 0.0) + dx * dx / fit.sxx;
    fit.standardizedResiduals[i] = fit.residuals[i] / (fit.s * std::sqrt(1.0 - fit.leverage[i]));
  }
  return fit;
}

BandWidths BandsAt(const RegressionFit& fit, double x0, double level) {
  const double t = stats::GetInvTUpper(0.5 * (1.0 - level), static_cast<double>(fit.residualDf));
  const double d = x0 - fit.xMean;
  const double mean_part = (fit.constant ? 1.0 / static_cast<double>(fit.n) : 0.0) + d * d / fit.sxx;
  return {t * fit.s * std::sqrt(mean_part), t * fit.s * std::sqrt(1.0 + mean_part)};
}

}  // namespace orvik::analyses
