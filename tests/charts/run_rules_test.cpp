#include "charts/run_rules.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <random>
#include <stdexcept>

#include "charts/control_form.h"
#include "support/case_table.h"

namespace orvik::charts {
namespace {

// Limits with CL 0, sigma lines at +-2 and limits at +-3, so a value's zone
// is plain to read in the cases below.
ControlLimits UnitLimits() { return {3.0, 0.0, -3.0, 2.0, -2.0}; }

std::vector<std::string> Codes(const std::vector<double>& values, const ControlLimits& limits = UnitLimits(),
                               const RuleSet& rules = RuleSet::Default()) {
  return OutOfControlCodes(values, limits, rules);
}

TEST(CodeTextTest, TheStarFirstThenTheRulesInTheirOrder) {
  EXPECT_EQ(CodeText(0), "");
  EXPECT_EQ(CodeText(kOutOfLimits | RuleBit('C') | RuleBit('A')), "* A C ");
  EXPECT_EQ(CodeText(RuleBit('I')), "I ");
}

TEST(OutOfLimitsTest, LimitsThemselvesAreInControl) {
  const struct {
    double value;
    const char* code;
  } cases[] = {{3.0, ""}, {-3.0, ""}, {3.0000001, "* "}, {-3.0000001, "* "}, {0.0, ""}};
  for (const auto& c : cases) {
    std::vector<CodeMask> masks;
    MarkOutOfLimits({c.value}, UnitLimits(), masks);
    EXPECT_EQ(CodeText(masks.at(0)), c.code) << c.value;
  }
}

TEST(RuleATest, SevenOnOneSideMarkTheWholeRunAndAPointOnTheCentreEndsIt) {
  // Seven above, one on CL, one more above.
  const auto codes = Codes({1, 1, 1, 1, 1, 1, 1, 0, 1});
  for (int i = 0; i < 7; ++i) EXPECT_EQ(codes[i], "A ") << i;
  EXPECT_EQ(codes[7], "");
  EXPECT_EQ(codes[8], "");
}

TEST(RuleATest, SixOnOneSideAreNotARunAndLongerRunsKeepMarking) {
  const auto six = Codes({-1, -1, -1, -1, -1, -1, 1});
  for (const auto& code : six) EXPECT_EQ(code, "");
  // Nine below: every point marked, and the side change starts a new run.
  const auto nine = Codes({-1, -1.5, -1, -1.5, -1, -1.5, -1, -1.5, -1, 1});
  for (int i = 0; i < 9; ++i) EXPECT_NE(nine[i].find("A "), std::string::npos) << i;
  EXPECT_EQ(nine[9], "");
}

TEST(RuleATest, AnOutOfLimitPointInTheRunCarriesTheStarFirst) {
  const auto codes = Codes({1, 1, 1, 4, 1, 1, 1});
  EXPECT_EQ(codes[3], "* A ");
  EXPECT_EQ(codes[0], "A ");
}

TEST(RuleBTest, TiesNeitherBreakNorCountARise) {
  // 1, 2, 3, 3, 4, 5, 6, 7 (scaled into the chart) rises six times: a run
  // of seven points, the tie inside it.
  std::vector<double> values = {1, 2, 3, 3, 4, 5, 6, 7};
  for (auto& v : values) v = v / 10.0 - 0.35;  // both sides of CL, inside the sigma lines
  const auto codes = Codes(values);
  for (std::size_t i = 0; i < values.size(); ++i) EXPECT_EQ(codes[i], "B ") << i;
}

TEST(RuleBTest, SixRisesAreNeededAndAFallRestartsTheCount) {
  // 1..6 is five rises: nothing; then a fall, then six rises from the low point.
  std::vector<double> values = {0.1, 0.2, 0.3, 0.4, 0.5, 0.6, -0.6, -0.5, -0.4, -0.3, -0.2, -0.1, 0.05};
  const auto codes = Codes(values);
  for (int i = 0; i < 6; ++i) EXPECT_EQ(codes[i], "") << i;
  for (int i = 6; i < 13; ++i) EXPECT_EQ(codes[i], "B ") << i;
}

TEST(RuleBTest, AFallingTrendAfterAFlatStretchStartsAtTheStretchsLastPoint) {
  std::vector<double> values = {0.9, 0.9, 0.8, 0.6, 0.4, 0.2, -0.1, -0.3};
  const auto codes = Codes(values);
  EXPECT_EQ(codes[0], "");
  for (int i = 1; i < 8; ++i) EXPECT_EQ(codes[i], "B ") << i;
}

// A window of m points with k above CL marks all m points; one fewer than
// k marks nothing. Only the rule's own letter is inspected (rule A also
// fires on these series).
TEST(RulesCToFTest, KOfMOnOneSideAtTheThresholdAndOneBelow) {
  const struct {
    char letter;
    int k, m;
  } rules[] = {{'C', 10, 11}, {'D', 12, 14}, {'E', 14, 17}, {'F', 16, 20}};
  for (const auto& rule : rules) {
    for (const int above : {rule.k, rule.k - 1}) {
      std::vector<double> values(rule.m, -0.5);
      for (int i = 0; i < above; ++i) values[i] = 0.5;
      const auto codes = Codes(values);
      const std::string letter{rule.letter, ' '};
      for (int i = 0; i < rule.m; ++i) {
        EXPECT_EQ(codes[i].find(letter) != std::string::npos, above >= rule.k)
            << rule.letter << " with " << above << " above, point " << i;
      }
    }
  }
}

TEST(RulesCToFTest, OnlyThePointsOfFiringWindowsAreMarked) {
  // Points 1 and 2 below, 3 to 12 above, 13 below: the window 1..11 holds
  // nine above, the windows 2..12 and 3..13 ten, so only point 1 stays
  // unmarked.
  std::vector<double> values(13, 0.5);
  values[0] = values[1] = values[12] = -0.5;
  const auto codes = Codes(values);
  EXPECT_EQ(codes[0].find("C "), std::string::npos);
  for (int i = 1; i < 13; ++i) EXPECT_NE(codes[i].find("C "), std::string::npos) << i;
}

TEST(RulesCToFTest, APointOnTheCentreCountsForNeitherSide) {
  std::vector<double> values(11, 0.5);
  values[3] = 0.0;
  values[7] = 0.0;  // nine above, two on CL: C does not fire
  for (const auto& code : Codes(values)) EXPECT_EQ(code.find("C "), std::string::npos);
}

TEST(RulesCToFTest, WindowsLongerThanTheSeriesNeverFire) {
  const std::vector<double> values(10, 0.5);  // ten above
  for (const auto& code : Codes(values)) {
    for (const char* letter : {"C ", "D ", "E ", "F "}) EXPECT_EQ(code.find(letter), std::string::npos);
  }
}

// Zones are inclusive and both sides count together (data/zone_rules.tsv).
TEST(RulesGToITest, EachSeriesOfTheTableFiresOnEveryPointOrOnNone) {
  for (const auto& row : testing_support::ReadCases("charts/data/zone_rules.tsv")) {
    std::vector<double> values;
    for (std::size_t i = 2; i < row.fields.size(); ++i) values.push_back(row.Number(i));
    for (const auto& code : Codes(values))
      EXPECT_EQ(code.find(row[0] + ' ') != std::string::npos, row[1] == "fires") << row.Where();
  }
}

TEST(CheckRunRulesTest, CodesComeInRuleOrderAfterTheStar) {
  // Seven rising points above CL ending beyond UCL: star, A, B, and G for
  // the windows (0.4, 2.2, 2.5) and (2.2, 2.5, 3.5) with two in the zone.
  const auto codes = Codes({0.1, 0.2, 0.3, 0.4, 2.2, 2.5, 3.5});
  EXPECT_EQ(codes[6], "* A B G ");
  EXPECT_EQ(codes[5], "A B G ");
  EXPECT_EQ(codes[3], "A B G ");
  EXPECT_EQ(codes[2], "A B ");
}

TEST(CheckRunRulesTest, MarkedPointsAreTheRowsWithAnyCode) {
  EXPECT_EQ(MarkedPoints({0, kOutOfLimits, 0, RuleBit('A')}), (std::vector<long>{2, 4}));
}

RuleSet Profile(const std::string& name) {
  if (name == "Nelson") return RuleSet::Nelson();
  if (name == "Western") return RuleSet::WesternElectric();
  throw std::invalid_argument("no profile " + name);
}

// Every test of both rule sets at K - 1 and K points
// (data/rule_boundaries.tsv): the rule's code on every point or on none.
TEST(RuleProfilesTest, EachTestFiresAtItsCountAndNotOneShort) {
  for (const auto& row : testing_support::ReadCases("charts/data/rule_boundaries.tsv")) {
    std::vector<double> values;
    for (std::size_t i = 3; i < row.fields.size(); ++i) values.push_back(row.Number(i));
    const std::string code = row[1] + ' ';
    for (const auto& text : Codes(values, UnitLimits(), Profile(row[0])))
      EXPECT_EQ(text.find(code) != std::string::npos, row[2] == "fires") << row.Where() << ": " << text;
  }
}

TEST(RuleProfilesTest, TheDefaultLegendLinesReadAsTheClassicOnes) {
  const RuleSet rules = RuleSet::Default();
  for (char letter = 'A'; letter <= 'I'; ++letter)
    EXPECT_EQ(LegendLine(letter, rules[letter]), kLegendLines[letter - 'A' + 2]);
  EXPECT_EQ(LegendLine('C', {true, 9, 12}),
            " C : nine out of 12 successive points fall on the same side of the centerline");
  for (char letter = 'J'; letter <= 'N'; ++letter) EXPECT_FALSE(rules[letter].on) << letter;
}

TEST(CheckRunRulesTest, AMillionPointsRunThroughEachProfileInWellUnderASecond) {
  std::mt19937 generator(7);
  std::normal_distribution<double> normal(0.0, 1.0);
  std::vector<double> values(1'000'000);
  for (auto& v : values) v = normal(generator);
  // Long runs and trends as well, which a quadratic marking would choke on.
  for (std::size_t i = 0; i < 200'000; ++i) values[i] = 0.5 + 1e-6 * static_cast<double>(i);
  // Every test on, at the longest counts the dialog takes, as well.
  RuleSet every = RuleSet::Default();
  for (auto& rule : every.rules) rule = {true, 1000, 1000};
  const auto start = std::chrono::steady_clock::now();
  const auto codes = Codes(values);
  for (const RuleSet& rules : {RuleSet::Nelson(), RuleSet::WesternElectric(), every}) Codes(values, UnitLimits(), rules);
  const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  // The sanitizer build runs unoptimised and instrumented; a quadratic
  // marking would still take hours there, so a loose bound keeps the check.
#ifdef NDEBUG
  EXPECT_LT(seconds, 4 * 0.5);
#else
  EXPECT_LT(seconds, 4 * 30.0);
#endif
  EXPECT_EQ(codes[199'999].substr(0, 4), "A B ");
}

}  // namespace
}  // namespace orvik::charts
