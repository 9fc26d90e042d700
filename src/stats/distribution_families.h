#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orvik::stats {

// One distribution family as the distribution plot and the calculator use
// it: its name, its parameters in the order the textbooks give them, and
// its functions, each taking the parameters as a span. The parameters must
// have passed `Check` first.
struct DistributionFamily {
  std::string_view name;        // "Normal", "Chi-Square", ...: the name users pick
  std::string_view functionName;  // "Normal", "Chisq", ...: GetDF<functionName>
  std::vector<std::string_view> parameters;  // "mean", "sd"
  bool discrete = false;        // counts: the functions see whole numbers
  // Why the parameters cannot be used (the first that fails, naming it), or
  // nothing when they can.
  std::optional<std::string> (*check)(std::span<const double> parameters) = nullptr;
  double (*lower)(double x, std::span<const double> parameters) = nullptr;    // P(X <= x)
  double (*upper)(double x, std::span<const double> parameters) = nullptr;    // P(X > x), directly
  double (*quantile)(double p, std::span<const double> parameters) = nullptr; // x with P(X <= x) = p
  double (*quantileUpper)(double q, std::span<const double> parameters) = nullptr;  // x with P(X > x) = q
  // The density, or for a discrete family the probability P(X = x).
  double (*density)(double x, std::span<const double> parameters) = nullptr;
};

// Normal, t, Chi-Square, F, Exponential, Uniform, Lognormal, Weibull, Gamma,
// Beta, Binomial, Poisson and Hypergeometric, in this order.
const std::vector<DistributionFamily>& DistributionFamilies();
const DistributionFamily* FindDistributionFamily(std::string_view name);

}  // namespace orvik::stats
