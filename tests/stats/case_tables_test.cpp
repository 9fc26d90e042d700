// The statistics functions against the case tables in tests/stats/data:
// edges and invalid arguments, and high-precision reference values.

#include <gtest/gtest.h>

#include <functional>
#include <map>

#include "distribution_checks.h"
#include "stats/calc_catalog.h"
#include "stats/chi_square_distribution.h"
#include "stats/coefficient_of_variation.h"
#include "stats/critical_value_tables.h"
#include "stats/f_distribution.h"
#include "stats/incomplete_beta.h"
#include "stats/incomplete_gamma.h"
#include "stats/normal_distribution.h"
#include "stats/normal_scores.h"
#include "stats/proportion_limits.h"
#include "stats/shapiro_wilk.h"
#include "stats/studentized_range.h"
#include "stats/t_distribution.h"
#include "support/case_table.h"

namespace orvik::stats {
namespace {

using testing_support::CaseRow;
using Arguments = std::vector<double>;

#define ORVIK_CASE(f, ...) {#f, [](const Arguments& a) { return double(f(__VA_ARGS__)); }}
const std::map<std::string, std::function<double(const Arguments&)>> kFunctions = {
    ORVIK_CASE(GetDFNormal, a.at(0), a.at(1), a.at(2)), ORVIK_CASE(GetDFNormalUpper, a.at(0), a.at(1), a.at(2)),
    ORVIK_CASE(GetInvNormal, a.at(0)), ORVIK_CASE(GetInvNormalUpper, a.at(0)),
    ORVIK_CASE(GetDFT, a.at(0), a.at(1)), ORVIK_CASE(GetDFTUpper, a.at(0), a.at(1)),
    ORVIK_CASE(GetInvT, a.at(0), a.at(1)), ORVIK_CASE(GetInvTUpper, a.at(0), a.at(1)),
    ORVIK_CASE(GetDFChisq, a.at(0), a.at(1)), ORVIK_CASE(GetDFChisqUpper, a.at(0), a.at(1)),
    ORVIK_CASE(GetInvChisq, a.at(0), a.at(1)), ORVIK_CASE(GetInvChisqUpper, a.at(0), a.at(1)),
    ORVIK_CASE(GetDFF, a.at(0), a.at(1), a.at(2)), ORVIK_CASE(GetDFFUpper, a.at(0), a.at(1), a.at(2)),
    ORVIK_CASE(GetInvF, a.at(0), a.at(1), a.at(2)), ORVIK_CASE(GetInvFUpper, a.at(0), a.at(1), a.at(2)),
    ORVIK_CASE(RegularizedGammaP, a.at(0), a.at(1)), ORVIK_CASE(RegularizedGammaQ, a.at(0), a.at(1)),
    ORVIK_CASE(RegularizedBeta, a.at(0), a.at(1), a.at(2)), ORVIK_CASE(RegularizedBetaUpper, a.at(0), a.at(1), a.at(2)),
    ORVIK_CASE(Estt, a.at(0), a.at(1)), ORVIK_CASE(EstChi, a.at(0), a.at(1)), ORVIK_CASE(EstinvChi, a.at(0), a.at(1)),
    ORVIK_CASE(EstF, a.at(0), a.at(1), a.at(2)), ORVIK_CASE(NormalScore, a.at(0), a.at(1)),
    ORVIK_CASE(WValue, a.at(0)), ORVIK_CASE(ShapiroWilkPValue, a.at(0), a.at(1)),
    ORVIK_CASE(PChart, a.at(0), a.at(1)), ORVIK_CASE(PChart2, a.at(0), a.at(1)),
    ORVIK_CASE(CVDensity, a.at(0), a.at(1), a.at(2)), ORVIK_CASE(CVDistribution, a.at(0), a.at(1), a.at(2)),
    ORVIK_CASE(CVQuantile, a.at(0), a.at(1), a.at(2)), ORVIK_CASE(CVHighBT, int(a.at(0)), int(a.at(1))),
    ORVIK_CASE(CVLowBT, int(a.at(0)), int(a.at(1))),
    {"Simpson38", [](const Arguments& a) { return Simpson38(a.at(0), a.at(1), a.at(2), a.at(3), a.at(4)); }},
    ORVIK_CASE(GetDFTukey, a.at(0), a.at(1), a.at(2)), ORVIK_CASE(GetDFTukeyUpper, a.at(0), a.at(1), a.at(2)),
    ORVIK_CASE(GetInvTukey, a.at(0), a.at(1), a.at(2)), ORVIK_CASE(GetInvTukeyUpper, a.at(0), a.at(1), a.at(2)),
    {"ShapiroWilkCoefficient",  // a(n - k) of n
     [](const Arguments& a) { return ShapiroWilkCoefficients(int(a.at(0))).at(std::size_t(a.at(0) - 1 - a.at(1))); }},
};
#undef ORVIK_CASE

// Splits a row into the function, its arguments and what follows them.
// Functions not listed above are called as the calculator calls them (the
// distribution families of the distribution plot).
double Call(const CaseRow& row, std::size_t outcome) {
  Arguments arguments;
  for (std::size_t i = 1; i < outcome; ++i) arguments.push_back(row.Number(i));
  if (const auto listed = kFunctions.find(row[0]); listed != kFunctions.end()) return listed->second(arguments);
  const CalcFunction* function = FindCalcFunction(row[0]);
  if (function == nullptr || function->arguments.size() != arguments.size())
    throw std::logic_error("no function " + row[0] + " of " + std::to_string(arguments.size()) + " arguments");
  return function->call(arguments);
}

TEST(StatsCaseTables, EdgesAndInvalidArguments) {
  for (const CaseRow& row : testing_support::ReadCases("stats/data/edges.tsv")) {
    const std::size_t n = row.fields.size();
    const std::string& last = row[n - 1];
    if (last == "out_of_range") {
      EXPECT_THROW(Call(row, n - 1), std::out_of_range) << row.Where();
    } else if (last == "nan") {
      EXPECT_TRUE(std::isnan(Call(row, n - 1))) << row.Where();
    } else if (row[n - 2] == "=") {
      EXPECT_EQ(Call(row, n - 2), row.Number(n - 1)) << row.Where();
    } else {
      ASSERT_EQ(row[n - 2], ">") << row.Where();
      EXPECT_GT(Call(row, n - 2), row.Number(n - 1)) << row.Where();
    }
  }
}

TEST(StatsCaseTables, HighPrecisionReferenceValues) {
  for (const CaseRow& row : testing_support::ReadCases("stats/data/reference_values.tsv")) {
    const std::size_t n = row.fields.size();
    const double ours = Call(row, n - 3), reference = row.Number(n - 2), tolerance = row.Number(n - 1);
    if (row[n - 3] == "rel") {
      EXPECT_LE(RelativeError(ours, reference), tolerance) << row.Where();
    } else {
      ASSERT_EQ(row[n - 3], "abs") << row.Where();
      EXPECT_NEAR(ours, reference, tolerance) << row.Where();
    }
  }
}

}  // namespace
}  // namespace orvik::stats
