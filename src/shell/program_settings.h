#pragma once

#include <array>
#include <string>

#include "analyses/analysis_settings.h"
#include "capability/cpk_settings.h"

namespace orvik::shell {

// One chart's limits as the user typed them in the given-limits dialog.
struct GivenLimitTexts {
  std::string UCL;
  std::string CL;
  std::string LCL;
};

// Control limits given by the user (dialogs ControlLimit and ControlTwoLimit).
// While `use` is set, every control chart replaces its computed UCL, CL and
// LCL with these: charts[0] for the only or upper chart of a window,
// charts[1] for the lower chart. The texts are kept as typed and converted
// when a chart reads them; a set left empty keeps the computed limits.
struct GivenLimits {
  bool use = false;
  std::array<GivenLimitTexts, 2> charts;
};

// Program-wide settings: the parameters that dialogs store for the analyses
// to read, kept for the whole run. Each analysis adds its own record here.
struct ProgramSettings {
  capability::CpkSettings cpk;  // the last confirmed CpkForm
  GivenLimits givenLimits;
  // The np chart's common sample size n (dialog PnSubForm) and the lower
  // bound the dialog checks n against, set by the chart before it opens.
  double npSampleSize = 0.0;
  double npSampleSizeFloor = 0.0;
  analyses::EstimationSettings estimation;  // the last confirmed estimation dialog
  analyses::TestSettings test;              // the last confirmed test dialog
};

}  // namespace orvik::shell
