// The critical-value tables, computed once from the quantile functions of
// t_distribution.h, chi_square_distribution.h and f_distribution.h (whose
// accuracy, 1e-13 relative, carries over) in function-local statics, which
// C++ initialises once and thread-safely.

#include "stats/critical_value_tables.h"

#include <array>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include "stats/chi_square_distribution.h"
#include "stats/decimal_numbers.h"
#include "stats/f_distribution.h"
#include "stats/t_distribution.h"

namespace orvik::stats {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// alpha / 2 for the eleven confidence levels, written as decimals rather
// than computed as (1 - level) / 2, which would round.
constexpr std::array<double, 11> kHalfAlpha = {0.2,   0.15,  0.1,   0.05,   0.025, 0.02,
                                               0.01,  0.005, 0.0025, 0.001, 0.0005};
constexpr std::array<double, 38> kTDegrees = {1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13,
                                              14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24, 25, 26,
                                              27, 28, 29, 30, 40, 50, 60, 80, 100, 120, 1000, kInfinity};
constexpr std::array<double, 34> kFDegrees = {1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12,
                                              13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24,
                                              25, 26, 27, 28, 29, 30, 40, 60, 120, kInfinity};
constexpr std::array<double, 4> kFUpperTail = {0.10, 0.05, 0.025, 0.01};
constexpr int kChiRows = 800;

// The index as an int, or std::out_of_range when it is not a whole number
// in [0, size). The message names the table, not the function: callers such
// as the calculator put the function's name in front.
int Index(const char* table, const char* what, double index, int size) {
  if (!(index >= 0.0 && index < size && index == std::floor(index)))
    throw std::out_of_range(std::string(what) + " " + FormatNumber(index) + " is outside the " + table +
                            " table (whole numbers 0 to " + std::to_string(size - 1) + ")");
  return static_cast<int>(index);
}

using Table = std::vector<double>;  // row-major, 11 columns

}  // namespace

double Estt(double row, double column) {
  const int r = Index("t", "row", row, kTDegrees.size());
  const int c = Index("t", "column", column, kHalfAlpha.size());
  static const Table table = [] {
    Table t;
    for (double df : kTDegrees)
      for (double tail : kHalfAlpha) t.push_back(GetInvTUpper(tail, df));
    return t;
  }();
  return table[r * kHalfAlpha.size() + c];
}

double EstChi(double row, double column) {
  const int r = Index("chi-square", "row", row, kChiRows);
  const int c = Index("chi-square", "column", column, kHalfAlpha.size());
  static const Table table = [] {
    Table t;
    for (int df = 1; df <= kChiRows; ++df)
      for (double tail : kHalfAlpha) t.push_back(GetInvChisqUpper(tail, df));
    return t;
  }();
  return table[r * kHalfAlpha.size() + c];
}

double EstinvChi(double row, double column) {
  const int r = Index("chi-square", "row", row, kChiRows);
  const int c = Index("chi-square", "column", column, kHalfAlpha.size());
  static const Table table = [] {
    Table t;
    for (int df = 1; df <= kChiRows; ++df)
      for (double tail : kHalfAlpha) t.push_back(GetInvChisq(tail, df));
    return t;
  }();
  return table[r * kHalfAlpha.size() + c];
}

double EstF(double numerator_row, double denominator_row, double level) {
  const int n = Index("F", "numerator row", numerator_row, kFDegrees.size());
  const int d = Index("F", "denominator row", denominator_row, kFDegrees.size());
  const int l = Index("F", "level", level, kFUpperTail.size());
  static const Table table = [] {
    Table t;
    for (double df1 : kFDegrees)
      for (double df2 : kFDegrees)
        for (double tail : kFUpperTail) t.push_back(GetInvFUpper(tail, df1, df2));
    return t;
  }();
  return table[(n * kFDegrees.size() + d) * kFUpperTail.size() + l];
}

}  // namespace orvik::stats
