#pragma once

#include <memory>
#include <optional>

#include "shell/dialog_model.h"
#include "shell/host.h"

namespace orvik::charts {

// The control chart commands. Each reads the active worksheet's block,
// writes its session lines and opens a ControlForm window.

// Subgroups in rows (variables charts).
void XbarRView(shell::Host& host);  // "mnuBarX-R": xbar and R, after the Selection dialog
void XbarView(shell::Host& host);   // "mnuBarX"
void RView(shell::Host& host);      // "mnuR"
void XbarSView(shell::Host& host);  // "mnuBarXS": xbar and s, after the Selection dialog
void SView(shell::Host& host);      // "mnuS"
// Individual values.
void XMRView(shell::Host& host);  // "mnuX-Rs": x and MR, after the Selection dialog
void MRView(shell::Host& host);   // "mnuMR"
// Counts, one column.
void CView(shell::Host& host);   // "mnuC"
void PnView(shell::Host& host);  // "mnuPn", after the PnSubForm dialog
// Coefficients of variation of subgroups in rows.
void CVView(shell::Host& host);  // "mnuCV", after the CVForm dialog

// What the np chart's sample size dialog PnSubForm confirms: the common
// sample size n of the chart's samples.
struct NpSampleSize {
  double n = 0.0;
};

// The np chart's sample size dialog: Pntxt, PnOk, PnCancle. Made fresh, it
// accepts any positive n; the chart makes its own with the least n its
// counts allow.
std::unique_ptr<shell::DialogModel> MakePnSubForm();

// What the CV chart's dialog CVForm confirms: the in-control coefficient of
// variation (none when the chart estimates it from the subgroups) and the
// false-alarm probability of its limits.
struct CVChartSettings {
  std::optional<double> inControlCV;
  double alpha = 0.0027;
};

// The CV chart's dialog: CVtxt (empty, or a positive CV), Alphatxt (a
// probability strictly between 0 and 1, "0.0027" at first), CmdOk,
// CmdCancel. Cancel writes "Cancel CV control chart generation".
std::unique_ptr<shell::DialogModel> MakeCVForm();

}  // namespace orvik::charts
