#pragma once

#include <string>
#include <vector>

namespace orvik::analyses {

// The observations of a two-factor layout: cells[i][j] holds those at level
// i of the row factor and level j of the column factor.
using TwoWayCells = std::vector<std::vector<std::vector<double>>>;

// One term of the analysis-of-variance table.
struct TwoWayTerm {
  long df = 0;
  double ss = 0.0;
  double ms = 0.0;
  double f = 0.0;
  double p = 0.0;
};

// The two-way analysis of variance of a balanced layout: every cell holds
// the same number of observations r >= 1, with at least two levels of each
// factor. With replication (r >= 2) the model has the interaction and the
// error is the variation within cells; without it the model is additive and
// the interaction's variation is the error.
struct TwoWayFit {
  long replicates = 0;
  bool interaction = false;
  TwoWayTerm rows;
  TwoWayTerm columns;
  TwoWayTerm rowsByColumns;  // only with interaction
  long errorDf = 0;
  double errorSS = 0.0;
  double errorMS = 0.0;
  long totalDf = 0;
  double totalSS = 0.0;
  double s = 0.0;
  double rSquared = 0.0;
  double adjustedRSquared = 0.0;
  // Means in the data's units.
  std::vector<double> rowMeans;
  std::vector<double> columnMeans;
  std::vector<std::vector<double>> cellMeans;
};

// Whether every cell holds the same positive number of observations.
bool IsBalanced(const TwoWayCells& cells);

// Fits a balanced layout (IsBalanced, at least two levels each, more
// observations than the model's terms). Sums of squares are formed from
// deviations about the first observation on the typed decimals.
TwoWayFit FitTwoWay(const TwoWayCells& cells);

}  // namespace orvik::analyses
