#pragma once

// Independent reference values for the interval and test checks: quantiles
// and tails from Boost.Math, and samples whose mean and variance are known
// in closed form.

#include <boost/math/distributions/chi_squared.hpp>
#include <boost/math/distributions/fisher_f.hpp>
#include <boost/math/distributions/normal.hpp>
#include <boost/math/distributions/students_t.hpp>
#include <cmath>
#include <vector>

#include "analyses/sample_summary.h"

namespace orvik::analyses::reference {

// t with upper-tail area `q`.
inline double TUpperQuantile(double q, double df) {
  return boost::math::quantile(boost::math::complement(boost::math::students_t(df), q));
}
inline double TUpperTail(double t, double df) {
  return boost::math::cdf(boost::math::complement(boost::math::students_t(df), t));
}
inline double TLowerTail(double t, double df) { return boost::math::cdf(boost::math::students_t(df), t); }

inline double NormalUpperQuantile(double q) {
  return boost::math::quantile(boost::math::complement(boost::math::normal(), q));
}
inline double NormalUpperTail(double z) { return boost::math::cdf(boost::math::complement(boost::math::normal(), z)); }
inline double NormalLowerTail(double z) { return boost::math::cdf(boost::math::normal(), z); }

inline double ChiSquareUpperQuantile(double q, double df) {
  return boost::math::quantile(boost::math::complement(boost::math::chi_squared(df), q));
}
inline double ChiSquareLowerQuantile(double p, double df) {
  return boost::math::quantile(boost::math::chi_squared(df), p);
}
inline double ChiSquareUpperTail(double x, double df) {
  return boost::math::cdf(boost::math::complement(boost::math::chi_squared(df), x));
}
inline double ChiSquareLowerTail(double x, double df) { return boost::math::cdf(boost::math::chi_squared(df), x); }

inline double FUpperQuantile(double q, double df1, double df2) {
  return boost::math::quantile(boost::math::complement(boost::math::fisher_f(df1, df2), q));
}
inline double FUpperTail(double f, double df1, double df2) {
  return boost::math::cdf(boost::math::complement(boost::math::fisher_f(df1, df2), f));
}
inline double FLowerTail(double f, double df1, double df2) { return boost::math::cdf(boost::math::fisher_f(df1, df2), f); }

// The values 1, 2, ..., n: mean (n + 1) / 2, variance n (n + 1) / 12.
inline std::vector<double> OneToN(long n) {
  std::vector<double> values;
  for (long i = 1; i <= n; ++i) values.push_back(static_cast<double>(i));
  return values;
}

// A summary given by its figures, as the analyses hold it.
inline SampleSummary Summary(long n, double mean, double variance) {
  return {n, mean, variance, std::sqrt(variance)};
}

}  // namespace orvik::analyses::reference
