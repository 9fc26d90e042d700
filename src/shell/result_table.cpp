#include "shell/result_table.h"

namespace orvik::shell {

void ResultTable::AddRow(std::vector<std::string> cells, RowStyle style) {
  rows.push_back(std::move(cells));
  const bool plain = !style.background && !style.foreground && !style.bold;
  if (!plain) {
    rowStyles.resize(rows.size());
    rowStyles.back() = style;
  }
}

const RowStyle& ResultTable::StyleOfRow(std::size_t row) const {
  static const RowStyle kPlain;
  return row < rowStyles.size() ? rowStyles[row] : kPlain;
}

}  // namespace orvik::shell
