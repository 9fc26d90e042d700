#pragma once

#include <optional>
#include <string>
#include <vector>

#include "analyses/two_way_fit.h"

namespace orvik::analyses {

// The measurements of a crossed gauge study: every appraiser measures every
// part the same number of times. cells[i][j] holds the trials of part i by
// appraiser j, so the parts are the rows of the two-factor layout.
struct GageStudy {
  std::vector<std::string> parts;
  std::vector<std::string> appraisers;
  TwoWayCells cells;

  long Trials() const { return static_cast<long>(cells.front().front().size()); }
};

// How the components of variation are estimated.
enum class GageMethod { Anova, XbarR };

// The estimated variances of the sources of variation. The reproducibility
// is the appraisers' and the appraiser-by-part interaction's together; the
// gauge's is repeatability and reproducibility; the total adds the parts'.
struct GageVariances {
  double repeatability = 0.0;
  double appraiser = 0.0;
  double interaction = 0.0;
  double part = 0.0;

  double Reproducibility() const { return appraiser + interaction; }
  double Gage() const { return repeatability + Reproducibility(); }
  double Total() const { return Gage() + part; }
};

// The interaction is pooled into repeatability when its p-value exceeds this.
inline constexpr double kInteractionPoolingLevel = 0.25;

// The ANOVA method: the crossed two-way analysis of variance with
// interaction of parts and appraisers (random effects: parts and appraisers
// are tested against the interaction, the interaction against
// repeatability). When the interaction's p-value exceeds
// kInteractionPoolingLevel, the model is refitted without it: its sum of
// squares joins repeatability's and parts and appraisers are tested against
// the pooled mean square. Variance components from the expected mean
// squares; a negative estimate is set to 0.
struct GageAnova {
  TwoWayFit fit;  // rows: parts, columns: appraisers
  // The model with interaction, tested as random effects.
  TwoWayTerm part;
  TwoWayTerm appraiser;
  TwoWayTerm interaction;
  bool pooled = false;
  // The model without interaction, filled when pooled; its error is
  // repeatability.
  TwoWayTerm pooledPart;
  TwoWayTerm pooledAppraiser;
  long pooledDf = 0;
  double pooledSS = 0.0;
  double pooledMS = 0.0;
  GageVariances variances;
};
GageAnova FitGageAnova(const GageStudy& study);

// The Xbar-R (average and range) method. EV = R-bar K1 with R-bar the
// average range of the trials of each part and appraiser; AV =
// sqrt((X-diff K2)^2 - EV^2 / (parts trials)), 0 when that is negative,
// with X-diff the range of the appraisers' averages; PV = R_p K3 with R_p
// the range of the parts' averages. K1 = 1 / d2(trials); K2 and K3 are
// 1 / d2* of a single range of the appraisers' and the parts' averages. The
// three are standard deviations; the interaction has no estimate of its own.
struct GageXbarR {
  std::vector<double> appraiserAverages;
  std::vector<double> appraiserRangeBars;  // average range of each appraiser
  std::vector<double> partAverages;
  std::vector<std::vector<double>> cellRanges;  // [part][appraiser]
  std::vector<std::vector<double>> cellMeans;   // [part][appraiser]
  double rBar = 0.0;
  double xDiff = 0.0;
  double partRange = 0.0;
  double K1 = 0.0;
  double K2 = 0.0;
  double K3 = 0.0;
  double EV = 0.0;
  double AV = 0.0;
  double PV = 0.0;
  GageVariances variances;
};
GageXbarR FitGageXbarR(const GageStudy& study);

// The constants of the Xbar-R method for a number of trials, of appraisers
// or of parts (2 to 100): K1 = 1 / d2(n) and K2 = K3 = 1 / d2*(n) of one
// range (g = 1).
double TrialsConstant(int trials);
double SingleRangeConstant(int size);

// The number of distinct categories, max(1, floor(1.41 sigma_part /
// sigma_gage)); nothing when the gauge's variation is 0.
std::optional<long> DistinctCategories(const GageVariances& variances);

// The range (largest minus smallest) of values, 0 when empty.
double RangeOf(const std::vector<double>& values);

}  // namespace orvik::analyses
