#include "stats/calc_catalog.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace orvik::stats {
namespace {

double Call(const std::string& name, std::vector<double> arguments) {
  const CalcFunction* function = FindCalcFunction(name);
  if (function == nullptr) throw std::logic_error("no function " + name);
  if (function->arguments.size() != arguments.size()) throw std::logic_error("argument count of " + name);
  return function->call(arguments);
}

// Every function the calculator lists answers a valid call with a finite
// number; the distribution functions are all there, upper tails included.
TEST(CalcCatalog, EveryFunctionAnswersAValidCall) {
  std::map<std::string, std::vector<double>> valid = {
      {"GetDFNormal", {0, 0, 1}},       {"GetDFNormalUpper", {1, 0, 2}},  {"GetDFT", {2, 10}},
      {"GetDFTUpper", {2, 10}},         {"GetDFChisq", {3, 4}},           {"GetDFChisqUpper", {3, 4}},
      {"GetDFF", {2, 3, 4}},            {"GetDFFUpper", {2, 3, 4}},       {"GetInvNormal", {0.3}},
      {"GetInvNormalUpper", {0.3}},     {"GetInvT", {0.3, 5}},            {"GetInvTUpper", {0.3, 5}},
      {"GetInvChisq", {0.3, 5}},        {"GetInvChisqUpper", {0.3, 5}},   {"GetInvF", {0.3, 5, 6}},
      {"GetInvFUpper", {0.3, 5, 6}},    {"Estt", {3, 4}},                 {"EstChi", {10, 4}},
      {"EstinvChi", {10, 4}},           {"EstF", {3, 4, 2}},              {"NormalScore", {1, 10}},
      {"WValue", {20}},                 {"ShapiroWilkPValue", {0.9, 20}}, {"RegularizedGammaP", {2, 1}},
      {"RegularizedGammaQ", {2, 1}},    {"RegularizedBeta", {0.3, 2, 3}}, {"RegularizedBetaUpper", {0.3, 2, 3}},
      {"PChart", {0.2, 50}},            {"PChart2", {0.2, 50}},           {"Round", {2.675, 2}},
      {"Simpson38", {0, 0.1, 10000, 5, 0.05}},
      {"CVQuantile", {0.5, 5, 0.05}},   {"CVHighBT", {5, 500}},           {"CVLowBT", {5, 500}},
      {"GetDFTukey", {3, 3, 10}},         {"GetDFTukeyUpper", {3, 3, 10}},
      {"GetInvTukey", {0.9, 3, 10}},      {"GetInvTukeyUpper", {0.05, 3, 10}},
  };
  // The families of the distribution plot: a valid point and parameters each.
  const std::map<std::string, std::vector<double>> families = {
      {"Exponential", {2}},      {"Uniform", {0, 4}},   {"Lognormal", {0, 1}}, {"Weibull", {2, 3}},
      {"Gamma", {2, 3}},         {"Beta", {2, 3}},      {"Binomial", {10, 0.3}}, {"Poisson", {4}},
      {"Hypergeometric", {50, 10, 5}},
  };
  for (const auto& [family, parameters] : families) {
    for (const char* form : {"GetDF%", "GetDF%Upper", "GetInv%", "GetInv%Upper"}) {
      std::string name = form;
      name.replace(name.find('%'), 1, family);
      std::vector<double> arguments{name.starts_with("GetInv") ? 0.3 : 0.5};
      arguments.insert(arguments.end(), parameters.begin(), parameters.end());
      valid.emplace(name, arguments);
    }
  }
  for (const auto& function : CalcCatalog()) {
    const auto it = valid.find(std::string(function.name));
    ASSERT_NE(it, valid.end()) << "no valid call listed for " << function.name;
    EXPECT_TRUE(std::isfinite(Call(it->first, it->second))) << function.name;
  }
  EXPECT_EQ(CalcCatalog().size(), valid.size());
  EXPECT_EQ(Call("GetDFNormal", {0, 0, 1}), 0.5);
  EXPECT_EQ(Call("Estt", {3, 4}), 2.7764451051977943);
}

// Arguments outside a function's domain are usage errors, never NaN.
TEST(CalcCatalog, InvalidArgumentsThrow) {
  const struct {
    const char* name;
    std::vector<double> arguments;
  } invalid[] = {
      {"GetDFNormal", {0, 0, 0}}, {"GetDFNormal", {0, 0, -1}}, {"GetDFT", {1, -1}},     {"GetDFT", {1, 0}},
      {"GetDFChisq", {1, -2}},    {"GetDFF", {1, 0, 3}},       {"GetDFFUpper", {1, 3, -3}}, {"GetInvNormal", {0}},
      {"GetInvNormal", {1}},      {"GetInvT", {1.5, 3}},       {"GetInvChisq", {-0.1, 3}}, {"GetInvFUpper", {0.5, 3, 0}},
      {"Estt", {38, 0}},          {"EstF", {0, 0, 4}},         {"NormalScore", {0, 5}}, {"WValue", {50}},
      {"RegularizedBeta", {2, 1, 1}},  {"PChart", {1.5, 50}},       {"PChart2", {0.2, 0}},
      {"CVHighBT", {1, 500}},  {"CVLowBT", {5, 0.5}},   {"CVQuantile", {0.5, 5, 0}},
      {"Simpson38", {0, 1, 0, 5, 0.1}}, {"Simpson38", {0, 1, 100, 2.5, 0.1}},
      {"GetDFTukey", {3, 1, 10}},  {"GetInvTukeyUpper", {0.05, 3.5, 10}},
      {"GetDFTukeyUpper", {3, 3, 0}},
      {"GetDFGamma", {1, 0, 2}},   {"GetDFBeta", {0.5, 2, -1}}, {"GetInvBinomial", {0.5, 2.5, 0.3}},
      {"GetDFBinomialUpper", {1, 10, 1.5}}, {"GetInvPoisson", {0, 3}}, {"GetDFHypergeometric", {1, 10, 11, 5}},
      {"GetDFHypergeometricUpper", {1, 10, 5, 11}}, {"GetDFUniform", {1, 2, 2}}, {"GetInvWeibullUpper", {0.5, 1, 0}},
  };
  for (const auto& c : invalid) EXPECT_ANY_THROW(Call(c.name, c.arguments)) << c.name;
  EXPECT_THROW(Call("GetInvT", {0.0, 3}), std::invalid_argument);
  EXPECT_THROW(Call("Estt", {0, 11}), std::out_of_range);
}

}  // namespace
}  // namespace orvik::stats
