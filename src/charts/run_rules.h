#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "charts/control_limits.h"

namespace orvik::charts {

// The codes of one point as bits: kOutOfLimits for "* ", then one bit per
// rule, A to I. A point's code text lists them in that order ("* A C "),
// which is the order the checks run in.
using CodeMask = std::uint16_t;
inline constexpr CodeMask kOutOfLimits = 1;
inline constexpr CodeMask RuleBit(char letter) { return static_cast<CodeMask>(2u << (letter - 'A')); }
// How many different masks there are: "* " and rules A to I.
inline constexpr std::size_t kCodeMaskCount = std::size_t{1} << 10;

// The code text of a point: "* " when outside the limits, then each rule's
// letter followed by a blank.
std::string CodeText(CodeMask mask);

// The out-of-limit test: a point strictly below LCL or strictly above UCL
// gets kOutOfLimits. `masks` is resized to the number of values.
void MarkOutOfLimits(const std::vector<double>& values, const ControlLimits& limits, std::vector<CodeMask>& masks);

// Applies the run rules A to I to `values` and adds their bits to `masks`
// (one per point). The limits come in the order CL, UCL, UpperTwoSigma,
// LCL, LowerTwoSigma. Every rule walks the points once and marks each point
// at most once, so the time is linear in the number of points.
void CheckRunRules(const std::vector<double>& values, double cl, double ucl, double upper_two_sigma,
                   double lcl, double lower_two_sigma, std::vector<CodeMask>& masks);

// The out-of-limit test and rules A to I for limits that differ from point
// to point (samples of different sizes): point i is outside when it lies
// strictly below lcl[i] or above ucl[i]. Rules A to F compare the values
// with the centre line `cl`; rules G to I place each point by its
// standardized value z[i] (its distance from CL in sigmas of its own
// limits): the upper zone is 2 <= z <= 3, the lower -3 <= z <= -2, and a
// point outside its limits lies in neither.
std::vector<CodeMask> StandardizedOutOfControlMasks(const std::vector<double>& values, double cl,
                                                    const std::vector<double>& ucl, const std::vector<double>& lcl,
                                                    const std::vector<double>& z);

// Both steps for one chart: the codes of every point, as bits and as texts.
std::vector<CodeMask> OutOfControlMasks(const std::vector<double>& values, const ControlLimits& limits);
std::vector<std::string> OutOfControlCodes(const std::vector<double>& values, const ControlLimits& limits);

// The 1-based numbers of the points that carry any code; the chart draws
// them in the marked style.
std::vector<long> MarkedPoints(const std::vector<CodeMask>& masks);

}  // namespace orvik::charts
