#include "analyses/column_choice.h"

#include <algorithm>
#include <cctype>
#include <limits>

#include "shell/host.h"
#include "worksheet/cell_number.h"

namespace orvik::analyses {

namespace {

constexpr const char* kCancelSelection = "Cancel selection of variables";

std::string Upper(std::string text) {
  for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return text;
}

}  // namespace

// The block's columns and rows as far as the data reaches, in the block's
// order: cells past the data are empty, and a block may reach the grid's
// far corner.
std::vector<BlockColumn> ColumnsOfBlock(const worksheet::Worksheet& sheet, const worksheet::DataSelection& selection) {
  std::vector<BlockColumn> columns;
  const worksheet::WalkSpan span = worksheet::ColumnsWithData(sheet, selection);
  for (long i = 0; i < span.length; ++i) columns.push_back({span.At(i), sheet.ColumnHeader(span.At(i))});
  return columns;
}

std::vector<double> ColumnCells(const worksheet::Worksheet& sheet, const worksheet::DataSelection& selection,
                                long column) {
  std::vector<double> cells;
  const worksheet::WalkSpan rows = worksheet::RowsWithData(sheet, selection);
  for (long r = 0; r < rows.length; ++r) {
    const auto number = worksheet::ParseCellNumber(sheet.Text(rows.At(r), column));
    cells.push_back(number ? *number : std::numeric_limits<double>::quiet_NaN());
  }
  return cells;
}

std::vector<std::string> ColumnTexts(const worksheet::Worksheet& sheet, const worksheet::DataSelection& selection,
                                     long column) {
  std::vector<std::string> texts;
  const worksheet::WalkSpan rows = worksheet::RowsWithData(sheet, selection);
  for (long r = 0; r < rows.length; ++r) texts.push_back(worksheet::TrimBlanks(sheet.Text(rows.At(r), column)));
  return texts;
}

void SortLevelNames(std::vector<std::string>& names) {
  const bool numeric = std::all_of(names.begin(), names.end(),
                                   [](const std::string& n) { return worksheet::ParseCellNumber(n).has_value(); });
  std::stable_sort(names.begin(), names.end(), [numeric](const std::string& a, const std::string& b) {
    if (numeric) return *worksheet::ParseCellNumber(a) < *worksheet::ParseCellNumber(b);
    return a < b;
  });
}

ColumnChoiceDialog::ColumnChoiceDialog(std::string name, std::string caption, std::vector<BlockColumn> columns)
    : AnalysisDialog(std::move(name), std::move(caption), kCancelSelection), columns_(std::move(columns)) {}

void ColumnChoiceDialog::AddColumnBox(const std::string& box, std::size_t default_index, const std::string& caption) {
  // Without a block (the dialog as listed, or made fresh to compare a
  // run's settings with) a box names no column, so a recorded run keeps
  // every column the user confirmed.
  std::string text;
  if (default_index < columns_.size()) text = columns_[default_index].name;
  AddTextBox(box, text).caption = caption;
  boxes_.push_back(box);
}

std::optional<long> ColumnChoiceDialog::Find(const std::string& text) const {
  const std::string wanted = worksheet::TrimBlanks(text);
  if (wanted.empty()) return std::nullopt;
  for (const auto& c : columns_)
    if (c.name == wanted) return c.column;
  for (const auto& c : columns_)
    if (Upper(c.name) == Upper(wanted) || worksheet::ColumnLetters(c.column) == Upper(wanted)) return c.column;
  return std::nullopt;
}

bool ColumnChoiceDialog::ResolveColumns(shell::Host& host) {
  std::vector<long> chosen;
  for (const auto& box : boxes_) {
    if (!Control(box).enabled) continue;
    const auto column = Find(Control(box).text);
    if (!column) {
      host.Refuse(worksheet::messages::kSelectValidData);
      return false;
    }
    if (std::find(chosen.begin(), chosen.end(), *column) != chosen.end()) {
      host.Refuse(worksheet::messages::kSameColumns);
      return false;
    }
    chosen.push_back(*column);
  }
  chosen_ = std::move(chosen);
  return true;
}

}  // namespace orvik::analyses
