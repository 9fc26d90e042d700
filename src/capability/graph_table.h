#pragma once

#include <string>
#include <vector>

#include "worksheet/data_selection.h"
#include "worksheet/worksheet.h"

namespace orvik::capability {

// The block as the graphs of several columns read it (connected line, bar,
// pie and radar charts): rows are categories, columns series. Rows and
// columns follow the walk of the block; rows after the last one holding any
// cell of the block are left out.
struct GraphTable {
  // One name per row: the texts of the label column where there is one,
  // otherwise the row numbers 1, 2, ...
  std::vector<std::string> categories;
  // One name per value column: its text in a heading row, else its header
  // caption (the user's header name, or its letters).
  std::vector<std::string> names;
  // columns[c][r]: the number in row r of value column c, NaN where the
  // cell is empty or not a number.
  std::vector<std::vector<double>> columns;
  long improperCells = 0;  // the NaN cells of the value columns
  bool labelled = false;   // the first column gave the row names
  bool headed = false;     // the first row of texts gave the series names
};

// Reads the block. A first row of texts only, above further rows, names the
// series and is not a category. With `label_column`, a first column of
// texts (every filled cell below the heading not a number) names the rows
// and is not a series; a column holding any number stays a series, its
// texts improper cells.
GraphTable ReadGraphTable(const worksheet::Worksheet& sheet, const worksheet::DataSelection& block,
                          bool label_column);

// The rows whose cells are all numbers, for the graphs that leave out rows
// with an improper cell.
GraphTable WithoutImproperRows(const GraphTable& table);

}  // namespace orvik::capability
