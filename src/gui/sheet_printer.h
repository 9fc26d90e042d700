#pragma once

#include <QPrinter>

#include "shell/result_table.h"
#include "worksheet/worksheet.h"

#include <vector>

namespace orvik::gui {

class ChartView;

// Prints the data of a worksheet (rows 1..DataRowCnt, columns 1..DataColCnt)
// as a ruled table with its column headers, as many pages as it needs.
void PrintWorksheet(QPrinter& printer, const worksheet::Worksheet& sheet);
// Prints the charts of a result window stacked, scaled to fill the page.
void PrintCharts(QPrinter& printer, const std::vector<ChartView*>& charts);
// Prints a whole result window: its charts on the first page, then its
// grid (when it has rows) as a ruled table on the pages after.
void PrintResultWindow(QPrinter& printer, const std::vector<ChartView*>& charts, const shell::ResultTable* table);

}  // namespace orvik::gui
