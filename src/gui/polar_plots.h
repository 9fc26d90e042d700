#pragma once

#include <qcustomplot.h>

#include "shell/chart_series.h"

namespace orvik::gui {

// The charts QCustomPlot has no plottable for, pie and radar charts, drawn
// by items of the plot (QCPAbstractItem) inside its axis rect with the
// plot's own painter, so that they print, copy and save as pictures like
// every other chart; they go with the plot's other items when it is cleared.
//
// When `chart` holds a pie or radar series, adds its item, hides the axes
// and returns true; otherwise shows the axes and returns false.
bool DrawPolarChart(QCustomPlot& plot, const shell::ChartSeries& chart, const QFont& font);

}  // namespace orvik::gui
