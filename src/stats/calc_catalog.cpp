#include "stats/calc_catalog.h"

#include <cmath>
#include <deque>
#include <stdexcept>
#include <string>

#include "stats/chi_square_distribution.h"
#include "stats/coefficient_of_variation.h"
#include "stats/critical_value_tables.h"
#include "stats/decimal_numbers.h"
#include "stats/distribution_families.h"
#include "stats/f_distribution.h"
#include "stats/incomplete_beta.h"
#include "stats/incomplete_gamma.h"
#include "stats/normal_distribution.h"
#include "stats/normal_scores.h"
#include "stats/proportion_limits.h"
#include "stats/shapiro_wilk.h"
#include "stats/studentized_range.h"
#include "stats/t_distribution.h"

namespace orvik::stats {

namespace {

// The library's functions answer NaN outside their domain; the calculator
// turns that into a usage error that names the argument.
void Require(bool condition, const std::string& message) {
  if (!condition) throw std::invalid_argument(message);
}

double Number(double v, const char* name) {
  Require(!std::isnan(v), std::string(name) + " must be a number");
  return v;
}

double Probability(double p, const char* name) {
  Require(p > 0.0 && p < 1.0, std::string(name) + " must lie strictly between 0 and 1, not " + FormatNumber(p));
  return p;
}

double Proportion(double p, const char* name) {
  Require(p >= 0.0 && p <= 1.0, std::string(name) + " must lie in [0, 1], not " + FormatNumber(p));
  return p;
}

double Positive(double v, const char* name) {
  Require(v > 0.0, std::string(name) + " must be positive, not " + FormatNumber(v));
  return v;
}

double PositiveFinite(double v, const char* name) {
  Require(v > 0.0 && std::isfinite(v), std::string(name) + " must be positive and finite, not " + FormatNumber(v));
  return v;
}

int WholeNumber(double v, double least, const char* name) {
  Require(v >= least && v == std::floor(v) && v <= 2147483647.0,
          std::string(name) + " must be a whole number of at least " + FormatNumber(least) + ", not " +
              FormatNumber(v));
  return static_cast<int>(v);
}

// The number of means of the studentized range: a whole number 2 to 1000.
double Groups(double k) {
  Require(k >= 2.0 && k <= 1000.0 && k == std::floor(k), "k must be a whole number from 2 to 1000, not " + FormatNumber(k));
  return k;
}

using Args = std::span<const double>;

// The families the library gained with the distribution plot, from the
// exponential on, each with its two tails and two quantiles. Their
// parameters are checked by the family's own rule.
void AddFamilyFunctions(std::vector<CalcFunction>& catalog) {
  static std::deque<std::string> texts;  // names and summaries the entries view
  const auto text = [](std::string value) -> std::string_view { return texts.emplace_back(std::move(value)); };
  const auto& families = DistributionFamilies();
  for (auto family = families.begin() + 4; family != families.end(); ++family) {
    const DistributionFamily& f = *family;
    const auto arguments = [&](std::string_view first) {
      std::vector<std::string_view> names{first};
      names.insert(names.end(), f.parameters.begin(), f.parameters.end());
      return names;
    };
    const auto checked = [&f](Args a) {
      const Args parameters = a.subspan(1);
      if (auto fault = f.check(parameters)) throw std::invalid_argument(*fault);
      return parameters;
    };
    const std::string name(f.functionName);
    const std::string_view x = f.discrete ? "k" : "x";
    catalog.push_back({text("GetDF" + name), arguments(x),
                       [checked, &f](Args a) { return f.lower(Number(a[0], "x"), checked(a)); },
                       text(std::string(f.name) + " lower tail P(X <= " + std::string(x) + ")")});
    catalog.push_back({text("GetDF" + name + "Upper"), arguments(x),
                       [checked, &f](Args a) { return f.upper(Number(a[0], "x"), checked(a)); },
                       text(std::string(f.name) + " upper tail P(X > " + std::string(x) + ")")});
    catalog.push_back({text("GetInv" + name), arguments("p"),
                       [checked, &f](Args a) { return f.quantile(Probability(a[0], "p"), checked(a)); },
                       text(std::string(f.name) + (f.discrete ? " quantile: least k with P(X <= k) >= p"
                                                              : " quantile: x with P(X <= x) = p"))});
    catalog.push_back({text("GetInv" + name + "Upper"), arguments("q"),
                       [checked, &f](Args a) { return f.quantileUpper(Probability(a[0], "q"), checked(a)); },
                       text(std::string(f.name) + (f.discrete ? " upper quantile: least k with P(X > k) <= q"
                                                              : " upper quantile: x with P(X > x) = q"))});
  }
}

}  // namespace

const std::vector<CalcFunction>& CalcCatalog() {
  static const std::vector<CalcFunction> catalog = [] {
    std::vector<CalcFunction> functions = {
      {"GetDFNormal", {"x", "mean", "sd"},
       [](Args a) { return GetDFNormal(Number(a[0], "x"), Number(a[1], "mean"), PositiveFinite(a[2], "sd")); },
       "normal lower tail P(X <= x)"},
      {"GetDFNormalUpper", {"x", "mean", "sd"},
       [](Args a) { return GetDFNormalUpper(Number(a[0], "x"), Number(a[1], "mean"), PositiveFinite(a[2], "sd")); },
       "normal upper tail P(X > x)"},
      {"GetDFT", {"t", "df"}, [](Args a) { return GetDFT(Number(a[0], "t"), Positive(a[1], "df")); },
       "Student t lower tail P(T <= t)"},
      {"GetDFTUpper", {"t", "df"}, [](Args a) { return GetDFTUpper(Number(a[0], "t"), Positive(a[1], "df")); },
       "Student t upper tail P(T > t)"},
      {"GetDFChisq", {"x", "df"},
       [](Args a) { return GetDFChisq(Number(a[0], "x"), PositiveFinite(a[1], "df")); },
       "chi-square lower tail P(X <= x)"},
      {"GetDFChisqUpper", {"x", "df"},
       [](Args a) { return GetDFChisqUpper(Number(a[0], "x"), PositiveFinite(a[1], "df")); },
       "chi-square upper tail P(X > x)"},
      {"GetDFF", {"f", "df1", "df2"},
       [](Args a) { return GetDFF(Number(a[0], "f"), Positive(a[1], "df1"), Positive(a[2], "df2")); },
       "F lower tail P(X <= f)"},
      {"GetDFFUpper", {"f", "df1", "df2"},
       [](Args a) { return GetDFFUpper(Number(a[0], "f"), Positive(a[1], "df1"), Positive(a[2], "df2")); },
       "F upper tail P(X > f)"},
      {"GetInvNormal", {"p"}, [](Args a) { return GetInvNormal(Probability(a[0], "p")); },
       "standard normal quantile: z with P(Z <= z) = p"},
      {"GetInvNormalUpper", {"q"}, [](Args a) { return GetInvNormalUpper(Probability(a[0], "q")); },
       "standard normal upper quantile: z with P(Z > z) = q"},
      {"GetInvT", {"p", "df"}, [](Args a) { return GetInvT(Probability(a[0], "p"), Positive(a[1], "df")); },
       "Student t quantile: t with P(T <= t) = p"},
      {"GetInvTUpper", {"q", "df"},
       [](Args a) { return GetInvTUpper(Probability(a[0], "q"), Positive(a[1], "df")); },
       "Student t upper quantile: t with P(T > t) = q"},
      {"GetInvChisq", {"p", "df"},
       [](Args a) { return GetInvChisq(Probability(a[0], "p"), PositiveFinite(a[1], "df")); },
       "chi-square quantile: x with P(X <= x) = p"},
      {"GetInvChisqUpper", {"q", "df"},
       [](Args a) { return GetInvChisqUpper(Probability(a[0], "q"), PositiveFinite(a[1], "df")); },
       "chi-square upper quantile: x with P(X > x) = q"},
      {"GetInvF", {"p", "df1", "df2"},
       [](Args a) { return GetInvF(Probability(a[0], "p"), Positive(a[1], "df1"), Positive(a[2], "df2")); },
       "F quantile: f with P(X <= f) = p"},
      {"GetInvFUpper", {"q", "df1", "df2"},
       [](Args a) { return GetInvFUpper(Probability(a[0], "q"), Positive(a[1], "df1"), Positive(a[2], "df2")); },
       "F upper quantile: f with P(X > f) = q"},
      {"GetDFTukey", {"q", "k", "df"},
       [](Args a) { return GetDFTukey(Number(a[0], "q"), Groups(a[1]), Positive(a[2], "df")); },
       "studentized range lower tail P(Q <= q) of k means, df error degrees of freedom"},
      {"GetDFTukeyUpper", {"q", "k", "df"},
       [](Args a) { return GetDFTukeyUpper(Number(a[0], "q"), Groups(a[1]), Positive(a[2], "df")); },
       "studentized range upper tail P(Q > q)"},
      {"GetInvTukey", {"p", "k", "df"},
       [](Args a) { return GetInvTukey(Probability(a[0], "p"), Groups(a[1]), Positive(a[2], "df")); },
       "studentized range quantile: q with P(Q <= q) = p"},
      {"GetInvTukeyUpper", {"alpha", "k", "df"},
       [](Args a) { return GetInvTukeyUpper(Probability(a[0], "alpha"), Groups(a[1]), Positive(a[2], "df")); },
       "Tukey critical value: q with P(Q > q) = alpha"},
      {"Estt", {"row", "col"}, [](Args a) { return Estt(a[0], a[1]); },
       "two-sided t critical value (rows 0-37, levels 0-10)"},
      {"EstChi", {"row", "col"}, [](Args a) { return EstChi(a[0], a[1]); },
       "upper chi-square quantile at (1 - level)/2 (rows 0-799 = df 1-800)"},
      {"EstinvChi", {"row", "col"}, [](Args a) { return EstinvChi(a[0], a[1]); },
       "lower chi-square quantile at (1 - level)/2 (rows 0-799)"},
      {"EstF", {"row1", "row2", "level"}, [](Args a) { return EstF(a[0], a[1], a[2]); },
       "upper F critical value (rows 0-33, levels 0-3 = 80/90/95/98%)"},
      {"PChart", {"p_bar", "n"},
       [](Args a) { return PChart(Proportion(a[0], "p_bar"), PositiveFinite(a[1], "n")); },
       "p chart upper limit Round(p_bar + 3 sqrt(p_bar (1 - p_bar) / n), 8), at most 1"},
      {"PChart2", {"p_bar", "n"},
       [](Args a) { return PChart2(Proportion(a[0], "p_bar"), PositiveFinite(a[1], "n")); },
       "p chart lower limit Round(p_bar - 3 sqrt(p_bar (1 - p_bar) / n), 8), at least 0"},
      {"NormalScore", {"i", "n"}, [](Args a) { return NormalScore(a[0], a[1]); },
       "expected i-th smallest of n standard normal values"},
      {"WValue", {"n"}, [](Args a) { return WValue(a[0]); }, "Shapiro-Wilk W 5% critical value, n = 3-49"},
      {"ShapiroWilkPValue", {"w", "n"},
       [](Args a) {
         Require(a[0] > 0.0 && a[0] <= 1.0, "w must lie in (0, 1], not " + FormatNumber(a[0]));
         return ShapiroWilkPValue(a[0], a[1]);
       },
       "p-value of a Shapiro-Wilk W for sample size n = 3-5000"},
      {"RegularizedGammaP", {"a", "x"},
       [](Args a) {
         Require(a[1] >= 0.0, "x must not be negative");
         return RegularizedGammaP(PositiveFinite(a[0], "a"), a[1]);
       },
       "regularized lower incomplete gamma P(a, x)"},
      {"RegularizedGammaQ", {"a", "x"},
       [](Args a) {
         Require(a[1] >= 0.0, "x must not be negative");
         return RegularizedGammaQ(PositiveFinite(a[0], "a"), a[1]);
       },
       "regularized upper incomplete gamma Q(a, x)"},
      {"RegularizedBeta", {"x", "a", "b"},
       [](Args a) {
         Require(a[0] >= 0.0 && a[0] <= 1.0, "x must lie in [0, 1]");
         return RegularizedBeta(a[0], PositiveFinite(a[1], "a"), PositiveFinite(a[2], "b"));
       },
       "regularized incomplete beta I_x(a, b)"},
      {"RegularizedBetaUpper", {"x", "a", "b"},
       [](Args a) {
         Require(a[0] >= 0.0 && a[0] <= 1.0, "x must lie in [0, 1]");
         return RegularizedBetaUpper(a[0], PositiveFinite(a[1], "a"), PositiveFinite(a[2], "b"));
       },
       "its complement 1 - I_x(a, b)"},
      {"Simpson38", {"lower", "upper", "intervals", "n", "cv"},
       [](Args a) {
         WholeNumber(a[2], 1, "intervals");
         return Simpson38(Number(a[0], "lower"), Number(a[1], "upper"), a[2], WholeNumber(a[3], 2, "n"),
                          PositiveFinite(a[4], "cv"));
       },
       "integral of the density of the sample CV of n normal values with CV cv (Simpson 3/8 rule)"},
      {"CVQuantile", {"p", "n", "cv"},
       [](Args a) { return CVQuantile(Probability(a[0], "p"), WholeNumber(a[1], 2, "n"), PositiveFinite(a[2], "cv")); },
       "p-quantile of the sample CV of n normal values with CV cv, given a positive mean"},
      {"CVHighBT", {"n", "g"}, [](Args a) { return CVHighBT(WholeNumber(a[0], 2, "n"), WholeNumber(a[1], 1, "g")); },
       "upper limit of the CV chart (alpha 0.0027) for subgroups of n and in-control CV g/10000"},
      {"CVLowBT", {"n", "g"}, [](Args a) { return CVLowBT(WholeNumber(a[0], 2, "n"), WholeNumber(a[1], 1, "g")); },
       "lower limit of the CV chart (alpha 0.0027) for subgroups of n and in-control CV g/10000"},
      {"Round", {"x", "decimals"}, [](Args a) { return Round(a[0], static_cast<int>(a[1])); },
       "decimal rounding with ties to the even digit"},
    };
    AddFamilyFunctions(functions);
    return functions;
  }();
  return catalog;
}

const CalcFunction* FindCalcFunction(std::string_view name) {
  for (const auto& function : CalcCatalog())
    if (function.name == name) return &function;
  return nullptr;
}

}  // namespace orvik::stats
