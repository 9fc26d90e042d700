#include "charts/control_limits.h"

#include <string>

#include "stats/decimal_numbers.h"
#include "worksheet/cell_number.h"

namespace orvik::charts {

bool ApplyGivenLimits(const shell::GivenLimits& given, int chart_index, const SigmaRule& rule,
                      ControlLimits& limits) {
  if (!given.use) return false;
  const shell::GivenLimitTexts& texts = given.charts.at(static_cast<std::size_t>(chart_index));
  const auto ucl = worksheet::ParseCellNumber(texts.UCL);
  const auto cl = worksheet::ParseCellNumber(texts.CL);
  const auto lcl = worksheet::ParseCellNumber(texts.LCL);
  if (!ucl || !cl || !lcl) return false;
  limits.UCL = *ucl;
  limits.CL = *cl;
  limits.LCL = *lcl;
  limits.UpperTwoSigma = stats::Round(*cl + rule.factor * (*ucl - *cl), rule.decimals);
  limits.LowerTwoSigma = stats::Round(*cl - rule.factor * (*cl - *lcl), rule.decimals);
  return true;
}

namespace {
constexpr std::nullopt_t kEmpty = std::nullopt;
}  // namespace

// The tables hold the values exactly as typed, three or four decimals. D4
// and B4 carry an empty entry at index 9, so from subgroup size 12 on they
// read the value listed one row earlier and size 11 fails; this is kept.

ConstantTable A2Table() {
  return {1.88,  1.023, 0.729, 0.577, 0.483, 0.419, 0.373, 0.337, 0.308, 0.285, 0.266, 0.249,
          0.235, 0.223, 0.212, 0.203, 0.194, 0.187, 0.18,  0.173, 0.167, 0.162, 0.157, 0.153};
}

// A3 starts with 1.954 and 1.628 and goes on with the A3 values of subgroup
// sizes 5, 6, ..., 26, so index i holds the value of size i + 3 and the
// lookup by n - 2 reads the factor of one size larger throughout.
ConstantTable A3Table() {
  return {1.954, 1.628, 1.427, 1.287, 1.182, 1.099, 1.032, 0.975, 0.927, 0.886, 0.85,  0.817,
          0.789, 0.763, 0.739, 0.718, 0.698, 0.68,  0.663, 0.647, 0.633, 0.619, 0.606, 0.594};
}

ConstantTable D3Table() {
  return {0,     0,     0,     0,     0,     0.076, 0.136, 0.184, 0.223, 0.256, 0.284, 0.308,
          0.329, 0.348, 0.364, 0.379, 0.392, 0.404, 0.414, 0.425, 0.434, 0.443, 0.452, 0.459};
}

ConstantTable D4Table() {
  return {3.267, 2.575, 2.282, 2.115, 2.004, 1.924, 1.864, 1.816, 1.777, kEmpty, 1.744, 1.716, 1.692,
          1.671, 1.652, 1.636, 1.621, 1.608, 1.596, 1.586, 1.575, 1.566, 1.557,  1.548, 1.541};
}

ConstantTable B3Table() {
  return {0,     0,     0,     0,     0.03,  0.118, 0.185, 0.239, 0.284, 0.321, 0.354, 0.382,
          0.406, 0.428, 0.448, 0.466, 0.482, 0.497, 0.51,  0.523, 0.534, 0.545, 0.555, 0.565};
}

ConstantTable B4Table() {
  return {3.267, 2.568, 2.266, 2.089, 1.97,  1.882, 1.815, 1.761, 1.716, kEmpty, 1.679, 1.646, 1.618,
          1.594, 1.572, 1.552, 1.534, 1.518, 1.503, 1.49,  1.477, 1.466, 1.455,  1.445, 1.435};
}

ConstantTable C4Table() {
  return {0.7979, 0.8862, 0.9213, 0.94,   0.9515, 0.9594, 0.965,  0.9693, 0.9727, 0.9754, 0.9776, 0.9794,
          0.981,  0.9823, 0.9835, 0.9845, 0.9854, 0.9862, 0.9869, 0.9876, 0.9882, 0.9887, 0.9892, 0.9896};
}

// The entry of size 20 is 0.922 where the run of values calls for about
// 5.92; the charts that use D2 keep it as it stands.
ConstantTable D2Table() {
  return {3.686, 4.358, 4.698, 4.918, 5.078, 5.203, 5.307, 5.394, 5.469, 5.534, 5.592, 5.646,
          5.693, 5.737, 5.779, 5.817, 5.854, 5.888, 0.922, 5.95,  5.979, 6.006, 6.031, 6.058};
}

double TableEntry(const ConstantTable& table, long index) {
  if (index < 0 || index >= static_cast<long>(table.size()))
    throw ChartComputationError("no table entry at index " + std::to_string(index));
  const auto& entry = table[static_cast<std::size_t>(index)];
  if (!entry) throw ChartComputationError("empty table entry at index " + std::to_string(index));
  return *entry;
}

}  // namespace orvik::charts
