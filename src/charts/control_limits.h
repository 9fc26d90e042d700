#pragma once

#include <optional>
#include <stdexcept>
#include <vector>

#include "shell/program_settings.h"

namespace orvik::charts {

// The limits of one control chart. A window with two charts has two.
struct ControlLimits {
  double UCL = 0.0;
  double CL = 0.0;
  double LCL = 0.0;
  double UpperTwoSigma = 0.0;  // between CL and UCL
  double LowerTwoSigma = 0.0;  // between LCL and CL
};

// How a chart draws its 2-sigma lines from its limits: at `factor` of the
// distance from CL to each limit, rounded to `decimals` places. Used when
// given limits replace the computed ones, so that the zone rules G to I
// test the zones of the limits actually in force.
struct SigmaRule {
  double factor = 0.6666666666;
  int decimals = 8;
};

// Replaces UCL, CL and LCL of `limits` with the user's given set when the
// program-wide flag is on and the set holds three numbers, and redraws the
// sigma lines from them by `rule`. Returns true when the given set was used.
bool ApplyGivenLimits(const shell::GivenLimits& given, int chart_index, const SigmaRule& rule,
                      ControlLimits& limits);

// A run-time failure while a chart is computed (for example a factor read
// from an empty table entry). The chart procedure turns it into its failure
// message and cancel line.
class ChartComputationError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// A constant table indexed from 0, index i for subgroup size i + 2. An entry
// may be empty (a missing value, not a number).
using ConstantTable = std::vector<std::optional<double>>;

ConstantTable A2Table();
ConstantTable A3Table();
ConstantTable D3Table();
ConstantTable D4Table();
ConstantTable B3Table();
ConstantTable B4Table();
ConstantTable C4Table();
ConstantTable D2Table();

// The entry at `index`; throws ChartComputationError for an empty entry or
// an index outside the table.
double TableEntry(const ConstantTable& table, long index);
// The factor of subgroup size n (2 <= n <= 25): the entry at index n - 2.
inline double Factor(const ConstantTable& table, long n) { return TableEntry(table, n - 2); }

}  // namespace orvik::charts
