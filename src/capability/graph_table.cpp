#include "capability/graph_table.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string_view>

#include "worksheet/cell_number.h"

namespace orvik::capability {

GraphTable ReadGraphTable(const worksheet::Worksheet& sheet, const worksheet::DataSelection& block,
                          bool label_column) {
  GraphTable table;
  const worksheet::WalkSpan columns = worksheet::ColumnsWithData(sheet, block);
  const worksheet::WalkSpan rows = worksheet::RowsWithData(sheet, block);
  // The rows up to the last one with any cell of the block.
  long used_rows = 0;
  for (long r = 0; r < rows.length; ++r)
    for (long c = 0; c < columns.length; ++c)
      if (!worksheet::TrimBlanks(sheet.Text(rows.At(r), columns.At(c))).empty()) used_rows = r + 1;

  // A first row of texts only (no number in any cell) heads the columns:
  // it names the series and is not a category.
  long first_row = 0;
  if (used_rows > 1) {
    long texts = 0, numbers = 0;
    for (long c = 0; c < columns.length; ++c) {
      const std::string text = worksheet::TrimBlanks(sheet.Text(rows.At(0), columns.At(c)));
      if (!text.empty()) ++(worksheet::ParseCellNumber(text) ? numbers : texts);
    }
    if (texts > 0 && numbers == 0) first_row = 1;
  }
  table.headed = first_row == 1;

  long first_value = 0;
  if (label_column && columns.length > 1) {
    const long col = columns.At(0);
    long texts = 0, numbers = 0;
    for (long r = first_row; r < used_rows; ++r) {
      const std::string text = worksheet::TrimBlanks(sheet.Text(rows.At(r), col));
      if (text.empty()) continue;
      ++(worksheet::ParseCellNumber(text) ? numbers : texts);
    }
    table.labelled = texts > 0 && numbers == 0;
    if (table.labelled) first_value = 1;
  }
  for (long r = first_row; r < used_rows; ++r)
    table.categories.push_back(table.labelled ? worksheet::TrimBlanks(sheet.Text(rows.At(r), columns.At(0)))
                                              : std::to_string(r - first_row + 1));
  for (long c = first_value; c < columns.length; ++c) {
    const long col = columns.At(c);
    const std::string heading = first_row ? worksheet::TrimBlanks(sheet.Text(rows.At(0), col)) : std::string();
    table.names.push_back(heading.empty() ? sheet.ColumnHeader(col) : heading);
    std::vector<double>& values = table.columns.emplace_back();
    for (long r = first_row; r < used_rows; ++r) {
      const auto number = worksheet::ParseCellNumber(sheet.Text(rows.At(r), col));
      values.push_back(number ? *number : std::numeric_limits<double>::quiet_NaN());
      if (!number) ++table.improperCells;
    }
  }
  return table;
}

GraphTable WithoutImproperRows(const GraphTable& table) {
  GraphTable kept = table;
  kept.categories.clear();
  for (auto& column : kept.columns) column.clear();
  kept.improperCells = 0;
  for (std::size_t r = 0; r < table.categories.size(); ++r) {
    const bool whole = std::all_of(table.columns.begin(), table.columns.end(),
                                   [r](const std::vector<double>& column) { return !std::isnan(column[r]); });
    if (!whole) continue;
    kept.categories.push_back(table.categories[r]);
    for (std::size_t c = 0; c < table.columns.size(); ++c) kept.columns[c].push_back(table.columns[c][r]);
  }
  return kept;
}

}  // namespace orvik::capability
