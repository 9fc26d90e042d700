#pragma once

#include <optional>
#include <string>
#include <vector>

namespace orvik::analyses {

// One run of a two-level factorial design as coded from its sheet: the set
// of factors at their high level (bit j: factor j), or a centre point.
struct CodedRun {
  unsigned highFactors = 0;
  bool centre = false;
  double response = 0.0;
};

// How the runs of a sheet form a design: a full 2^k factorial or a half
// fraction (I = +AB..K, or I = -AB..K for the other half), each design point
// run `replicates` times, and the number of centre points.
struct FactorialLayout {
  int factors = 0;
  bool half = false;
  int relationSign = 1;
  long replicates = 0;
  long factorialRuns = 0;
  long centreRuns = 0;
};

// The layout of `runs`, or nullopt when they are not a balanced full or half
// fraction of k factors (a point missing or run a different number of times,
// a half fraction mixing both halves, no factorial runs at all).
std::optional<FactorialLayout> RecognizeLayout(int factors, const std::vector<CodedRun>& runs);

// One estimated effect by the contrasts of Yates' method. In a half
// fraction `term` is the shorter of two aliased words (the first in Yates
// order among equals) and `alias` the other, signed by the relation.
struct FactorialEffect {
  unsigned term = 0;
  unsigned alias = 0;  // 0 in a full factorial
  int aliasSign = 1;
  int order = 0;       // the number of factors in `term`
  double effect = 0.0;
  double coef = 0.0;
  double ss = 0.0;
  bool inModel = false;
  // Tests against the error term, when it has degrees of freedom.
  std::optional<double> se;
  std::optional<double> t;
  std::optional<double> p;
  // Whether the effect counts as active by Lenth's margin of error.
  bool lenthActive = false;
};

// The analysis of variance of a factorial design. Effects of order above
// maxOrder are left out of the model; their variation joins the error.
struct FactorialFit {
  FactorialLayout layout;
  int maxOrder = 0;
  double alpha = 0.05;
  double factorialMean = 0.0;  // the constant: the mean of the factorial runs
  double grandMean = 0.0;
  std::vector<FactorialEffect> effects;  // in Yates order of `term`
  // Sums of squares and degrees of freedom of the model's effects by order
  // (index 1 the main effects).
  std::vector<double> orderSS;
  std::vector<long> orderDf;
  // The curvature of centre points against the factorial runs.
  std::optional<double> curvatureSS;
  double centreMean = 0.0;
  long errorDf = 0;     // the residual: left-out effects, pure error
  double errorSS = 0.0;
  long pureErrorDf = 0;
  double pureErrorSS = 0.0;
  long lackOfFitDf = 0;
  double lackOfFitSS = 0.0;
  long totalDf = 0;
  double totalSS = 0.0;
  // Lenth's pseudo standard error of the model's effects (unreplicated
  // designs), its degrees of freedom m/3 and the margin of error
  // t(1 - alpha/2, m/3) * PSE.
  std::optional<double> pse;
  double lenthDf = 0.0;
  double margin = 0.0;

  double ErrorMS() const { return errorDf > 0 ? errorSS / static_cast<double>(errorDf) : 0.0; }
};

// Lenth's pseudo standard error of `effects` (Lenth 1989): s0 = 1.5 times
// the median absolute effect, then 1.5 times the median of the absolute
// effects below 2.5 s0.
double LenthPse(const std::vector<double>& effects);

// Fits `runs` laid out as `layout` with the effects up to order max_order
// (1 to k) in the model, at significance level alpha (a fraction).
FactorialFit FitFactorial(const FactorialLayout& layout, const std::vector<CodedRun>& runs, int max_order, double alpha);

}  // namespace orvik::analyses
