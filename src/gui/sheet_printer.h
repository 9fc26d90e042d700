#pragma once

#include <QPrinter>

#include "worksheet/worksheet.h"

#include <vector>

namespace orvik::gui {

class ChartView;

// Prints the data of a worksheet (rows 1..DataRowCnt, columns 1..DataColCnt)
// as a ruled table with its column headers, as many pages as it needs.
void PrintWorksheet(QPrinter& printer, const worksheet::Worksheet& sheet);
// Prints the charts of a result window stacked, scaled to fill the page.
void PrintCharts(QPrinter& printer, const std::vector<ChartView*>& charts);

}  // namespace orvik::gui
