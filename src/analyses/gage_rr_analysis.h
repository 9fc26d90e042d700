#pragma once

#include <optional>
#include <string>
#include <vector>

#include "analyses/gage_rr_factor.h"
#include "shell/host.h"
#include "shell/result_window.h"

namespace orvik::analyses {

// The rows of a gauge study as read from a sheet: the part's and the
// appraiser's texts and the measurement, NaN where the cell is empty or not
// a number.
struct GageRows {
  std::vector<std::string> parts;
  std::vector<std::string> appraisers;
  std::vector<double> measurements;
};

// The study of `rows`, or nothing when it cannot be analysed: an empty or
// non-numeric measurement, an empty part or appraiser, fewer than two parts
// or appraisers, or a study that is not balanced with at least two trials
// of every part by every appraiser. Parts and appraisers are sorted as the
// factor levels of the analyses of variance are.
std::optional<GageStudy> MakeGageStudy(const GageRows& rows);

// The report window of a study under `settings` (method, tolerance and
// multiplier): the tables of the method and the six charts.
shell::ResultWindow GageReport(const GageStudy& study, const GageRRSettings& settings);

// The six charts: components of variation, R and Xbar charts by appraiser,
// measurements by part and by appraiser, appraiser-by-part interaction.
std::vector<shell::ChartSeries> GageCharts(const GageStudy& study, const GageVariances& variances,
                                           const GageRRSettings& settings);

// GageRRAnalysis: on a study sheet, the whole sheet under the settings it
// keeps; on a worksheet, the study of the block, three columns in the order
// part, appraiser, measurement ("Select three columns" otherwise), under
// the settings of the last study designed with GageRRFactor. A study that MakeGageStudy refuses shows "Include improper
// data or null cells", one whose measurements are all equal "All data are
// same", before the starting line. Log lines "Gage R&R Analysis is
// starting" and "Gage R&R Analysis is completed".
void GageRRAnalysis(shell::Host& host);

}  // namespace orvik::analyses
