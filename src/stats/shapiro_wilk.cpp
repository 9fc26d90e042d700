// The Shapiro-Wilk W test (S. S. Shapiro and M. B. Wilk, Biometrika 52,
// 1965) in the approximation of J. P. Royston: "Approximating the
// Shapiro-Wilk W-test for non-normality", Statistics and Computing 2 (1992)
// 117-119, and "Remark AS R94", Applied Statistics 44 (1995) 547-551.
//
// Coefficients: m(i) = Phi^-1((i - 3/8) / (n + 1/4)); the two outermost
// coefficients are m(i) / |m| corrected by Royston's polynomials in
// 1 / sqrt(n), the others m(i) scaled so that the squares sum to 1.
// p-value: ln(1 - W) is close to normal for n >= 12 with mean and log
// standard deviation polynomial in ln n; for 4 <= n <= 11 the same holds for
// -ln(gamma - ln(1 - W)) with polynomials in n; for n = 3 the distribution
// is exact, P(W <= w) = 6/pi (asin(sqrt w) - asin(sqrt 3/4)).
// The 5 % critical value inverts these relations at p = 0.05.

#include "stats/shapiro_wilk.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>

#include "stats/compensated_sum.h"
#include "stats/decimal_numbers.h"
#include "stats/normal_distribution.h"

namespace orvik::stats {

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr int kMaxSample = 5000;

// Royston's published polynomial coefficients, lowest degree first.
constexpr std::array<double, 6> kLastCoefficient = {0.0, 0.221157, -0.147981, -2.071190, 4.434685, -2.706056};
constexpr std::array<double, 6> kNextToLast = {0.0, 0.042981, -0.293762, -1.752461, 5.682633, -3.582633};
constexpr std::array<double, 4> kSmallMean = {0.5440, -0.39978, 0.025054, -6.714e-4};
constexpr std::array<double, 4> kSmallLogSd = {1.3822, -0.77857, 0.062767, -0.0020322};
constexpr std::array<double, 4> kLargeMean = {-1.5861, -0.31082, -0.083751, 0.0038915};
constexpr std::array<double, 3> kLargeLogSd = {-0.4803, -0.082676, 0.0030302};
constexpr std::array<double, 2> kSmallGamma = {-2.273, 0.459};

template <std::size_t N>
double Polynomial(const std::array<double, N>& c, double x) {
  double result = 0.0;
  for (std::size_t k = N; k-- > 0;) result = result * x + c[k];
  return result;
}

bool IsWhole(double v) { return std::isfinite(v) && v == std::floor(v); }

int SampleSize(double n, int largest) {
  if (!IsWhole(n) || n < 3.0 || n > largest)
    throw std::out_of_range("sample size " + FormatNumber(n) +
                            " is outside the whole numbers 3 to " + std::to_string(largest));
  return static_cast<int>(n);
}

// The normal deviate whose upper tail is the p-value, as a function of w.
// For n = 3 the p-value is exact and this is not used.
struct Transform {
  double mean = 0.0;
  double sd = 1.0;
  double gamma = 0.0;  // only for n <= 11
};

Transform TransformFor(int n) {
  if (n <= 11) {
    const double x = n;
    return {Polynomial(kSmallMean, x), std::exp(Polynomial(kSmallLogSd, x)), Polynomial(kSmallGamma, x)};
  }
  const double x = std::log(static_cast<double>(n));
  return {Polynomial(kLargeMean, x), std::exp(Polynomial(kLargeLogSd, x)), 0.0};
}

double PValue(double w, int n) {
  if (!(w > 0.0 && w <= 1.0)) return kNaN;
  if (n == 3) {
    const double p = 6.0 / kPi * (std::asin(std::sqrt(w)) - kPi / 3.0);
    return std::clamp(p, 0.0, 1.0);
  }
  const Transform t = TransformFor(n);
  double y = std::log1p(-w);
  if (n <= 11) {
    if (y >= t.gamma) return 0.0;
    y = -std::log(t.gamma - y);
  }
  return GetDFNormalUpper(y, t.mean, t.sd);
}

}  // namespace

std::vector<double> ShapiroWilkCoefficients(int n) {
  SampleSize(n, kMaxSample);
  std::vector<double> a(n, 0.0);
  if (n == 3) {
    a[0] = -std::sqrt(0.5);
    a[2] = std::sqrt(0.5);
    return a;
  }
  const int half = n / 2;
  std::vector<double> m(half);  // the lower half, negative
  double sum_squares = 0.0;
  for (int i = 0; i < half; ++i) {
    m[i] = GetInvNormal((i + 1 - 0.375) / (n + 0.25));
    sum_squares += 2.0 * m[i] * m[i];
  }
  const double norm = std::sqrt(sum_squares);
  const double u = 1.0 / std::sqrt(static_cast<double>(n));
  const double last = -m[0] / norm + Polynomial(kLastCoefficient, u);
  a[n - 1] = last;
  int first_plain = 1;
  double scale = 0.0;
  if (n > 5) {
    const double next = -m[1] / norm + Polynomial(kNextToLast, u);
    a[n - 2] = next;
    first_plain = 2;
    scale = std::sqrt((sum_squares - 2.0 * m[0] * m[0] - 2.0 * m[1] * m[1]) / (1.0 - 2.0 * last * last - 2.0 * next * next));
  } else {
    scale = std::sqrt((sum_squares - 2.0 * m[0] * m[0]) / (1.0 - 2.0 * last * last));
  }
  for (int i = first_plain; i < half; ++i) a[n - 1 - i] = -m[i] / scale;
  for (int i = 0; i < half; ++i) a[i] = -a[n - 1 - i];
  return a;
}

ShapiroWilkResult ShapiroWilk(std::span<const double> sample) {
  const int n = SampleSize(static_cast<double>(sample.size()), kMaxSample);
  std::vector<double> x(sample.begin(), sample.end());
  if (std::any_of(x.begin(), x.end(), [](double v) { return std::isnan(v); })) return {kNaN, kNaN};
  std::sort(x.begin(), x.end());
  if (x.front() == x.back()) throw std::invalid_argument("all values are equal");
  // Compensated sums, so that values large against their spread keep the
  // digits of their mean and of the spread about it.
  const double mean = CompensatedTotal(x) / n;
  CompensatedSum sum_squares;
  for (double v : x) sum_squares.Add((v - mean) * (v - mean));
  const std::vector<double> a = ShapiroWilkCoefficients(n);
  CompensatedSum numerator;
  for (int i = 0; i < n / 2; ++i) numerator.Add(a[n - 1 - i] * (x[n - 1 - i] - x[i]));
  const double b = numerator.Value();
  const double w = std::min(1.0, b * b / sum_squares.Value());
  return {w, PValue(w, n)};
}

double ShapiroWilkPValue(double w, double n) { return PValue(w, SampleSize(n, kMaxSample)); }

double WValue(double n) {
  const int size = SampleSize(n, 49);
  static const std::array<double, 50> table = [] {
    std::array<double, 50> t{};
    const double z = GetInvNormalUpper(0.05);
    t[3] = std::pow(std::sin(kPi / 3.0 + 0.05 * kPi / 6.0), 2);
    for (int k = 4; k <= 49; ++k) {
      const Transform tr = TransformFor(k);
      const double y = tr.mean + z * tr.sd;
      t[k] = k <= 11 ? -std::expm1(tr.gamma - std::exp(-y)) : -std::expm1(y);
    }
    return t;
  }();
  return table[size];
}

}  // namespace orvik::stats
