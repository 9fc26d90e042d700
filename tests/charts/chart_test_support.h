#pragma once

#include <string>
#include <vector>

#include "cli/cell_range.h"
#include "support/sheet_host.h"

namespace orvik::charts::testing {

using testing_support::LogLines;
using testing_support::MessageTexts;

// A headless host whose worksheet holds `rows` (row 1 first) with the block
// `range` selected, and the given dialog settings and cancels.
inline cli::CliHost SheetHost(const testing_support::SheetRows& rows, const std::string& range,
                              std::vector<cli::DialogSetting> settings = {}, std::set<std::string> cancels = {}) {
  worksheet::Worksheet sheet = testing_support::MakeSheet(rows);
  sheet.Selection = *cli::ParseCellRange(range);
  return cli::CliHost(std::move(sheet), std::move(settings), std::move(cancels));
}

}  // namespace orvik::charts::testing
