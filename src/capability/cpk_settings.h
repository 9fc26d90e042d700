#pragma once

namespace orvik::capability {

// The limits and subgroup choice of a capability study as CpkForm stores
// them; they stay set for the rest of the session until the dialog writes
// them again.
struct CpkSettings {
  bool confirmed = false;  // the dialog has been confirmed at least once
  double USL = 0.0;
  double LSL = 0.0;
  bool UseUpper = true;
  bool UseLower = true;
  bool UseSubgroups = false;
  long SubgroupSize = 2;
};

}  // namespace orvik::capability
