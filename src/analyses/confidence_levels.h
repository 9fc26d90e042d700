#pragma once

#include <array>

namespace orvik::analyses {

// The program's list of confidence levels, indexed from 0, and the normal
// critical value that goes with each. The critical values are the program's
// own rounded constants (1.645, 2.575, ...) and are used exactly as written,
// not recomputed from the normal quantile.
inline constexpr std::array<const char*, 11> kConfidenceLabels = {
    "60.0%", "70.0%", "80.0%", "90.0%", "95.0%", "96.0%", "98.0%", "99.0%", "99.5%", "99.8%", "99.9%"};
inline constexpr std::array<double, 11> kNormalCriticalValues = {
    0.84, 1.036, 1.28, 1.645, 1.96, 2.05, 2.325, 2.575, 2.81, 3.08, 3.28};

// The levels the mean, variance and proportion intervals report: 90.0%,
// 95.0% and 99.0%, in that order.
inline constexpr std::array<int, 3> kReportedLevels = {3, 4, 7};

// The four levels of the variance-ratio interval, in the order of the F
// table's level argument (0 to 3).
inline constexpr std::array<const char*, 4> kRatioLevelLabels = {"80.0%", "90.0%", "95.0%", "98.0%"};

// The row of the t table (Estt) for `df` >= 1 degrees of freedom: one row
// per degree of freedom up to 30 (rows 0 to 29), then the bands ending at 40,
// 50, 60, 80, 100, 120 and 1000 (rows 30 to 36), and row 37, the normal
// limit, above 1000. A sample of n values has n - 1 degrees of freedom, so
// its row is n - 2 up to n = 31.
int TTableRow(long df);

// The row of the F table (EstF) for one sample of `df` >= 1 degrees of
// freedom: one row per degree of freedom up to 30 (rows 0 to 29), then 40
// (row 30) for 31 to 40, 60 (row 31) for 41 to 60, 120 (row 32) for 61 to
// 120 and infinity (row 33) above.
int FTableRow(long df);

}  // namespace orvik::analyses
