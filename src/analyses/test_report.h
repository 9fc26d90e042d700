#pragma once

#include <string>

#include "analyses/analysis_settings.h"
#include "analyses/test_statistics.h"
#include "shell/result_table.h"

namespace orvik::analyses {

// The operator texts of a pair of hypotheses: H0's "=" and H1's "><"
// (two-sided), ">" and "<", each with the blanks the report writes around it.
struct HypothesisOperators {
  const char* equal;
  const char* twoSided;
  const char* greater;
  const char* less;
};
// "mu = 5", "mu >< 5", ...: the 1-sample tests and the 2-sample proportion.
inline constexpr HypothesisOperators kSpacedOperators{" = ", " >< ", " > ", " < "};
// "mu1= mu2", "mu1>< mu2", ...: the 2-sample mean and variance tests.
inline constexpr HypothesisOperators kJoinedOperators{"= ", ">< ", "> ", "< "};
// The paired test writes no blank after its two-sided "><".
inline constexpr HypothesisOperators kPairedOperators{" = ", " ><", " > ", " < "};

struct Hypotheses {
  std::string h0;
  std::string h1;
};
Hypotheses MakeHypotheses(const std::string& left, const HypothesisOperators& operators, const std::string& right,
                          Alternative alternative);

// Everything the three-section report of a test shows.
struct TestReport {
  Hypotheses hypotheses;
  std::string statisticHeading = "2. Test statistics";
  std::string statisticLabel;  // "Z = ", "t = ", "Chi-Square = ", "F = "
  std::string statisticNote;   // beside the statistic: "(Assume equal variance)"
  std::string resultLabel = "Result";
  TestStatistic statistic;
  double alphaPercent = 5.0;
};

// "1. Hypothesis" with H0 and H1; the statistic heading with the statistic
// rounded to 6 places; "3. Test result" with the p-value to six decimals,
// the significance level in percent and the decision.
shell::ResultTable TestTable(const TestReport& report);

}  // namespace orvik::analyses
