#pragma once

#include <string>

#include "analyses/gage_rr_factor.h"
#include "shell/host.h"
#include "worksheet/worksheet.h"

namespace orvik::analyses {

// The kind of design a study sheet carries.
inline constexpr const char* kGageStudyKind = "GageRR";

// The study sheet of `settings`, named `name`: the columns RunOrder, Part,
// Appraiser, Trial and an empty Measurement as column header names, one
// row per measurement to take. Trial after trial, each appraiser measures
// every part; with a seed the parts of each appraiser's round come in a
// random order. A column "Design" right of Measurement describes the
// study. The sheet's design keeps the counts, the appraisers' names
// and the analysis settings (tolerance, multiplier, method, seed).
worksheet::Worksheet GageStudySheet(std::string name, const GageRRSettings& settings);

// The settings a study sheet's design keeps; the defaults for those it
// lacks.
GageRRSettings StudySettings(const worksheet::SheetDesign& design);

// "mnuGageRR": the dialog GageRRFactor, then a new study sheet
// "Gage Study <n>". No session line but the dialog's cancel line.
void GageRRStudyView(shell::Host& host);

}  // namespace orvik::analyses
