#pragma once

#include <QPrinter>

#include "worksheet/worksheet.h"

class QCustomPlot;

namespace orvik::gui {

// Prints the data of a worksheet (rows 1..DataRowCnt, columns 1..DataColCnt)
// as a ruled table with its column headers, as many pages as it needs.
void PrintWorksheet(QPrinter& printer, const worksheet::Worksheet& sheet);
// Prints a chart scaled to the page.
void PrintChart(QPrinter& printer, QCustomPlot& chart);

}  // namespace orvik::gui
