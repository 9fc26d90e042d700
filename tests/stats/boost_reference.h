#pragma once

// Reference values from Boost.Math for the accuracy tests, and the
// bookkeeping of the worst relative error found.
//
// Boost.Math is evaluated in 64-bit long double. Where that disagrees with
// our double by more than kRecheck, the point is evaluated again in 30-digit
// binary floating point (Boost.Multiprecision's cpp_bin_float, header-only):
// Boost's own long double results carry errors of up to 1e-12 at some
// arguments (its F distribution with df1 = 30, df2 = 1240 near f = 1.28, and
// its chi-square beyond 1e6 degrees of freedom), and a reference must be more
// accurate than the code it checks.

#define BOOST_MATH_OVERFLOW_ERROR_POLICY errno_on_error
#define BOOST_MATH_DOMAIN_ERROR_POLICY errno_on_error
#define BOOST_MATH_EVALUATION_ERROR_POLICY errno_on_error
#define BOOST_MATH_POLE_ERROR_POLICY errno_on_error

#include <boost/math/distributions/chi_squared.hpp>
#include <boost/math/distributions/fisher_f.hpp>
#include <boost/math/distributions/normal.hpp>
#include <boost/math/distributions/students_t.hpp>
#include <boost/multiprecision/cpp_bin_float.hpp>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <random>
#include <string>

namespace orvik::stats::testing {

using Long = long double;
using Precise = boost::multiprecision::number<boost::multiprecision::cpp_bin_float<30>,
                                              boost::multiprecision::et_off>;

inline constexpr double kRecheck = 1e-14;

// Deterministic uniform numbers, the same on every platform (the standard
// distributions are not).
class Random {
 public:
  explicit Random(std::uint64_t seed) : engine_(seed) {}
  double Uniform(double a, double b) { return a + (b - a) * static_cast<double>(engine_() >> 11) * 0x1.0p-53; }
  double LogUniform(double a, double b) { return std::exp(Uniform(std::log(a), std::log(b))); }
  int Below(int n) { return static_cast<int>(engine_() % static_cast<std::uint64_t>(n)); }
  double Sign() { return engine_() & 1 ? 1.0 : -1.0; }

  // Degrees of freedom over 0.5 .. 1e7, one in ten from the usual values.
  double DegreesOfFreedom() {
    static constexpr double kUsual[] = {0.5, 1, 2, 3, 4, 5, 10, 30, 100, 1e3, 1e4, 1e5, 1e6, 1e7};
    if (Below(10) == 0) return kUsual[Below(14)];
    return LogUniform(0.5, 1e7);
  }

  // Probabilities: uniform, far lower tail, near 1, and near 1/2.
  double Probability() {
    switch (Below(4)) {
      case 0: return Uniform(1e-12, 1.0);
      case 1: return LogUniform(1e-300, 0.5);
      case 2: return 1.0 - LogUniform(1e-16, 0.5);
      default: return 0.5 + Uniform(-1e-3, 1e-3);
    }
  }

 private:
  std::mt19937_64 engine_;
};

// The worst relative error of one function, kept apart for moderate
// (at most 1e5) and large (1e5 to 1e7) degrees of freedom.
class WorstError {
 public:
  explicit WorstError(std::string name) : name_(std::move(name)) {}

  void Add(double error, bool large_df, const std::string& where) {
    ++count_;
    double& worst = large_df ? worst_large_ : worst_;
    std::string& at = large_df ? where_large_ : where_;
    if (!(error <= worst)) {
      worst = error;
      at = where;
    }
  }
  void Skip() { ++skipped_; }

  double worst() const { return worst_; }
  double worst_large_df() const { return worst_large_; }
  int count() const { return count_; }

  std::string Report() const {
    char text[160];
    std::snprintf(text, sizeof text, "%s: %d points (%d skipped), worst relative error %.3g", name_.c_str(), count_,
                  skipped_, worst_);
    std::string report = text;
    if (!where_.empty()) report += " at " + where_;
    if (!where_large_.empty()) {
      std::snprintf(text, sizeof text, "; df above 1e5: %.3g at ", worst_large_);
      report += text + where_large_;
    }
    return report;
  }

 private:
  std::string name_;
  double worst_ = 0.0;
  double worst_large_ = 0.0;
  std::string where_;
  std::string where_large_;
  int count_ = 0;
  int skipped_ = 0;
};

inline std::string Where(const char* format, double a, double b = 0, double c = 0, double d = 0) {
  char text[200];
  std::snprintf(text, sizeof text, format, a, b, c, d);
  return text;
}

// Compares a probability with the reference: Boost in long double, rechecked
// in 30 digits when the two disagree. Results below 1e-300 are skipped.
template <typename LongRef, typename PreciseRef>
void CheckProbability(WorstError& worst, double ours, LongRef long_ref, PreciseRef precise_ref, bool large_df,
                      const std::string& where) {
  Long reference = long_ref();
  if (!(reference > 1e-300L)) {
    worst.Skip();
    return;
  }
  if (!(std::fabs(static_cast<double>((ours - reference) / reference)) <= kRecheck))
    reference = static_cast<Long>(precise_ref());
  if (!(reference > 1e-300L)) {
    worst.Skip();
    return;
  }
  worst.Add(static_cast<double>(std::fabs((ours - reference) / reference)), large_df, where);
}

// The relative error of a quantile x for target probability p, measured
// through the reference distribution: |F(x) - p| / (x F'(x)), where F is the
// tail the quantile inverts. This is the relative distance from x to the
// exact quantile, to first order, and needs no reference quantile (Boost's
// root finder stops short far in the tails).
template <typename Dist>
Long QuantileError(const Dist& dist, double x, double p, bool upper) {
  using Real = typename Dist::value_type;
  const Real rx = Real(x);
  const Real f = upper ? cdf(complement(dist, rx)) : cdf(dist, rx);
  const Real density = pdf(dist, rx);
  using std::fabs;  // boost::multiprecision::fabs comes in by argument lookup
  return static_cast<Long>(fabs(Real((f - Real(p)) / (rx * density))));
}

template <typename LongDist, typename PreciseDist>
void CheckQuantile(WorstError& worst, double x, double p, bool upper, const LongDist& long_dist,
                   const PreciseDist& precise_dist, bool large_df, const std::string& where) {
  if (!std::isfinite(x) || std::fabs(x) < 1e-300) {
    worst.Skip();
    return;
  }
  Long error = QuantileError(long_dist, x, p, upper);
  if (!(error <= kRecheck)) error = QuantileError(precise_dist, x, p, upper);
  worst.Add(static_cast<double>(error), large_df, where + Where(" -> %.17g", x));
}

}  // namespace orvik::stats::testing
