#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "charts/control_limits.h"

namespace orvik::charts {

// The codes of one point as bits: kOutOfLimits for "* ", then one bit per
// rule, A to N. A point's code text lists them in that order ("* A C "),
// which is the order the checks run in.
using CodeMask = std::uint16_t;
inline constexpr CodeMask kOutOfLimits = 1;
inline constexpr CodeMask RuleBit(char letter) { return static_cast<CodeMask>(2u << (letter - 'A')); }

// The run rules by letter. A to I are the classic tests; J to N are the
// further tests of the Western Electric and Nelson rule sets.
inline constexpr char kFirstRule = 'A';
inline constexpr char kLastRule = 'N';
inline constexpr std::size_t kRuleCount = kLastRule - kFirstRule + 1;

// What a rule looks for. Rules with a window count k points of m; the
// others look for k successive points.
enum class RuleKind {
  OneSideRun,       // A: k successive points strictly on one side of CL
  Trend,            // B: k points rising (or falling) in turn, ties skipped
  OneSideWindow,    // C to F: k of m on one side of CL
  ZoneWindow,       // G to I: k of m between a 2-sigma line and its limit
  BeyondTwoWindow,  // J: k of m beyond 2 sigma on the same side
  BeyondOneWindow,  // K: k of m beyond 1 sigma on the same side
  Alternating,      // L: k successive points alternating up and down
  WithinOneRun,     // M: k successive points within 1 sigma of CL
  BeyondOneRun,     // N: k successive points beyond 1 sigma, either side
};
RuleKind KindOf(char letter);
inline bool HasWindow(RuleKind kind) {
  return kind == RuleKind::OneSideWindow || kind == RuleKind::ZoneWindow || kind == RuleKind::BeyondTwoWindow ||
         kind == RuleKind::BeyondOneWindow;
}

// Whether one rule applies, and its counts: k points, of a window of m
// where the rule has one (m is k for the others).
struct RuleChoice {
  bool on = false;
  int k = 0;
  int m = 0;
  friend bool operator==(const RuleChoice&, const RuleChoice&) = default;
};

// The rules in force for a chart, A to N.
struct RuleSet {
  std::array<RuleChoice, kRuleCount> rules{};

  RuleChoice& operator[](char letter) { return rules[static_cast<std::size_t>(letter - kFirstRule)]; }
  const RuleChoice& operator[](char letter) const { return rules[static_cast<std::size_t>(letter - kFirstRule)]; }
  friend bool operator==(const RuleSet&, const RuleSet&) = default;

  // A to I as the program has always applied them; J to N off.
  static RuleSet Default();
  // One point beyond 3 sigma (the "* " test), 2 of 3 beyond 2 sigma (J),
  // 4 of 5 beyond 1 sigma (K), 8 on one side (A with k = 8).
  static RuleSet WesternElectric();
  // Nelson's eight tests: beyond 3 sigma ("* "), 9 on one side (A), 6
  // rising or falling (B), 14 alternating (L), 2 of 3 beyond 2 sigma (J),
  // 4 of 5 beyond 1 sigma (K), 15 within 1 sigma (M), 8 beyond 1 sigma on
  // both sides (N).
  static RuleSet Nelson();
};

// The code text of a point: "* " when outside the limits, then each rule's
// letter followed by a blank.
std::string CodeText(CodeMask mask);

// The legend line of rule `letter` with its counts, for example
// " A : 7 successive points are on the same side of the centerline"; the
// classic rules at their usual counts read exactly as they always have.
std::string LegendLine(char letter, const RuleChoice& choice);

// The out-of-limit test: a point strictly below LCL or strictly above UCL
// gets kOutOfLimits. `masks` is resized to the number of values.
void MarkOutOfLimits(const std::vector<double>& values, const ControlLimits& limits, std::vector<CodeMask>& masks);

// Applies the rules of `rules` to `values` and adds their bits to `masks`
// (one per point). The limits come in the order CL, UCL, UpperTwoSigma,
// LCL, LowerTwoSigma; the 1-sigma tests take sigma as a third of the
// distance from CL to UCL. Every rule walks the points once and marks each
// point at most once, so the time is linear in the number of points
// whatever the counts.
void CheckRunRules(std::span<const double> values, double cl, double ucl, double upper_two_sigma, double lcl,
                   double lower_two_sigma, std::span<CodeMask> masks, const RuleSet& rules = RuleSet::Default());
void CheckRunRules(const std::vector<double>& values, double cl, double ucl, double upper_two_sigma,
                   double lcl, double lower_two_sigma, std::vector<CodeMask>& masks,
                   const RuleSet& rules = RuleSet::Default());

// The out-of-limit test and the rules for limits that differ from point
// to point (samples of different sizes): point i is outside when it lies
// strictly below lcl[i] or above ucl[i]. The run rules compare the values
// with the centre line `cl`; the zone rules place each point by its
// standardized value z[i] (its distance from CL in sigmas of its own
// limits): the upper zone of G to I is 2 <= z <= 3, the lower -3 <= z <= -2,
// a point outside its limits lies in neither, and the 1- and 2-sigma tests
// compare z with 1 and 2.
std::vector<CodeMask> StandardizedOutOfControlMasks(std::span<const double> values, double cl,
                                                    std::span<const double> ucl, std::span<const double> lcl,
                                                    std::span<const double> z,
                                                    const RuleSet& rules = RuleSet::Default());

// Both steps for one chart: the codes of every point, as bits and as texts.
std::vector<CodeMask> OutOfControlMasks(const std::vector<double>& values, const ControlLimits& limits,
                                        const RuleSet& rules = RuleSet::Default());
std::vector<std::string> OutOfControlCodes(const std::vector<double>& values, const ControlLimits& limits,
                                           const RuleSet& rules = RuleSet::Default());

// The 1-based numbers of the points that carry any code; the chart draws
// them in the marked style.
std::vector<long> MarkedPoints(const std::vector<CodeMask>& masks);

}  // namespace orvik::charts
