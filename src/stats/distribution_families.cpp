#include "stats/distribution_families.h"

#include <cmath>

#include "stats/beta_distribution.h"
#include "stats/binomial_distribution.h"
#include "stats/chi_square_distribution.h"
#include "stats/decimal_numbers.h"
#include "stats/f_distribution.h"
#include "stats/gamma_distribution.h"
#include "stats/hypergeometric_distribution.h"
#include "stats/lognormal_distribution.h"
#include "stats/normal_distribution.h"
#include "stats/t_distribution.h"
#include "stats/uniform_distribution.h"
#include "stats/weibull_distribution.h"

namespace orvik::stats {

namespace {

using Params = std::span<const double>;
using Fault = std::optional<std::string>;

constexpr double kPi = 3.14159265358979323846;

Fault NotFinite(double v, const char* name) {
  if (std::isfinite(v)) return std::nullopt;
  return std::string(name) + " must be a finite number";
}

Fault NotPositive(double v, const char* name) {
  if (v > 0.0 && std::isfinite(v)) return std::nullopt;
  return std::string(name) + " must be positive and finite, not " + FormatNumber(v);
}

Fault NotWhole(double v, double least, const char* name) {
  if (v >= least && v == std::floor(v) && v < 1e15) return std::nullopt;
  return std::string(name) + " must be a whole number of at least " + FormatNumber(least) + ", not " + FormatNumber(v);
}

template <typename... Faults>
Fault First(Faults... faults) {
  Fault found;
  ((found = found ? found : faults), ...);
  return found;
}

// Densities of the families the library had before, which it needs only
// for plotting: from the gamma and beta densities, and the t density from
// its closed form.
double TDensity(double t, double df) {
  const double log_c = std::lgamma(0.5 * (df + 1.0)) - std::lgamma(0.5 * df) - 0.5 * std::log(df * kPi);
  return std::exp(log_c - 0.5 * (df + 1.0) * std::log1p(t * t / df));
}

double FDensity(double f, double d1, double d2) {
  if (f < 0.0) return 0.0;
  const double u = d1 * f / (d1 * f + d2);
  return BetaDensity(u, 0.5 * d1, 0.5 * d2) * d1 * d2 / ((d1 * f + d2) * (d1 * f + d2));
}

std::vector<DistributionFamily> MakeFamilies() {
  return {
      {"Normal", "Normal", {"mean", "sd"}, false,
       [](Params p) { return First(NotFinite(p[0], "mean"), NotPositive(p[1], "sd")); },
       [](double x, Params p) { return GetDFNormal(x, p[0], p[1]); },
       [](double x, Params p) { return GetDFNormalUpper(x, p[0], p[1]); },
       [](double v, Params p) { return p[0] + p[1] * GetInvNormal(v); },
       [](double v, Params p) { return p[0] + p[1] * GetInvNormalUpper(v); },
       [](double x, Params p) { return detail::NormalDensity((x - p[0]) / p[1]) / p[1]; }},
      {"t", "T", {"df"}, false, [](Params p) { return NotPositive(p[0], "df"); },
       [](double x, Params p) { return GetDFT(x, p[0]); }, [](double x, Params p) { return GetDFTUpper(x, p[0]); },
       [](double v, Params p) { return GetInvT(v, p[0]); }, [](double v, Params p) { return GetInvTUpper(v, p[0]); },
       [](double x, Params p) { return TDensity(x, p[0]); }},
      {"Chi-Square", "Chisq", {"df"}, false, [](Params p) { return NotPositive(p[0], "df"); },
       [](double x, Params p) { return GetDFChisq(x, p[0]); },
       [](double x, Params p) { return GetDFChisqUpper(x, p[0]); },
       [](double v, Params p) { return GetInvChisq(v, p[0]); },
       [](double v, Params p) { return GetInvChisqUpper(v, p[0]); },
       [](double x, Params p) { return GammaDensity(x, 0.5 * p[0], 2.0); }},
      {"F", "F", {"df1", "df2"}, false,
       [](Params p) { return First(NotPositive(p[0], "df1"), NotPositive(p[1], "df2")); },
       [](double x, Params p) { return GetDFF(x, p[0], p[1]); },
       [](double x, Params p) { return GetDFFUpper(x, p[0], p[1]); },
       [](double v, Params p) { return GetInvF(v, p[0], p[1]); },
       [](double v, Params p) { return GetInvFUpper(v, p[0], p[1]); },
       [](double x, Params p) { return FDensity(x, p[0], p[1]); }},
      {"Exponential", "Exponential", {"mean"}, false, [](Params p) { return NotPositive(p[0], "mean"); },
       [](double x, Params p) { return GetDFExponential(x, p[0]); },
       [](double x, Params p) { return GetDFExponentialUpper(x, p[0]); },
       [](double v, Params p) { return GetInvExponential(v, p[0]); },
       [](double v, Params p) { return GetInvExponentialUpper(v, p[0]); },
       [](double x, Params p) { return ExponentialDensity(x, p[0]); }},
      {"Uniform", "Uniform", {"lower", "upper"}, false,
       [](Params p) -> Fault {
         if (auto fault = First(NotFinite(p[0], "lower"), NotFinite(p[1], "upper"))) return fault;
         if (p[0] < p[1]) return std::nullopt;
         return "lower must be less than upper";
       },
       [](double x, Params p) { return GetDFUniform(x, p[0], p[1]); },
       [](double x, Params p) { return GetDFUniformUpper(x, p[0], p[1]); },
       [](double v, Params p) { return GetInvUniform(v, p[0], p[1]); },
       [](double v, Params p) { return GetInvUniformUpper(v, p[0], p[1]); },
       [](double x, Params p) { return UniformDensity(x, p[0], p[1]); }},
      {"Lognormal", "Lognormal", {"location", "scale"}, false,
       [](Params p) { return First(NotFinite(p[0], "location"), NotPositive(p[1], "scale")); },
       [](double x, Params p) { return GetDFLognormal(x, p[0], p[1]); },
       [](double x, Params p) { return GetDFLognormalUpper(x, p[0], p[1]); },
       [](double v, Params p) { return GetInvLognormal(v, p[0], p[1]); },
       [](double v, Params p) { return GetInvLognormalUpper(v, p[0], p[1]); },
       [](double x, Params p) { return LognormalDensity(x, p[0], p[1]); }},
      {"Weibull", "Weibull", {"shape", "scale"}, false,
       [](Params p) { return First(NotPositive(p[0], "shape"), NotPositive(p[1], "scale")); },
       [](double x, Params p) { return GetDFWeibull(x, p[0], p[1]); },
       [](double x, Params p) { return GetDFWeibullUpper(x, p[0], p[1]); },
       [](double v, Params p) { return GetInvWeibull(v, p[0], p[1]); },
       [](double v, Params p) { return GetInvWeibullUpper(v, p[0], p[1]); },
       [](double x, Params p) { return WeibullDensity(x, p[0], p[1]); }},
      {"Gamma", "Gamma", {"shape", "scale"}, false,
       [](Params p) { return First(NotPositive(p[0], "shape"), NotPositive(p[1], "scale")); },
       [](double x, Params p) { return GetDFGamma(x, p[0], p[1]); },
       [](double x, Params p) { return GetDFGammaUpper(x, p[0], p[1]); },
       [](double v, Params p) { return GetInvGamma(v, p[0], p[1]); },
       [](double v, Params p) { return GetInvGammaUpper(v, p[0], p[1]); },
       [](double x, Params p) { return GammaDensity(x, p[0], p[1]); }},
      {"Beta", "Beta", {"a", "b"}, false,
       [](Params p) { return First(NotPositive(p[0], "a"), NotPositive(p[1], "b")); },
       [](double x, Params p) { return GetDFBeta(x, p[0], p[1]); },
       [](double x, Params p) { return GetDFBetaUpper(x, p[0], p[1]); },
       [](double v, Params p) { return GetInvBeta(v, p[0], p[1]); },
       [](double v, Params p) { return GetInvBetaUpper(v, p[0], p[1]); },
       [](double x, Params p) { return BetaDensity(x, p[0], p[1]); }},
      {"Binomial", "Binomial", {"n", "p"}, true,
       [](Params p) -> Fault {
         if (auto fault = NotWhole(p[0], 1, "n")) return fault;
         if (p[1] >= 0.0 && p[1] <= 1.0) return std::nullopt;
         return "p must lie in [0, 1], not " + FormatNumber(p[1]);
       },
       [](double x, Params p) { return GetDFBinomial(x, p[0], p[1]); },
       [](double x, Params p) { return GetDFBinomialUpper(x, p[0], p[1]); },
       [](double v, Params p) { return GetInvBinomial(v, p[0], p[1]); },
       [](double v, Params p) { return GetInvBinomialUpper(v, p[0], p[1]); },
       [](double x, Params p) { return BinomialProbability(x, p[0], p[1]); }},
      {"Poisson", "Poisson", {"mean"}, true, [](Params p) { return NotPositive(p[0], "mean"); },
       [](double x, Params p) { return GetDFPoisson(x, p[0]); },
       [](double x, Params p) { return GetDFPoissonUpper(x, p[0]); },
       [](double v, Params p) { return GetInvPoisson(v, p[0]); },
       [](double v, Params p) { return GetInvPoissonUpper(v, p[0]); },
       [](double x, Params p) { return PoissonProbability(x, p[0]); }},
      {"Hypergeometric", "Hypergeometric", {"N", "K", "n"}, true,
       [](Params p) -> Fault {
         if (auto fault = First(NotWhole(p[0], 1, "N"), NotWhole(p[1], 0, "K"), NotWhole(p[2], 1, "n")))
           return fault;
         if (p[1] > p[0]) return "K must not exceed N";
         if (p[2] > p[0]) return "n must not exceed N";
         return std::nullopt;
       },
       [](double x, Params p) { return GetDFHypergeometric(x, p[0], p[1], p[2]); },
       [](double x, Params p) { return GetDFHypergeometricUpper(x, p[0], p[1], p[2]); },
       [](double v, Params p) { return GetInvHypergeometric(v, p[0], p[1], p[2]); },
       [](double v, Params p) { return GetInvHypergeometricUpper(v, p[0], p[1], p[2]); },
       [](double x, Params p) { return HypergeometricProbability(x, p[0], p[1], p[2]); }},
  };
}

}  // namespace

const std::vector<DistributionFamily>& DistributionFamilies() {
  static const std::vector<DistributionFamily> families = MakeFamilies();
  return families;
}

const DistributionFamily* FindDistributionFamily(std::string_view name) {
  for (const auto& family : DistributionFamilies())
    if (family.name == name) return &family;
  return nullptr;
}

}  // namespace orvik::stats
