#include "analyses/factorial_fit.h"

#include <gtest/gtest.h>

#include "support/case_table.h"

namespace orvik::analyses {
namespace {

CodedRun RunOf(const std::string& label, double response = 0.0) {
  if (label == "0") return {0, true, response};
  unsigned high = 0;
  if (label != "(1)")
    for (const char c : label) high |= 1U << (c - 'a');
  return {high, false, response};
}

TEST(FactorialFitTest, LayoutsAreRecognizedFromTheRuns) {
  for (const auto& row : testing_support::ReadCases("analyses/data/factorial_recognition.tsv")) {
    std::vector<CodedRun> runs;
    for (std::size_t i = 2; i < row.fields.size(); ++i) runs.push_back(RunOf(row[i]));
    const auto layout = RecognizeLayout(static_cast<int>(row.Number(0)), runs);
    std::string got = "none";
    if (layout) {
      got = layout->half ? "half " + std::to_string(layout->relationSign) : std::string("full");
      got += " " + std::to_string(layout->replicates) + " " + std::to_string(layout->centreRuns);
    }
    EXPECT_EQ(got, row[1]) << row.Where();
  }
}

// Montgomery's filtration-rate example (Design and Analysis of Experiments,
// Example 6.2): an unreplicated 2^4 whose active effects are A, C, D, AC
// and AD. Effects, PSE 2.625 and the margin t(0.975, 5) * PSE by hand.
TEST(FactorialFitTest, UnreplicatedDesignUsesLenthsMargin) {
  const double rates[] = {45, 71, 48, 65, 68, 60, 80, 65, 43, 100, 45, 104, 75, 86, 70, 96};
  std::vector<CodedRun> runs;
  for (unsigned i = 0; i < 16; ++i) runs.push_back({i, false, rates[i]});
  const auto layout = RecognizeLayout(4, runs);
  ASSERT_TRUE(layout);
  const FactorialFit fit = FitFactorial(*layout, runs, 4, 0.05);
  EXPECT_EQ(fit.errorDf, 0);
  ASSERT_TRUE(fit.pse);
  EXPECT_DOUBLE_EQ(*fit.pse, 2.625);
  EXPECT_NEAR(fit.margin, 2.5705818356363146 * 2.625, 1e-9);
  std::string active;
  for (const auto& e : fit.effects)
    if (e.lenthActive) active += std::to_string(e.term) + " ";
  EXPECT_EQ(active, "1 4 5 8 9 ");  // A, C, AC, D, AD
  EXPECT_DOUBLE_EQ(fit.effects[0].effect, 21.625);
  EXPECT_DOUBLE_EQ(fit.effects[4].ss, 1314.0625);  // AC

  // With MaxOrder 2 the three- and four-factor interactions form the error
  // (five degrees of freedom) and the model's effects get their t tests.
  const FactorialFit reduced = FitFactorial(*layout, runs, 2, 0.05);
  EXPECT_EQ(reduced.errorDf, 5);
  EXPECT_NEAR(reduced.errorSS, 14.0625 + 68.0625 + 10.5625 + 27.5625 + 7.5625, 1e-9);
  EXPECT_TRUE(reduced.effects[0].p.has_value());
  EXPECT_FALSE(reduced.effects[6].inModel);  // ABC
}

TEST(FactorialFitTest, LenthPseOfEdgeCases) {
  EXPECT_DOUBLE_EQ(LenthPse({1.0}), 1.5);
  EXPECT_DOUBLE_EQ(LenthPse({-2.0, 2.0, 100.0}), 3.0);  // 100 lies beyond 2.5 s0
  EXPECT_DOUBLE_EQ(LenthPse({0.0, 0.0, 5.0}), 0.0);
}

}  // namespace
}  // namespace orvik::analyses
