#pragma once

namespace orvik::capability {

// The specification of a capability study as CpkForm stores it; it stays
// set for the rest of the session until the dialog writes it again.
struct CpkSettings {
  bool specified = false;  // the dialog has been confirmed at least once
  double USL = 0.0;
  double LSL = 0.0;
  bool UseUpper = true;
  bool UseLower = true;
  bool UseSubgroups = false;
  long SubgroupSize = 2;
};

}  // namespace orvik::capability
