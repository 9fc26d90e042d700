#pragma once

#include <optional>
#include <span>
#include <string>

#include "capability/cpk_settings.h"
#include "shell/host.h"
#include "shell/result_table.h"

namespace orvik::capability {

// The c4 factor of a group of m values: the four-place table for m = 2 to
// 25, 4(m - 1) / (4m - 3) above.
double CapabilityC4(long m);

// Everything a capability study reports, as stored (rounded where the study
// rounds). Indices of a side that is not in use are empty.
struct CapabilityResult {
  long n = 0;
  double mean = 0.0;       // rounded to 10 places
  double variance = 0.0;   // rounded to 10 places
  double sigmaLT = 0.0;    // overall sigma / c4(n), rounded to 10 places
  double sigmaST = 0.0;    // within sigma, rounded to 8 places
  std::optional<double> Cp, Cpk, Cpu, Cpl, Pp, Ppk, Ppu, Ppl;  // rounded to 8 places
  double observedPpm = 0.0;
  double potentialPpm = 0.0;
  double longTermSigmaLevel = 0.0;
  double shortTermSigmaLevel = 0.0;
};

// The figures of a study, or the refusal text when the data cannot give
// them. `values` are the valid values in time order (row by row across the
// block), from which the moving ranges or the subgroups are formed.
struct CapabilityOutcome {
  std::optional<CapabilityResult> result;
  std::string refusal;
};
CapabilityOutcome ComputeCapability(std::span<const double> values, const CpkSettings& study);

// The sixteen-row result grid.
shell::ResultTable CapabilityTable(const CapabilityResult& result);

// The study on the current selection with the limits and subgroups of
// `study`: validation, figures, and the result window with its histogram,
// limit and mean lines and labels.
void CpkResultView(shell::Host& host, const CpkSettings& study);

// The command "mnuPCR": checks the selection, writes the starting line and
// asks for the limits in CpkForm, which shows the last confirmed ones; OK
// runs CpkResultView with the confirmed settings.
void CpkSelection(shell::Host& host);

}  // namespace orvik::capability
