#pragma once

#include <memory>

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

// What the np chart's sample size dialog PnSubForm confirms: the common
// sample size n of the chart's samples.
struct NpSampleSize {
  double n = 0.0;
};

// The np chart's sample size dialog: Pntxt, PnOk, PnCancle. Made fresh, it
// accepts any positive n; the chart makes its own with the least n its
// counts allow.
std::unique_ptr<shell::DialogModel> MakePnSubForm();

}  // namespace orvik::charts
