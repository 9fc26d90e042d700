#pragma once

#include <string>
#include <vector>

namespace orvik::analyses {

// One level of a factor with its observations.
struct FactorLevel {
  std::string name;
  std::vector<double> values;
};

struct LevelSummary {
  std::string name;
  long n = 0;
  double mean = 0.0;
  // The mean less the first observation of the first level, on the typed
  // decimals: differences of means are taken from these.
  double deviationMean = 0.0;
  double sd = 0.0;  // NaN for a single observation
  // The 95 % interval of the mean from the pooled standard deviation.
  double lower = 0.0;
  double upper = 0.0;
};

// One of Tukey's simultaneous comparisons: level i minus level j.
struct TukeyComparison {
  std::size_t first = 0;
  std::size_t second = 0;
  double difference = 0.0;
  double se = 0.0;  // of the difference
  double lower = 0.0;
  double upper = 0.0;
  double q = 0.0;          // |difference| / (se / sqrt 2)
  double adjustedP = 0.0;  // P(Q > q) of the studentized range
};

// The one-way analysis of variance of levels that each hold at least one
// observation, at least two levels and more observations than levels.
struct OneWayFit {
  std::vector<LevelSummary> levels;
  long factorDf = 0;
  long errorDf = 0;
  long totalDf = 0;
  double factorSS = 0.0;
  double errorSS = 0.0;
  double totalSS = 0.0;
  double factorMS = 0.0;
  double errorMS = 0.0;
  double f = 0.0;
  double p = 0.0;
  double s = 0.0;  // pooled standard deviation
  double rSquared = 0.0;
  double adjustedRSquared = 0.0;
};

// The sums of squares are formed from deviations about the first value on
// the typed decimals, and the within-level sum of squares about each
// level's own mean (two passes), so that data of many constant digits keep
// their digits.
OneWayFit FitOneWay(const std::vector<FactorLevel>& levels);

// Tukey's (Tukey-Kramer for unequal sizes) simultaneous comparisons of all
// pairs of levels at family confidence `level` (0.95), in the order (1, 2),
// (1, 3), ..., (2, 3), ...; `critical` receives the studentized range
// quantile used.
std::vector<TukeyComparison> TukeyComparisons(const OneWayFit& fit, double level, double* critical = nullptr);

}  // namespace orvik::analyses
