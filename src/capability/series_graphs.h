#pragma once

#include "capability/graph_table.h"
#include "shell/host.h"
#include "shell/result_window.h"

namespace orvik::capability {

// The connected line graph (tool key "mnuDotGraphPlot") and the bar chart
// ("mnuBarGraph"): every value column of the block is a series over the
// rows, in row order, a line joining its points or bars standing side by
// side with those of the other columns at each row. A first column of texts
// names the rows. Empty and non-numeric cells count as zero after the
// notice "If improper data or null cells then change to zero".
void ConnectedLineView(shell::Host& host);
void BarChartView(shell::Host& host);

enum class SeriesGraph { ConnectedLine, Bar };

// The window of either graph from a table whose improper cells are already
// zero: the chart and a grid of the numbers drawn, one row per category.
shell::ResultWindow SeriesGraphWindow(SeriesGraph graph, const GraphTable& table);

}  // namespace orvik::capability
