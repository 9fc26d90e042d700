#pragma once

#include <string>
#include <vector>

#include "cli/cell_range.h"
#include "cli/cli_host.h"

namespace orvik::charts::testing {

// A headless host whose worksheet holds `rows` (row 1 first) with the block
// `range` selected, and the given dialog settings and cancels.
inline cli::CliHost SheetHost(const std::vector<std::vector<std::string>>& rows, const std::string& range,
                              std::vector<cli::DialogSetting> settings = {}, std::set<std::string> cancels = {}) {
  worksheet::Worksheet sheet("WorkSheet 1");
  for (std::size_t r = 0; r < rows.size(); ++r)
    for (std::size_t c = 0; c < rows[r].size(); ++c)
      sheet.SetText(static_cast<long>(r + 1), static_cast<long>(c + 1), rows[r][c]);
  sheet.Selection = *cli::ParseCellRange(range);
  return cli::CliHost(std::move(sheet), std::move(settings), std::move(cancels));
}

// The log after the welcome line, one entry per line.
inline std::vector<std::string> LogLines(cli::CliHost& host) {
  std::vector<std::string> lines;
  const std::string& text = host.Log().Text();
  std::size_t at = text.find("\r\n");
  while (at != std::string::npos) {
    const std::size_t next = text.find("\r\n", at + 2);
    lines.push_back(text.substr(at + 2, next == std::string::npos ? std::string::npos : next - at - 2));
    at = next;
  }
  return lines;
}

inline std::vector<std::string> MessageTexts(const cli::CliHost& host) {
  std::vector<std::string> texts;
  for (const auto& box : host.Messages()) texts.push_back(box.text);
  return texts;
}

}  // namespace orvik::charts::testing
