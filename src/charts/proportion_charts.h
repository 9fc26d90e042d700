#pragma once

#include <memory>

#include "shell/dialog_model.h"
#include "shell/host.h"

namespace orvik::charts {

// The p and u control charts: samples in rows, the sample size in the left
// column and the count in the right one, limits that step with the size.
void PView(shell::Host& host);  // "mnuP", after the PSubForm dialog
void UView(shell::Host& host);  // "mnuU"

// What the p chart's dialog PSubForm confirms.
struct PChartSettings {
  // One size for every sample (`size`), the block then being one column of
  // counts; otherwise sizes from the block's left column.
  bool constantSize = false;
  double size = 0.0;
  // Limits from the average sample size instead of each sample's own.
  bool averageLimits = false;
  // Laney's p' chart.
  bool laney = false;
};

// The p chart's dialog: option buttons SizeColumn (default) and
// SizeConstant with the text box Sizetxt, option buttons LimitStepped
// (default) and LimitAverage, check box Laney, buttons POk and PCancle.
// Made fresh it accepts any positive whole size; the chart makes its own
// with the least size its counts allow.
std::unique_ptr<shell::DialogModel> MakePSubForm();

}  // namespace orvik::charts
