#include "charts/proportion_limits.h"

#include <cmath>
#include <unordered_map>

#include "stats/compensated_sum.h"
#include "stats/decimal_numbers.h"
#include "stats/proportion_limits.h"

namespace orvik::charts {

using stats::Round;

namespace {

// d2 of moving ranges of two, which turns a mean moving range into a sigma.
constexpr double kD2OfTwo = 1.128;

struct Lines {
  double ucl, lcl, upper, lower;
};

// The ratios x_i / n_i rounded to 8 places, and the centre line
// Round(sum x / sum n, 8).
void RatiosAndCentre(const AttributeSamples& samples, AttributeChartLimits& out) {
  const std::size_t k = samples.counts.size();
  if (k == 0 || samples.sizes.size() != k) throw ChartComputationError("no sample");
  stats::CompensatedSum units, count;
  out.ratios.resize(k);
  for (std::size_t i = 0; i < k; ++i) {
    if (!(samples.sizes[i] > 0)) throw ChartComputationError("sample size not positive");
    units.Add(samples.sizes[i]);
    count.Add(samples.counts[i]);
    out.ratios[i] = Round(samples.counts[i] / samples.sizes[i], 8);
  }
  out.centre = Round(count.Value() / units.Value(), 8);
}

double Standardize(double ratio, double centre, double sigma) { return sigma > 0 ? (ratio - centre) / sigma : 0.0; }

// Fills the per-sample lines and standardized values. `size_of(i)` is the
// size sample i's limits are drawn for, `lines_of(n)` the lines of that
// size and `sigma_of(n)` their sigma. Sizes repeat (often one size for
// all), so each distinct size's lines are worked out once.
template <class SizeOf, class LinesOf, class SigmaOf>
void FillLines(AttributeChartLimits& out, SizeOf size_of, LinesOf lines_of, SigmaOf sigma_of) {
  const std::size_t k = out.ratios.size();
  out.UCL.resize(k), out.LCL.resize(k), out.UpperTwoSigma.resize(k), out.LowerTwoSigma.resize(k);
  out.standardized.resize(k);
  std::unordered_map<double, std::pair<Lines, double>> by_size;
  for (std::size_t i = 0; i < k; ++i) {
    const double n = size_of(i);
    auto found = by_size.find(n);
    if (found == by_size.end()) found = by_size.emplace(n, std::make_pair(lines_of(n), sigma_of(n))).first;
    const auto& [lines, sigma] = found->second;
    out.UCL[i] = lines.ucl;
    out.LCL[i] = lines.lcl;
    out.UpperTwoSigma[i] = lines.upper;
    out.LowerTwoSigma[i] = lines.lower;
    out.standardized[i] = Standardize(out.ratios[i], out.centre, sigma);
  }
}

double Clamp01(double x) { return x < 0.0 ? 0.0 : (x > 1.0 ? 1.0 : x); }

}  // namespace

bool AttributeChartLimits::Stepped() const {
  for (std::size_t i = 1; i < UCL.size(); ++i)
    if (UCL[i] != UCL[0] || LCL[i] != LCL[0] || UpperTwoSigma[i] != UpperTwoSigma[0] ||
        LowerTwoSigma[i] != LowerTwoSigma[0])
      return true;
  return false;
}

ControlLimits AttributeChartLimits::At(std::size_t i) const {
  ControlLimits limits;
  limits.CL = centre;
  limits.UCL = UCL.at(i);
  limits.LCL = LCL.at(i);
  limits.UpperTwoSigma = UpperTwoSigma.at(i);
  limits.LowerTwoSigma = LowerTwoSigma.at(i);
  return limits;
}

double LaneySigmaZ(const std::vector<double>& z) {
  if (z.size() < 2) throw ChartComputationError("no moving range of the standardized values");
  stats::CompensatedSum ranges;
  for (std::size_t i = 1; i < z.size(); ++i) ranges.Add(std::fabs(z[i] - z[i - 1]));
  return ranges.Value() / static_cast<double>(z.size() - 1) / kD2OfTwo;
}

AttributeChartLimits PChartLimits(const AttributeSamples& samples, const ProportionOptions& options,
                                  const AttributeChartLimits* phase_one) {
  AttributeChartLimits out;
  RatiosAndCentre(samples, out);
  if (phase_one != nullptr) out.centre = phase_one->centre;
  const double p_bar = out.centre;
  if (!(p_bar >= 0.0 && p_bar <= 1.0)) throw ChartComputationError("proportion outside [0, 1]");
  const std::size_t k = samples.sizes.size();
  const double n_bar = stats::CompensatedTotal(samples.sizes) / static_cast<double>(k);
  const auto size_of = [&](std::size_t i) { return options.averageSize ? n_bar : samples.sizes[i]; };
  if (options.laney && phase_one != nullptr) {
    out.sigmaZ = phase_one->sigmaZ;
  } else if (options.laney) {
    // z_i always at the sample's own size: sigma_z measures how far the
    // samples scatter beyond their binomial sigma, whatever the limits use.
    std::vector<double> z(k);
    for (std::size_t i = 0; i < k; ++i)
      z[i] = Standardize(out.ratios[i], p_bar, stats::ProportionSigma(p_bar, samples.sizes[i]));
    out.sigmaZ = LaneySigmaZ(z);
  }
  const double sigma_z = out.sigmaZ;
  const auto sigma_of = [&](double n) { return stats::ProportionSigma(p_bar, n) * sigma_z; };
  const auto lines_of = [&](double n) {
    if (!options.laney)
      return Lines{stats::PChart(p_bar, n), stats::PChart2(p_bar, n), stats::ProportionLine(p_bar, n, 2.0),
                   stats::ProportionLine(p_bar, n, -2.0)};
    const double sigma = sigma_of(n);
    return Lines{Clamp01(Round(p_bar + 3.0 * sigma, 8)), Clamp01(Round(p_bar - 3.0 * sigma, 8)),
                 Clamp01(Round(p_bar + 2.0 * sigma, 8)), Clamp01(Round(p_bar - 2.0 * sigma, 8))};
  };
  FillLines(out, size_of, lines_of, sigma_of);
  return out;
}

AttributeChartLimits UChartLimits(const AttributeSamples& samples, const AttributeChartLimits* phase_one) {
  AttributeChartLimits out;
  RatiosAndCentre(samples, out);
  if (phase_one != nullptr) out.centre = phase_one->centre;
  const double u_bar = out.centre;
  if (!(u_bar >= 0.0)) throw ChartComputationError("negative count");
  const auto sigma_of = [&](double n) { return std::sqrt(u_bar / n); };
  const auto lines_of = [&](double n) {
    const double sigma = sigma_of(n);
    const auto floored = [](double x) { return x < 0.0 ? 0.0 : x; };
    return Lines{Round(u_bar + 3.0 * sigma, 8), floored(Round(u_bar - 3.0 * sigma, 8)),
                 Round(u_bar + 2.0 * sigma, 8), floored(Round(u_bar - 2.0 * sigma, 8))};
  };
  FillLines(out, [&](std::size_t i) { return samples.sizes[i]; }, lines_of, sigma_of);
  return out;
}

}  // namespace orvik::charts
