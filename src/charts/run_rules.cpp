#include "charts/run_rules.h"

#include <algorithm>

namespace orvik::charts {

std::string CodeText(CodeMask mask) {
  std::string text = mask & kOutOfLimits ? "* " : "";
  for (char letter = 'A'; letter <= 'I'; ++letter)
    if (mask & RuleBit(letter)) text.append({letter, ' '});
  return text;
}

void MarkOutOfLimits(const std::vector<double>& values, const ControlLimits& limits, std::vector<CodeMask>& masks) {
  masks.resize(values.size());
  for (std::size_t i = 0; i < values.size(); ++i)
    if (values[i] < limits.LCL || values[i] > limits.UCL) masks[i] |= kOutOfLimits;
}

namespace {

// Marks points first..last (0-based, inclusive) with `letter`, skipping the
// points this rule has marked already. Every rule marks ranges whose ends
// only move forward, so remembering the last marked point keeps each rule
// linear however long its runs or windows are.
class RuleMarker {
 public:
  RuleMarker(std::vector<CodeMask>& masks, char letter) : masks_(masks), bit_(RuleBit(letter)) {}
  void Mark(std::size_t first, std::size_t last) {
    std::size_t from = first;
    if (any_ && last_marked_ + 1 > from) from = last_marked_ + 1;
    for (std::size_t i = from; i <= last; ++i) masks_[i] |= bit_;
    if (!any_ || last > last_marked_) last_marked_ = last;
    any_ = true;
  }

 private:
  std::vector<CodeMask>& masks_;
  CodeMask bit_;
  std::size_t last_marked_ = 0;
  bool any_ = false;
};

// Rule A: seven or more successive points strictly on one side of CL. A
// point on CL belongs to no side and ends the run.
void RuleA(const std::vector<double>& values, double cl, std::vector<CodeMask>& codes) {
  RuleMarker marker(codes, 'A');
  int side = 0;  // +1 above, -1 below, 0 none
  std::size_t run_start = 0;
  std::size_t run_length = 0;
  for (std::size_t i = 0; i < values.size(); ++i) {
    const int here = values[i] > cl ? 1 : (values[i] < cl ? -1 : 0);
    if (here == 0) {
      side = 0;
      run_length = 0;
      continue;
    }
    if (here == side) {
      ++run_length;
    } else {
      side = here;
      run_start = i;
      run_length = 1;
    }
    if (run_length >= 7) marker.Mark(run_start, i);
  }
}

// Rule B: seven or more points rising (or falling) in turn. Counts count
// points, so seven points are six strict rises. A tie changes neither count
// and the tied point becomes the one the next point is compared with. A
// sequence starts at the point from which its first rise (fall) was made;
// after a flat stretch that is the last point of the stretch, where the
// trend visibly begins.
void RuleB(const std::vector<double>& values, std::vector<CodeMask>& codes) {
  RuleMarker marker(codes, 'B');
  std::size_t rising = 1, falling = 1;
  std::size_t rise_start = 0, fall_start = 0;
  for (std::size_t i = 1; i < values.size(); ++i) {
    const double previous = values[i - 1];
    if (values[i] > previous) {
      if (rising == 1) rise_start = i - 1;
      ++rising;
      falling = 1;
      if (rising >= 7) marker.Mark(rise_start, i);
    } else if (values[i] < previous) {
      if (falling == 1) fall_start = i - 1;
      ++falling;
      rising = 1;
      if (falling >= 7) marker.Mark(fall_start, i);
    }
  }
}

// Where each point lies, worked out once for the rules that count points
// in windows: strictly above or below CL, in the upper or lower zone
// between the 2-sigma line and the limit (both ends inclusive).
struct PointPlaces {
  std::vector<unsigned char> above, below, upperZone, lowerZone;
};

PointPlaces PlacesOf(const std::vector<double>& values, double cl, double ucl, double upper_two_sigma, double lcl,
                     double lower_two_sigma) {
  PointPlaces places;
  const std::size_t n = values.size();
  places.above.resize(n), places.below.resize(n), places.upperZone.resize(n), places.lowerZone.resize(n);
  for (std::size_t i = 0; i < n; ++i) {
    const double v = values[i];
    places.above[i] = v > cl;
    places.below[i] = v < cl;
    places.upperZone[i] = upper_two_sigma <= v && v <= ucl;
    places.lowerZone[i] = lcl <= v && v <= lower_two_sigma;
  }
  return places;
}

// Rules C to F: in a window of m successive points at least k lie strictly
// on one side of CL; all m points of the window are marked.
void RuleKOfMOneSide(const PointPlaces& places, std::size_t k, std::size_t m, char letter,
                     std::vector<CodeMask>& codes) {
  const std::size_t n = places.above.size();
  if (n < m) return;
  RuleMarker marker(codes, letter);
  std::size_t above = 0, below = 0;
  for (std::size_t i = 0; i < n; ++i) {
    above += places.above[i];
    below += places.below[i];
    if (i >= m) {
      above -= places.above[i - m];
      below -= places.below[i - m];
    }
    if (i + 1 >= m && (above >= k || below >= k)) marker.Mark(i + 1 - m, i);
  }
}

// Rules G to I: in a window of m successive points at least k lie between
// the 2-sigma line and the limit (both ends inclusive). The upper and lower
// zones are tested alone and together, so points of both zones count
// together; a point outside the limits is in neither zone.
void RuleKOfMZone(const PointPlaces& places, std::size_t k, std::size_t m, char letter,
                  std::vector<CodeMask>& codes) {
  const std::size_t n = places.upperZone.size();
  if (n < m) return;
  RuleMarker marker(codes, letter);
  std::size_t upper = 0, lower = 0;
  for (std::size_t i = 0; i < n; ++i) {
    upper += places.upperZone[i];
    lower += places.lowerZone[i];
    if (i >= m) {
      upper -= places.upperZone[i - m];
      lower -= places.lowerZone[i - m];
    }
    if (i + 1 >= m && (upper >= k || lower >= k || upper + lower >= k)) marker.Mark(i + 1 - m, i);
  }
}

// Rules A to I once the places of the points are known.
void ApplyRules(const std::vector<double>& values, double cl, const PointPlaces& places,
                std::vector<CodeMask>& codes) {
  codes.resize(values.size());
  RuleA(values, cl, codes);
  RuleB(values, codes);
  RuleKOfMOneSide(places, 10, 11, 'C', codes);
  RuleKOfMOneSide(places, 12, 14, 'D', codes);
  RuleKOfMOneSide(places, 14, 17, 'E', codes);
  RuleKOfMOneSide(places, 16, 20, 'F', codes);
  RuleKOfMZone(places, 2, 3, 'G', codes);
  RuleKOfMZone(places, 3, 7, 'H', codes);
  RuleKOfMZone(places, 4, 10, 'I', codes);
}

}  // namespace

void CheckRunRules(const std::vector<double>& values, double cl, double ucl, double upper_two_sigma,
                   double lcl, double lower_two_sigma, std::vector<CodeMask>& codes) {
  ApplyRules(values, cl, PlacesOf(values, cl, ucl, upper_two_sigma, lcl, lower_two_sigma), codes);
}

std::vector<CodeMask> StandardizedOutOfControlMasks(const std::vector<double>& values, double cl,
                                                    const std::vector<double>& ucl, const std::vector<double>& lcl,
                                                    const std::vector<double>& z) {
  const std::size_t n = values.size();
  std::vector<CodeMask> masks(n);
  PointPlaces places;
  places.above.resize(n), places.below.resize(n), places.upperZone.resize(n), places.lowerZone.resize(n);
  for (std::size_t i = 0; i < n; ++i) {
    const double v = values[i];
    const bool outside = v < lcl[i] || v > ucl[i];
    if (outside) masks[i] = kOutOfLimits;
    places.above[i] = v > cl;
    places.below[i] = v < cl;
    places.upperZone[i] = !outside && 2.0 <= z[i] && z[i] <= 3.0;
    places.lowerZone[i] = !outside && -3.0 <= z[i] && z[i] <= -2.0;
  }
  ApplyRules(values, cl, places, masks);
  return masks;
}

std::vector<CodeMask> OutOfControlMasks(const std::vector<double>& values, const ControlLimits& limits) {
  std::vector<CodeMask> masks;
  MarkOutOfLimits(values, limits, masks);
  CheckRunRules(values, limits.CL, limits.UCL, limits.UpperTwoSigma, limits.LCL, limits.LowerTwoSigma, masks);
  return masks;
}

std::vector<std::string> OutOfControlCodes(const std::vector<double>& values, const ControlLimits& limits) {
  const std::vector<CodeMask> masks = OutOfControlMasks(values, limits);
  std::vector<std::string> codes(masks.size());
  for (std::size_t i = 0; i < masks.size(); ++i) codes[i] = CodeText(masks[i]);
  return codes;
}

std::vector<long> MarkedPoints(const std::vector<CodeMask>& masks) {
  std::vector<long> marked;
  for (std::size_t i = 0; i < masks.size(); ++i)
    if (masks[i] != 0) marked.push_back(static_cast<long>(i) + 1);
  return marked;
}

}  // namespace orvik::charts
