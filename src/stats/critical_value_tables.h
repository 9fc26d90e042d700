#pragma once

// The critical-value tables that the interval estimates and tests read: t,
// chi-square and F quantiles at fixed degrees of freedom and levels. Each
// table is computed from this library's quantile functions the first time it
// is read, then kept. Indices are whole numbers passed as doubles; an index
// outside its table (or not whole) throws std::out_of_range naming the
// table, the index and the valid range.
//
// Columns of Estt, EstChi and EstinvChi are the confidence levels
//   0: 60.0%  1: 70.0%  2: 80.0%  3: 90.0%  4: 95.0%  5: 96.0%
//   6: 98.0%  7: 99.0%  8: 99.5%  9: 99.8%  10: 99.9%
// each with two-sided tail area alpha / 2 = (1 - level) / 2.

namespace orvik::stats {

// Two-sided t critical value t(1 - alpha/2, df). Rows 0..29 are 1..30
// degrees of freedom; rows 30..36 are 40, 50, 60, 80, 100, 120 and 1000;
// row 37 is the normal limit.
double Estt(double row, double column);

// Upper chi-square quantile, upper-tail area alpha / 2, for row + 1 degrees
// of freedom, rows 0..799.
double EstChi(double row, double column);

// Lower chi-square quantile, lower-tail area alpha / 2, rows as EstChi.
double EstinvChi(double row, double column);

// Upper F critical value for the numerator and denominator rows: rows 0..29
// are 1..30 degrees of freedom, rows 30..33 are 40, 60, 120 and infinitely
// many. Levels 0..3 are 80%, 90%, 95% and 98%, with upper-tail areas 0.10,
// 0.05, 0.025 and 0.01.
double EstF(double numerator_row, double denominator_row, double level);

}  // namespace orvik::stats
