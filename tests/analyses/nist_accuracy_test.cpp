// The regression and one-way analysis of variance against NIST's
// Statistical Reference Datasets (tests/analyses/data/nist): every certified
// value to the number of significant digits its data file asks for,
// measured as the log relative error -log10(|computed - certified| /
// |certified|).
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <string>
#include <vector>

#include "analyses/one_way_fit.h"
#include "analyses/regression_fit.h"
#include "support/case_table.h"
#include "worksheet/cell_number.h"

namespace orvik::analyses {
namespace {

using testing_support::ReadCases;

double Digits(double computed, double certified) {
  if (computed == certified) return 16.0;
  return -std::log10(std::fabs(computed - certified) / std::fabs(certified));
}

// A cell's text read as the worksheet reads it.
double Cell(const std::string& text) { return *worksheet::ParseCellNumber(text); }

void ExpectDigits(const std::map<std::string, double>& computed, const std::string& set, const std::string& name,
                  double certified, double digits) {
  ASSERT_TRUE(computed.contains(name)) << name;
  EXPECT_GE(Digits(computed.at(name), certified), digits)
      << set << " " << name << ": computed " << computed.at(name) << ", certified " << certified;
}

std::map<std::string, double> AnovaFigures(const OneWayFit& fit) {
  return {{"BetweenSS", fit.factorSS}, {"BetweenMS", fit.factorMS}, {"F", fit.f},
          {"WithinSS", fit.errorSS},   {"WithinMS", fit.errorMS},   {"RSquared", fit.rSquared},
          {"ResidualSD", fit.s}};
}

TEST(NistAccuracy, NorrisSimpleRegression) {
  std::vector<double> x, y;
  const auto rows = ReadCases("analyses/data/nist/Norris.tsv");
  for (const auto& row : rows)
    if (row[0] == "data") {
      y.push_back(Cell(row[1]));
      x.push_back(Cell(row[2]));
    }
  ASSERT_EQ(x.size(), 36u);
  const RegressionFit fit = FitLine(x, y, true);
  const std::map<std::string, double> computed = {
      {"B0", fit.intercept},          {"B0sd", fit.interceptSe},     {"B1", fit.slope},
      {"B1sd", fit.slopeSe},          {"ResidualSD", fit.s},         {"RSquared", fit.rSquared},
      {"RegressionSS", fit.regressionSS}, {"ResidualSS", fit.residualSS}, {"ResidualMS", fit.residualMS},
      {"F", fit.f}};
  int checked = 0;
  for (const auto& row : rows)
    if (row[0] == "certified") {
      ExpectDigits(computed, "Norris", row[1], row.Number(2), row.Number(3));
      ++checked;
    }
  EXPECT_EQ(checked, 10);
  EXPECT_EQ(fit.regressionDf, 1);
  EXPECT_EQ(fit.residualDf, 34);
}

// SiRstv and AtmWtAg: observed data with their instruments.
TEST(NistAccuracy, ObservedAnovaSets) {
  for (const std::string set : {"SiRstv", "AtmWtAg"}) {
    const auto rows = ReadCases("analyses/data/nist/" + set + ".tsv");
    std::vector<FactorLevel> levels;
    for (const auto& row : rows) {
      if (row[0] != "data") continue;
      const auto index = static_cast<std::size_t>(row.Number(1));
      if (levels.size() < index) levels.resize(index);
      levels[index - 1].name = row[1];
      levels[index - 1].values.push_back(Cell(row[2]));
    }
    const auto computed = AnovaFigures(FitOneWay(levels));
    int checked = 0;
    for (const auto& row : rows)
      if (row[0] == "certified") {
        ExpectDigits(computed, set, row[1], row.Number(2), row.Number(3));
        ++checked;
      }
    EXPECT_EQ(checked, 7) << set;
  }
}

// SmLs01 to SmLs09 made from their published pattern, as typed decimals.
TEST(NistAccuracy, GeneratedSmLsSets) {
  const auto rows = ReadCases("analyses/data/nist/SmLs.tsv");
  const int centres[] = {4, 3, 5, 3, 5, 3, 5, 3, 5};  // tenths above the offset
  int sets = 0;
  for (const auto& row : rows) {
    if (row[0] != "set") continue;
    ++sets;
    const std::string name = row[1];
    const std::string offset = row[2];
    const int replicates = static_cast<int>(row.Number(3));
    const double digits = row.Number(4);
    std::vector<FactorLevel> levels;
    for (int i = 0; i < 9; ++i) {
      FactorLevel level{std::to_string(i + 1), {}};
      for (int j = 0; j < replicates; ++j) {
        const int tenths = j == 0 ? centres[i] : centres[i] + (j % 2 == 1 ? -1 : 1);
        level.values.push_back(Cell(offset + "." + std::to_string(tenths)));
      }
      levels.push_back(std::move(level));
    }
    const OneWayFit fit = FitOneWay(levels);
    EXPECT_EQ(fit.factorDf, 8) << name;
    EXPECT_EQ(fit.errorDf, 9 * replicates - 9) << name;
    const auto computed = AnovaFigures(fit);
    int checked = 0;
    for (const auto& c : rows)
      if (c[0] == "certified" && c[1] == name) {
        ExpectDigits(computed, name, c[2], c.Number(3), digits);
        ++checked;
      }
    EXPECT_EQ(checked, 7) << name;
  }
  EXPECT_EQ(sets, 9);
}

}  // namespace
}  // namespace orvik::analyses
