#pragma once

#include <memory>
#include <span>
#include <vector>

#include "analyses/analysis_dialog.h"
#include "shell/host.h"

namespace orvik::analyses {

struct CorrelationSettings {
  bool spearman = false;
};

// Correlation: the check box Spearman (unchecked) adds Spearman's rank
// correlation to Pearson's. Cancel writes "Cancel correlation coefficient".
class Correlation : public AnalysisDialog {
 public:
  using Parameters = CorrelationSettings;
  Correlation();
  const CorrelationSettings& Result() const { return result_; }

 protected:
  bool OnOk(shell::Host& host) override;

 private:
  CorrelationSettings result_;
};
std::unique_ptr<shell::DialogModel> MakeCorrelation();

// One coefficient of a pair of columns over the rows where both hold a
// number: r, its two-sided p-value from t = r sqrt((n - 2) / (1 - r²)) with
// n - 2 degrees of freedom (0 for |r| = 1), and n. r and p are NaN for
// fewer than 3 rows or a column without spread among them.
struct PairCorrelation {
  double r = 0.0;
  double p = 0.0;
  long n = 0;
};
// x and y hold NaN where a cell is not a number.
PairCorrelation Pearson(std::span<const double> x, std::span<const double> y);
PairCorrelation Spearman(std::span<const double> x, std::span<const double> y);

// Correlation ("mnuCorrelation") of two or more columns: for every pair,
// Pearson's r with its p-value and n (pairwise complete), and with Spearman
// checked the same for the rank correlation, as matrices in the grid. A
// column with fewer than 3 numbers shows "All data are not enough to
// analysis", a column whose numbers are all equal "All data are same".
// Log lines "Correlation coefficient analysis is starting" / "... is
// completed".
void CorrelationView(shell::Host& host);

}  // namespace orvik::analyses
