#include "shell/analysis_input.h"

#include <cstdlib>

#include "shell/command_failed.h"

namespace orvik::shell {

using worksheet::CellPolicy;

bool ResolveDataBlock(Host& host, const std::string& no_block_text) {
  if (auto refusal = worksheet::ResolveBlock(host.ActiveWorksheet(), host.CurrentSelection(), no_block_text)) {
    host.Refuse(*refusal);
    return false;
  }
  return true;
}

std::optional<worksheet::RunningFigures> CollectNumericCells(Host& host, CellPolicy policy,
                                                             const std::string& refusal_text) {
  const worksheet::Worksheet* sheet = host.ActiveWorksheet();
  if (sheet == nullptr) {
    host.Refuse(worksheet::messages::kSelectDataFromWorksheet);
    return std::nullopt;
  }
  worksheet::RunningFigures figures = worksheet::CollectNumericCells(*sheet, host.CurrentSelection(), policy);
  if (figures.improperCells > 0) {
    switch (policy) {
      case CellPolicy::Skip: break;
      case CellPolicy::CountAsZero: host.Notify(worksheet::messages::kChangeToZero); break;
      case CellPolicy::DropWithNotice: host.Notify(worksheet::messages::kEliminated); break;
      case CellPolicy::Refuse: host.Refuse(refusal_text); return std::nullopt;
    }
  }
  return figures;
}

std::optional<worksheet::RunningFigures> ReadCheckedSelection(Host& host) {
  if (!ResolveDataBlock(host)) return std::nullopt;
  auto figures = CollectNumericCells(host);
  if (!figures) return std::nullopt;
  if (auto refusal = worksheet::CommonDataChecks(*figures)) {
    host.Refuse(*refusal);
    return std::nullopt;
  }
  return figures;
}

void ShowResultOrFail(Host& host, ResultWindow window, const std::string& failure_text,
                      const std::string& cancel_line) {
  try {
    host.ShowResultWindow(std::move(window));
  } catch (const NonFiniteResult&) {
    host.Refuse(failure_text);
    if (!cancel_line.empty()) host.Log().AppendSessionLine(cancel_line);
    throw CommandFailed(cancel_line);
  }
}

namespace {

long MeasuredColumnSpan(Host& host) {
  const worksheet::Worksheet* sheet = host.ActiveWorksheet();
  if (sheet == nullptr) return 0;
  const worksheet::GridSelection& sel = sheet->Selection;
  if (sel.SelBlockCol == -1 && sel.SelBlockCol2 == -1) {
    const worksheet::DataSelection& resolved = host.CurrentSelection();
    return std::labs(resolved.lastColumn - resolved.firstColumn) + 1;
  }
  return worksheet::SelectedColumnSpan(sel);
}

}  // namespace

bool RequireColumnSpan(Host& host, long columns, const std::string& refusal_text) {
  if (MeasuredColumnSpan(host) == columns) return true;
  host.Refuse(refusal_text);
  return false;
}

bool RequireAtMostColumns(Host& host, long columns, const std::string& refusal_text) {
  const long span = MeasuredColumnSpan(host);
  if (span >= 1 && span <= columns) return true;
  host.Refuse(refusal_text);
  return false;
}

}  // namespace orvik::shell
