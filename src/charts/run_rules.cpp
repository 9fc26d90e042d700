#include "charts/run_rules.h"

#include <algorithm>

namespace orvik::charts {

RuleKind KindOf(char letter) {
  switch (letter) {
    case 'A': return RuleKind::OneSideRun;
    case 'B': return RuleKind::Trend;
    case 'C': case 'D': case 'E': case 'F': return RuleKind::OneSideWindow;
    case 'G': case 'H': case 'I': return RuleKind::ZoneWindow;
    case 'J': return RuleKind::BeyondTwoWindow;
    case 'K': return RuleKind::BeyondOneWindow;
    case 'L': return RuleKind::Alternating;
    case 'M': return RuleKind::WithinOneRun;
    default: return RuleKind::BeyondOneRun;
  }
}

namespace {

RuleSet AllOff() {
  RuleSet set;
  const auto off = [&set](char letter, int k, int m) { set[letter] = {false, k, m}; };
  off('A', 7, 7), off('B', 7, 7), off('C', 10, 11), off('D', 12, 14), off('E', 14, 17), off('F', 16, 20);
  off('G', 2, 3), off('H', 3, 7), off('I', 4, 10);
  off('J', 2, 3), off('K', 4, 5), off('L', 14, 14), off('M', 15, 15), off('N', 8, 8);
  return set;
}

}  // namespace

RuleSet RuleSet::Default() {
  RuleSet set = AllOff();
  for (char letter = 'A'; letter <= 'I'; ++letter) set[letter].on = true;
  return set;
}

RuleSet RuleSet::WesternElectric() {
  RuleSet set = AllOff();
  set['A'] = {true, 8, 8};
  set['J'].on = true;
  set['K'].on = true;
  return set;
}

RuleSet RuleSet::Nelson() {
  RuleSet set = AllOff();
  set['A'] = {true, 9, 9};
  set['B'] = {true, 6, 6};
  for (const char letter : {'J', 'K', 'L', 'M', 'N'}) set[letter].on = true;
  return set;
}

std::string CodeText(CodeMask mask) {
  std::string text = mask & kOutOfLimits ? "* " : "";
  for (char letter = kFirstRule; letter <= kLastRule; ++letter)
    if (mask & RuleBit(letter)) text.append({letter, ' '});
  return text;
}

namespace {

// Counts up to twenty in words, as the classic legend lines write them
// ("ten out of 11"); larger counts in digits.
std::string CountWord(int n) {
  static const char* const kWords[] = {"zero",    "one",     "two",      "three",    "four",     "five",    "six",
                                       "seven",   "eight",   "nine",     "ten",      "eleven",   "twelve",  "thirteen",
                                       "fourteen", "fifteen", "sixteen", "seventeen", "eighteen", "nineteen", "twenty"};
  return n >= 0 && n <= 20 ? kWords[n] : std::to_string(n);
}

}  // namespace

std::string LegendLine(char letter, const RuleChoice& c) {
  const std::string head = std::string(" ") + letter + " : ";
  const std::string k = std::to_string(c.k), m = std::to_string(c.m);
  switch (KindOf(letter)) {
    case RuleKind::OneSideRun: return head + k + " successive points are on the same side of the centerline";
    case RuleKind::Trend: return head + k + " or more successive points tend to increase or decrease";
    case RuleKind::OneSideWindow:
      return head + CountWord(c.k) + " out of " + m + " successive points fall on the same side of the centerline";
    case RuleKind::ZoneWindow:
      return head + "at least " + CountWord(c.k) + " out of " + m +
             " successive points fall in between 2sigma and 3sigma ";
    case RuleKind::BeyondTwoWindow:
      return head + k + " out of " + m + " successive points fall beyond 2sigma on the same side of the centerline";
    case RuleKind::BeyondOneWindow:
      return head + k + " out of " + m + " successive points fall beyond 1sigma on the same side of the centerline";
    case RuleKind::Alternating: return head + k + " successive points alternate up and down";
    case RuleKind::WithinOneRun: return head + k + " successive points fall within 1sigma of the centerline";
    case RuleKind::BeyondOneRun:
      return head + k + " successive points fall beyond 1sigma on either side of the centerline";
  }
  return head;
}

void MarkOutOfLimits(const std::vector<double>& values, const ControlLimits& limits, std::vector<CodeMask>& masks) {
  masks.resize(values.size());
  for (std::size_t i = 0; i < values.size(); ++i)
    if (values[i] < limits.LCL || values[i] > limits.UCL) masks[i] |= kOutOfLimits;
}

namespace {

// Where a point lies, as bits, worked out once for all rules.
using Place = std::uint16_t;
constexpr Place kAbove = 1, kBelow = 2;                    // strictly above or below CL
constexpr Place kUpperZone = 4, kLowerZone = 8;            // between a 2-sigma line and its limit, inclusive
constexpr Place kBeyondTwoUp = 16, kBeyondTwoDown = 32;    // strictly beyond 2 sigma
constexpr Place kBeyondOneUp = 64, kBeyondOneDown = 128;   // strictly beyond 1 sigma
constexpr Place kWithinOne = 256;                          // strictly within 1 sigma

// Marks points first..last (0-based, inclusive) with `letter`, skipping the
// points this rule has marked already. Every rule marks ranges whose ends
// only move forward, so remembering the last marked point keeps each rule
// linear however long its runs or windows are.
class RuleMarker {
 public:
  RuleMarker(std::span<CodeMask> masks, char letter) : masks_(masks), bit_(RuleBit(letter)) {}
  void Mark(std::size_t first, std::size_t last) {
    std::size_t from = first;
    if (any_ && last_marked_ + 1 > from) from = last_marked_ + 1;
    for (std::size_t i = from; i <= last; ++i) masks_[i] |= bit_;
    if (!any_ || last > last_marked_) last_marked_ = last;
    any_ = true;
  }

 private:
  std::span<CodeMask> masks_;
  CodeMask bit_;
  std::size_t last_marked_ = 0;
  bool any_ = false;
};

// Rule A: k or more successive points strictly on one side of CL. A point
// on CL belongs to no side and ends the run.
void SideRun(std::span<const Place> places, std::size_t k, RuleMarker marker) {
  Place side = 0;
  std::size_t run_start = 0, run_length = 0;
  for (std::size_t i = 0; i < places.size(); ++i) {
    const Place here = places[i] & (kAbove | kBelow);
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
    if (run_length >= k) marker.Mark(run_start, i);
  }
}

// Rules M and N: k or more successive points that each carry one of `bits`.
void PlaceRun(std::span<const Place> places, Place bits, std::size_t k, RuleMarker marker) {
  std::size_t run_start = 0, run_length = 0;
  for (std::size_t i = 0; i < places.size(); ++i) {
    if ((places[i] & bits) == 0) {
      run_length = 0;
      continue;
    }
    if (run_length++ == 0) run_start = i;
    if (run_length >= k) marker.Mark(run_start, i);
  }
}

// Rule B: k or more points rising (or falling) in turn. Counts count
// points, so seven points are six strict rises. A tie changes neither count
// and the tied point becomes the one the next point is compared with. A
// sequence starts at the point from which its first rise (fall) was made;
// after a flat stretch that is the last point of the stretch, where the
// trend visibly begins.
void Trend(std::span<const double> values, std::size_t k, RuleMarker marker) {
  std::size_t rising = 1, falling = 1;
  std::size_t rise_start = 0, fall_start = 0;
  for (std::size_t i = 1; i < values.size(); ++i) {
    const double previous = values[i - 1];
    if (values[i] > previous) {
      if (rising == 1) rise_start = i - 1;
      ++rising;
      falling = 1;
      if (rising >= k) marker.Mark(rise_start, i);
    } else if (values[i] < previous) {
      if (falling == 1) fall_start = i - 1;
      ++falling;
      rising = 1;
      if (falling >= k) marker.Mark(fall_start, i);
    }
  }
}

// Rule L: k or more successive points going up and down in turn. A tie is
// neither and ends the alternation.
void Alternation(std::span<const double> values, std::size_t k, RuleMarker marker) {
  int previous_step = 0;
  std::size_t run_start = 0, run_length = values.empty() ? 0 : 1;
  for (std::size_t i = 1; i < values.size(); ++i) {
    const int step = values[i] > values[i - 1] ? 1 : (values[i] < values[i - 1] ? -1 : 0);
    if (step == 0) {
      run_start = i;
      run_length = 1;
    } else if (previous_step != 0 && step == -previous_step) {
      ++run_length;
    } else {
      run_start = i - 1;
      run_length = 2;
    }
    previous_step = step;
    if (run_length >= k) marker.Mark(run_start, i);
  }
}

// Rules with a window: in a window of m successive points at least k carry
// `upper`, or at least k carry `lower`, or (with `together`) at least k
// carry either; all m points of the window are marked.
void WindowRule(std::span<const Place> places, Place upper, Place lower, bool together, std::size_t k,
                std::size_t m, RuleMarker marker) {
  const std::size_t n = places.size();
  if (n < m || m == 0) return;
  std::size_t up = 0, down = 0;
  for (std::size_t i = 0; i < n; ++i) {
    up += (places[i] & upper) != 0;
    down += (places[i] & lower) != 0;
    if (i >= m) {
      up -= (places[i - m] & upper) != 0;
      down -= (places[i - m] & lower) != 0;
    }
    if (i + 1 >= m && (up >= k || down >= k || (together && up + down >= k))) marker.Mark(i + 1 - m, i);
  }
}

// The rules in force once the places of the points are known, in letter
// order.
void ApplyRules(std::span<const double> values, std::span<const Place> places, const RuleSet& rules,
                std::span<CodeMask> masks) {
  for (char letter = kFirstRule; letter <= kLastRule; ++letter) {
    const RuleChoice& rule = rules[letter];
    if (!rule.on || rule.k <= 0) continue;
    const auto k = static_cast<std::size_t>(rule.k);
    const auto m = static_cast<std::size_t>(std::max(rule.m, rule.k));
    const RuleMarker marker(masks, letter);
    switch (KindOf(letter)) {
      case RuleKind::OneSideRun: SideRun(places, k, marker); break;
      case RuleKind::Trend: Trend(values, k, marker); break;
      case RuleKind::OneSideWindow: WindowRule(places, kAbove, kBelow, false, k, m, marker); break;
      case RuleKind::ZoneWindow: WindowRule(places, kUpperZone, kLowerZone, true, k, m, marker); break;
      case RuleKind::BeyondTwoWindow: WindowRule(places, kBeyondTwoUp, kBeyondTwoDown, false, k, m, marker); break;
      case RuleKind::BeyondOneWindow: WindowRule(places, kBeyondOneUp, kBeyondOneDown, false, k, m, marker); break;
      case RuleKind::Alternating: Alternation(values, k, marker); break;
      case RuleKind::WithinOneRun: PlaceRun(places, kWithinOne, k, marker); break;
      case RuleKind::BeyondOneRun: PlaceRun(places, kBeyondOneUp | kBeyondOneDown, k, marker); break;
    }
  }
}

// The sigma places of a point at `z` sigmas from CL.
Place SigmaPlaces(double z) {
  Place place = 0;
  if (z > 2.0) place |= kBeyondTwoUp;
  if (z < -2.0) place |= kBeyondTwoDown;
  if (z > 1.0) place |= kBeyondOneUp;
  if (z < -1.0) place |= kBeyondOneDown;
  if (-1.0 < z && z < 1.0) place |= kWithinOne;
  return place;
}

}  // namespace

void CheckRunRules(std::span<const double> values, double cl, double ucl, double upper_two_sigma, double lcl,
                   double lower_two_sigma, std::span<CodeMask> masks, const RuleSet& rules) {
  const double sigma = (ucl - cl) / 3.0;
  std::vector<Place> places(values.size());
  for (std::size_t i = 0; i < values.size(); ++i) {
    const double v = values[i];
    Place place = (v > cl ? kAbove : 0) | (v < cl ? kBelow : 0);
    if (upper_two_sigma <= v && v <= ucl) place |= kUpperZone;
    if (lcl <= v && v <= lower_two_sigma) place |= kLowerZone;
    if (v > cl + 2.0 * sigma) place |= kBeyondTwoUp;
    if (v < cl - 2.0 * sigma) place |= kBeyondTwoDown;
    if (v > cl + sigma) place |= kBeyondOneUp;
    if (v < cl - sigma) place |= kBeyondOneDown;
    if (cl - sigma < v && v < cl + sigma) place |= kWithinOne;
    places[i] = place;
  }
  ApplyRules(values, places, rules, masks);
}

void CheckRunRules(const std::vector<double>& values, double cl, double ucl, double upper_two_sigma, double lcl,
                   double lower_two_sigma, std::vector<CodeMask>& masks, const RuleSet& rules) {
  masks.resize(values.size());
  CheckRunRules(std::span<const double>(values), cl, ucl, upper_two_sigma, lcl, lower_two_sigma,
                std::span<CodeMask>(masks), rules);
}

std::vector<CodeMask> StandardizedOutOfControlMasks(std::span<const double> values, double cl,
                                                    std::span<const double> ucl, std::span<const double> lcl,
                                                    std::span<const double> z, const RuleSet& rules) {
  const std::size_t n = values.size();
  std::vector<CodeMask> masks(n);
  std::vector<Place> places(n);
  for (std::size_t i = 0; i < n; ++i) {
    const double v = values[i];
    const bool outside = v < lcl[i] || v > ucl[i];
    if (outside) masks[i] = kOutOfLimits;
    Place place = (v > cl ? kAbove : 0) | (v < cl ? kBelow : 0) | SigmaPlaces(z[i]);
    if (!outside && 2.0 <= z[i] && z[i] <= 3.0) place |= kUpperZone;
    if (!outside && -3.0 <= z[i] && z[i] <= -2.0) place |= kLowerZone;
    places[i] = place;
  }
  ApplyRules(values, places, rules, masks);
  return masks;
}

std::vector<CodeMask> OutOfControlMasks(const std::vector<double>& values, const ControlLimits& limits,
                                        const RuleSet& rules) {
  std::vector<CodeMask> masks;
  MarkOutOfLimits(values, limits, masks);
  CheckRunRules(values, limits.CL, limits.UCL, limits.UpperTwoSigma, limits.LCL, limits.LowerTwoSigma, masks, rules);
  return masks;
}

std::vector<std::string> OutOfControlCodes(const std::vector<double>& values, const ControlLimits& limits,
                                           const RuleSet& rules) {
  const std::vector<CodeMask> masks = OutOfControlMasks(values, limits, rules);
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
