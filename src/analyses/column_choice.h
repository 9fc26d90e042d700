#pragma once

#include <optional>
#include <string>
#include <vector>

#include "analyses/analysis_dialog.h"
#include "worksheet/data_selection.h"
#include "worksheet/worksheet.h"

namespace orvik::analyses {

// The columns of the user's block in walking order, each with the name the
// column-choosing dialogs accept for it: its header caption (the user's
// header name, or its letters where it has none).
struct BlockColumn {
  long column = 0;
  std::string name;
};
std::vector<BlockColumn> ColumnsOfBlock(const worksheet::Worksheet& sheet, const worksheet::DataSelection& selection);

// The numbers of one sheet column over the block's rows, in walking order,
// with empty and non-numeric cells as NaN, so that columns read this way
// stay aligned row by row.
std::vector<double> ColumnCells(const worksheet::Worksheet& sheet, const worksheet::DataSelection& selection,
                                long column);
// The texts of one sheet column over the block's rows (trimmed).
std::vector<std::string> ColumnTexts(const worksheet::Worksheet& sheet, const worksheet::DataSelection& selection,
                                     long column);

// Sorts the level names of a factor: numerically when every name is a
// number, otherwise as texts.
void SortLevelNames(std::vector<std::string>& names);

// The refusal of a factor with a single level.
inline constexpr const char* kOneLevel = "The factor has only one level";

// A dialog whose text boxes each name one column of the block, by header
// name or letters (case does not matter). OK refuses a name that is not a
// column of the block ("Please, select valid data") and one column chosen
// twice ("Selected columns are same"); cancel writes "Cancel selection of
// variables".
class ColumnChoiceDialog : public AnalysisDialog {
 public:
  // The sheet columns the boxes named at the last accepted OK, in box order.
  const std::vector<long>& ChosenColumns() const { return chosen_; }

 protected:
  ColumnChoiceDialog(std::string name, std::string caption, std::vector<BlockColumn> columns);
  // A box whose default names the block's column `default_index` (0-based;
  // empty when the block has no such column or the dialog is made without
  // a block).
  void AddColumnBox(const std::string& box, std::size_t default_index, const std::string& caption);
  // Resolves the enabled column boxes; false (after the refusal) when one
  // names no column of the block or two name the same.
  bool ResolveColumns(shell::Host& host);

 private:
  std::optional<long> Find(const std::string& text) const;

  std::vector<BlockColumn> columns_;
  std::vector<std::string> boxes_;
  std::vector<long> chosen_;
};

}  // namespace orvik::analyses
