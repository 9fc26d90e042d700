// The studentized range distribution by direct numerical integration of
// its defining integrals (Hartley 1942; Copenhaver and Holland, "Computation
// of the distribution of the maximum studentized range statistic with
// application to multiple significance testing of simple effects", Journal
// of Statistical Computation and Simulation 30, 1988, 1-15):
//
//   range of k normals:  P(W <= w) = k int phi(z) [Phi(z) - Phi(z - w)]^(k-1) dz
//   studentized:         P(Q <= q) = int f(s) P(W <= q s) ds,
//
// f the density of s = sqrt(chi-square(df) / df). Both tails are integrated
// directly: the upper tail of W as k int phi(z) Phi(z)^(k-1) (1 - (1 -
// Phi(z - w) / Phi(z))^(k-1)) dz, formed with expm1 and log1p, so small
// upper tails keep their relative accuracy. The outer integral runs over
// u = ln s, where the density is a smooth hump of width 1 / sqrt(2 df) at
// u = 0 for every df. Both integrals use adaptive Gauss-Kronrod (7, 15)
// quadrature (Piessens et al., QUADPACK, 1983, routine QK15), bisecting the
// panel of largest estimated error until the estimate falls below 1e-12 of
// the integral. Quantiles solve ln P = ln p in ln q by the Illinois variant
// of regula falsi inside a bracket found by doubling.

#include "stats/studentized_range.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <queue>
#include <vector>


namespace orvik::stats {

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kTolerance = 1e-10;
constexpr int kMaxPanels = 300;
// ln of the smallest share of an integrand's peak that still counts.
constexpr double kLogDrop = 45.0;

// Kronrod nodes (descending, the last the centre) and weights, and the
// Gauss weights of the nodes 1, 3, 5 and the centre.
constexpr std::array<double, 8> kNodes = {
    0.991455371120812639206854697526329, 0.949107912342758524526189684047851, 0.864864423359769072789712788640926,
    0.741531185599394439863864773280788, 0.586087235467691130294144845693013, 0.405845151377397166906606412076961,
    0.207784955007898467600689403773245, 0.0};
constexpr std::array<double, 8> kKronrod = {
    0.022935322010529224963732008058970, 0.063092092629978553290700663189204, 0.104790010322250183839876322541518,
    0.140653259715525918745189590510238, 0.169004726639267902826583426598550, 0.190350578064785409913256402421014,
    0.204432940075298892414161999234649, 0.209482141084727828012999174891714};
constexpr std::array<double, 4> kGauss = {0.129484966168869693270611432679082, 0.279705391489276667901467771423780,
                                          0.381830050505118944950369775488975, 0.417959183673469387755102040816327};

struct Panel {
  double a = 0.0;
  double b = 0.0;
  double value = 0.0;
  double error = 0.0;
  bool operator<(const Panel& other) const { return error < other.error; }
};

template <typename F>
Panel Rule(F& f, double a, double b) {
  const double centre = 0.5 * (a + b);
  const double half = 0.5 * (b - a);
  std::array<double, 15> values{};
  values[7] = f(centre);
  for (int j = 0; j < 7; ++j) {
    values[j] = f(centre - half * kNodes[j]);
    values[14 - j] = f(centre + half * kNodes[j]);
  }
  double kronrod = kKronrod[7] * values[7];
  double gauss = kGauss[3] * values[7];
  for (int j = 0; j < 7; ++j) {
    const double sum = values[j] + values[14 - j];
    kronrod += kKronrod[j] * sum;
    if (j % 2 == 1) gauss += kGauss[j / 2] * sum;
  }
  // QUADPACK's error estimate: |K - G| scaled by the integrand's spread
  // about its mean on the panel, which tracks the true error of the
  // Kronrod rule far better than |K - G| itself.
  const double mean = 0.5 * kronrod;
  double spread = kKronrod[7] * std::fabs(values[7] - mean);
  for (int j = 0; j < 7; ++j)
    spread += kKronrod[j] * (std::fabs(values[j] - mean) + std::fabs(values[14 - j] - mean));
  spread *= std::fabs(half);
  double error = std::fabs((kronrod - gauss) * half);
  if (spread != 0.0 && error != 0.0) error = spread * std::min(1.0, std::pow(200.0 * error / spread, 1.5));
  return {a, b, kronrod * half, error};
}

// The integral of f over [a, b], starting from `pieces` equal panels.
template <typename F>
double Integrate(F f, double a, double b, int pieces) {
  std::priority_queue<Panel> panels;
  double total = 0.0;
  double error = 0.0;
  for (int i = 0; i < pieces; ++i) {
    const double lo = a + (b - a) * i / pieces;
    const double hi = i + 1 == pieces ? b : a + (b - a) * (i + 1) / pieces;
    const Panel p = Rule(f, lo, hi);
    total += p.value;
    error += p.error;
    panels.push(p);
  }
  while (error > kTolerance * std::fabs(total) && error > 1e-300 && static_cast<int>(panels.size()) < kMaxPanels) {
    const Panel worst = panels.top();
    panels.pop();
    const double mid = 0.5 * (worst.a + worst.b);
    const Panel left = Rule(f, worst.a, mid);
    const Panel right = Rule(f, mid, worst.b);
    panels.push(left);
    panels.push(right);
    total += left.value + right.value - worst.value;
    error += left.error + right.error - worst.error;
  }
  // Sum the panels afresh, smallest errors first, so the running sums
  // leave no drift in the result.
  total = 0.0;
  std::vector<double> values;
  for (; !panels.empty(); panels.pop()) values.push_back(panels.top().value);
  for (auto v = values.rbegin(); v != values.rend(); ++v) total += *v;
  return total;
}

// The standard normal upper tail and density from the C library's erfc
// and exp: accurate to a few units in 1e-15 relative over the range used
// here (|z| < 40), and several times faster than the library's own
// double-double tail, which matters inside a double integral.
double Upper(double z) { return 0.5 * std::erfc(z * 0.70710678118654752440); }
double Density(double z) { return 0.39894228040143267794 * std::exp(-0.5 * z * z); }

// P(Z <= x) with full relative accuracy on both sides.
double Lower(double x) { return x <= 0.0 ? Upper(-x) : 1.0 - Upper(x); }

// Phi(z) - Phi(z - w) for w > 0, from the tails that keep its digits.
double Band(double z, double w) {
  if (z - w >= 0.0) return Upper(z - w) - Upper(z);
  if (z <= 0.0) return Upper(-z) - Upper(w - z);
  return 1.0 - Upper(z) - Upper(w - z);
}

// A tail of the range W of k standard normal values at w.
double RangeTail(double w, double k, bool upper) {
  if (!(w > 0.0)) return upper ? 1.0 : 0.0;
  if (std::isinf(w)) return upper ? 0.0 : 1.0;
  const auto integrand = [w, k, upper](double z) {
    const double density = Density(z);
    if (density == 0.0) return 0.0;
    if (!upper) {
      const double band = Band(z, w);
      return band > 0.0 ? k * density * std::exp((k - 1.0) * std::log(band)) : 0.0;
    }
    const double below = Lower(z);
    if (below == 0.0) return 0.0;
    const double share = Lower(z - w) / below;
    return k * density * std::exp((k - 1.0) * std::log(below)) * -std::expm1((k - 1.0) * std::log1p(-share));
  };
  // Both integrands lie below k phi(z) Phi(z)^(k-1), the density of the
  // largest value, which is negligible below the point where
  // phi(z) Phi(z)^(k-1) < e^-45 (z = -9 for k = 2, higher for more values)
  // and above 9 + sqrt(2 ln k); a small upper tail's mass sits near w / 2.
  double bottom = -9.0;
  while (bottom < 0.0 && std::log(Density(bottom + 0.5)) + (k - 1.0) * std::log(Upper(-bottom - 0.5)) < -kLogDrop)
    bottom += 0.5;
  const double top = std::max(9.0 + std::sqrt(2.0 * std::log(k)), 0.5 * w + 10.0);
  return std::min(1.0, Integrate(integrand, bottom, top, 4));
}

// The end of the interval, in `direction` from 0, outside which g(u) = ln
// density - ln peak + the tail's growth stays below -drop: found by
// doubling, then bisection.
template <typename G>
double Edge(G g, double direction, double drop) {
  double inside = 0.0;
  double step = 0.25;
  double outside = direction * step;
  while (g(outside) > -drop) {
    inside = outside;
    step *= 2.0;
    outside = direction * step;
  }
  for (int i = 0; i < 60; ++i) {
    const double mid = 0.5 * (inside + outside);
    (g(mid) > -drop ? inside : outside) = mid;
  }
  return outside;
}

double Tail(double q, double k, double df, bool upper) {
  if (std::isnan(q) || std::isnan(k) || std::isnan(df)) return kNaN;
  if (!(k >= 2.0 && k <= 1000.0 && k == std::floor(k)) || !(df > 0.0)) return kNaN;
  if (!(q > 0.0)) return upper ? 1.0 : 0.0;
  if (std::isinf(df)) return RangeTail(q, k, upper);
  // ln of the density of u = ln s, less its value at the peak u = 0.
  const auto shape = [df](double u) { return df * (u - 0.5 * std::expm1(2.0 * u)); };
  const double log_peak = std::log(2.0) + 0.5 * df * std::log(0.5 * df) - std::lgamma(0.5 * df) - 0.5 * df;
  // A small lower tail grows with s like s^(k - 1): the upper end goes as far
  // as that growth keeps the integrand within reach of its peak.
  const double growth = upper ? 0.0 : k - 1.0;
  // A small upper tail comes from small s, where the range's tail is
  // large: the lower end then reaches further.
  const double lo = Edge(shape, -1.0, upper ? 2.0 * kLogDrop : kLogDrop);
  const double hi = Edge([&](double u) { return shape(u) + growth * u; }, 1.0, kLogDrop);
  const auto density = [&](double u) { return std::exp(log_peak + shape(u)); };
  const auto integrand = [&](double u) {
    const double d = density(u);
    return d == 0.0 ? 0.0 : d * RangeTail(q * std::exp(u), k, upper);
  };
  // Divided by the density's own integral over the same interval, which
  // is 1 up to the rounding of lgamma for large df and the quadrature's
  // error, both of which the ratio cancels.
  return std::clamp(Integrate(integrand, lo, hi, 8) / Integrate(density, lo, hi, 8), 0.0, 1.0);
}

// q with tail(q) = target, the tail decreasing in q when `upper`.
double Quantile(double target, double k, double df, bool upper) {
  if (std::isnan(target) || !(target >= 0.0 && target <= 1.0)) return kNaN;
  if (std::isnan(Tail(1.0, k, df, upper))) return kNaN;
  if (target == 0.0) return upper ? HUGE_VAL : 0.0;
  if (target == 1.0) return upper ? 0.0 : HUGE_VAL;
  const double log_target = std::log(target);
  // g(x) = ln tail(e^x) - ln target, increasing in x for the lower tail.
  const double sign = upper ? -1.0 : 1.0;
  const auto g = [&](double x) {
    const double p = Tail(std::exp(x), k, df, upper);
    return sign * ((p > 0.0 ? std::log(p) : -1e300) - log_target);
  };
  double a = std::log(3.0);
  double ga = g(a);
  double b = ga < 0.0 ? a + 0.5 : a - 0.5;
  double gb = g(b);
  for (double step = 1.0; (ga < 0.0) == (gb < 0.0); step *= 2.0) {
    a = b;
    ga = gb;
    b = ga < 0.0 ? b + step : b - step;
    if (std::fabs(b) > 700.0) return ga < 0.0 ? HUGE_VAL : 0.0;
    gb = g(b);
  }
  int side = 0;
  for (int i = 0; i < 200 && std::fabs(b - a) > 1e-15 * std::max(1.0, std::fabs(a)); ++i) {
    const double c = (a * gb - b * ga) / (gb - ga);
    const double gc = g(c);
    if (gc == 0.0) return std::exp(c);
    if ((gc < 0.0) == (gb < 0.0)) {
      b = c;
      gb = gc;
      if (side == -1) ga *= 0.5;
      side = -1;
    } else {
      a = c;
      ga = gc;
      if (side == 1) gb *= 0.5;
      side = 1;
    }
  }
  return std::exp(0.5 * (a + b));
}

}  // namespace

double GetDFTukey(double q, double k, double df) { return Tail(q, k, df, false); }

double GetDFTukeyUpper(double q, double k, double df) { return Tail(q, k, df, true); }

double GetInvTukey(double p, double k, double df) {
  if (p > 0.5 && p <= 1.0) return Quantile(1.0 - p, k, df, true);
  return Quantile(p, k, df, false);
}

double GetInvTukeyUpper(double alpha, double k, double df) {
  if (alpha > 0.5 && alpha <= 1.0) return Quantile(1.0 - alpha, k, df, false);
  return Quantile(alpha, k, df, true);
}

}  // namespace orvik::stats
