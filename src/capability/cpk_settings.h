#pragma once

namespace orvik::capability {

// The limits and subgroup choice of a capability study as CpkForm confirms
// them. The program keeps the last confirmed record, and the dialog opens
// showing it the next time.
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
