#include "charts/chart_input.h"

#include <algorithm>
#include <cctype>

#include "charts/control_form.h"
#include "shell/analysis_input.h"
#include "worksheet/cell_number.h"

namespace orvik::charts {

std::optional<Subgroups> ReadSubgroups(const worksheet::Worksheet& sheet, const worksheet::DataSelection& selection) {
  Subgroups groups;
  const long columns = worksheet::ColumnsToWalk(selection);
  const long rows = worksheet::RowsToWalk(selection);
  if (columns <= 0 || rows <= 0) return groups;
  // Every cell must hold a number, so a block reaching past the data, or
  // past the last filled row of one of its columns, holds an empty cell.
  // Checked before anything is allocated: the block then holds no more
  // cells than the sheet stores.
  if (worksheet::ColumnsWithData(sheet, selection).length != columns ||
      worksheet::RowsWithData(sheet, selection).length != rows)
    return std::nullopt;
  const long bottom = std::max(selection.firstRow, selection.lastRow);
  for (long c = 0, col = selection.firstColumn; c < columns; ++c, col += selection.columnStep)
    if (sheet.LastFilledRow(col) < bottom) return std::nullopt;
  groups.size = columns;
  groups.values.reserve(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows));
  for (long r = 0, row = selection.firstRow; r < rows; ++r, row += selection.rowStep) {
    for (long c = 0, col = selection.firstColumn; c < columns; ++c, col += selection.columnStep) {
      const auto number = worksheet::ParseCellNumber(sheet.Text(row, col));
      if (!number) return std::nullopt;
      groups.values.push_back(*number);
    }
  }
  return groups;
}

SubgroupSelection::SubgroupSelection() : shell::DialogModel("Selection", "Subgroup Selection") {
  AddTextBox("FirstColtxt").caption = "First column";
  AddTextBox("LastColtxt").caption = "Last column";
  AddCommandButton("CmdOk", "OK");
  AddCommandButton("CmdCancel", "Cancel");
}

void SubgroupSelection::Prefill(const worksheet::DataSelection& selection) {
  MutableControl("FirstColtxt").text = worksheet::ColumnLetters(selection.firstColumn);
  MutableControl("LastColtxt").text = worksheet::ColumnLetters(selection.lastColumn);
  result_ = {selection.firstColumn, selection.lastColumn};
}

std::optional<long> ParseColumn(const std::string& text) {
  std::size_t begin = text.find_first_not_of(" \t");
  std::size_t end = text.find_last_not_of(" \t");
  if (begin == std::string::npos) return std::nullopt;
  const std::string word = text.substr(begin, end - begin + 1);
  long column = 0;
  if (std::isdigit(static_cast<unsigned char>(word[0]))) {
    for (const char c : word) {
      if (!std::isdigit(static_cast<unsigned char>(c)) || column > 100000) return std::nullopt;
      column = column * 10 + (c - '0');
    }
  } else {
    for (const char c : word) {
      if (!std::isalpha(static_cast<unsigned char>(c)) || column > 100000) return std::nullopt;
      column = column * 26 + (std::toupper(static_cast<unsigned char>(c)) - 'A' + 1);
    }
  }
  if (column < 1) return std::nullopt;
  return column;
}

bool SubgroupSelection::OnOk(shell::Host& host) {
  const std::string& first_text = Control("FirstColtxt").text;
  const std::string& last_text = Control("LastColtxt").text;
  if (first_text.find_first_not_of(" \t") == std::string::npos &&
      last_text.find_first_not_of(" \t") == std::string::npos)
    return true;
  const auto first = ParseColumn(first_text);
  const auto last = ParseColumn(last_text);
  const worksheet::Worksheet* sheet = host.ActiveWorksheet();
  if (!first || !last || sheet == nullptr || *first > sheet->MaxCols() || *last > sheet->MaxCols()) {
    host.Refuse(worksheet::messages::kSelectValidData);
    return false;
  }
  result_ = {*first, *last};
  return true;
}

void SubgroupSelection::OnCancel(shell::Host& host) { host.Log().AppendSessionLine("Cancel Subgroup selection"); }

std::unique_ptr<shell::DialogModel> MakeSubgroupSelection() { return std::make_unique<SubgroupSelection>(); }

bool PrepareChartInput(shell::Host& host, const std::string& name, bool opens_selection,
                       const std::function<bool()>& read_and_check) {
  if (!shell::ResolveDataBlock(host)) return false;
  if (!read_and_check()) return false;
  host.Log().AppendSessionLine(StartingLine(name));
  if (!opens_selection) return true;
  SubgroupSelection dialog;
  dialog.Prefill(host.CurrentSelection());
  const auto columns = shell::AskParameters(host, dialog);
  if (!columns) return false;
  worksheet::DataSelection& selection = host.CurrentSelection();
  if (selection.firstColumn == columns->first && selection.lastColumn == columns->last) return true;
  // Other columns: the block is read and checked again over them.
  selection.firstColumn = columns->first;
  selection.lastColumn = columns->last;
  selection.columnStep = columns->last >= columns->first ? 1 : -1;
  return read_and_check();
}

}  // namespace orvik::charts
