#pragma once

// Test support: a headless host over a worksheet written from rows of cell
// texts, the way orvik-cli runs a command on a --sheet file.
#include <set>
#include <string>
#include <vector>

#include "cli/cell_range.h"
#include "cli/cli_host.h"
#include "worksheet/worksheet.h"

namespace orvik::testing_support {

using SheetRows = std::vector<std::vector<std::string>>;

inline worksheet::Worksheet MakeSheet(const SheetRows& rows) {
  worksheet::Worksheet sheet("WorkSheet 1");
  for (std::size_t r = 0; r < rows.size(); ++r)
    for (std::size_t c = 0; c < rows[r].size(); ++c)
      sheet.SetText(static_cast<long>(r) + 1, static_cast<long>(c) + 1, rows[r][c]);
  return sheet;
}

// One column of cells, row 1 first.
inline SheetRows Column(const std::vector<std::string>& texts) {
  SheetRows rows;
  for (const auto& text : texts) rows.push_back({text});
  return rows;
}

// A host whose worksheet holds `rows` with `selection` selected; dialogs are
// filled from `settings` and confirmed, except those named in `cancels`.
inline cli::CliHost HostOver(const SheetRows& rows, worksheet::GridSelection selection,
                             std::vector<cli::DialogSetting> settings = {}, std::set<std::string> cancels = {}) {
  worksheet::Worksheet sheet = MakeSheet(rows);
  sheet.Selection = selection;
  return cli::CliHost(std::move(sheet), std::move(settings), std::move(cancels));
}

// The same with the block written as orvik-cli's --select takes it ("A1:B3").
inline cli::CliHost SheetHost(const SheetRows& rows, const std::string& range,
                              std::vector<cli::DialogSetting> settings = {}, std::set<std::string> cancels = {}) {
  return HostOver(rows, *cli::ParseCellRange(range), std::move(settings), std::move(cancels));
}

// The block from column `col`, row `row` (where the drag began) to `col2`, `row2`.
inline worksheet::GridSelection Block(long col, long row, long col2, long row2) {
  return {true, col, col2, row, row2};
}

inline std::vector<std::string> MessageTexts(const cli::CliHost& host) {
  std::vector<std::string> texts;
  for (const auto& box : host.Messages()) texts.push_back(box.text);
  return texts;
}

// The session log without the welcome line, one entry per line.
inline std::vector<std::string> LogLines(cli::CliHost& host) {
  std::vector<std::string> lines;
  const std::string& text = host.Log().Text();
  for (std::size_t pos = text.find("\r\n"); pos != std::string::npos;) {
    const std::size_t next = text.find("\r\n", pos + 2);
    lines.push_back(text.substr(pos + 2, next == std::string::npos ? std::string::npos : next - pos - 2));
    pos = next;
  }
  return lines;
}

}  // namespace orvik::testing_support
