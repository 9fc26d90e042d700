#include "shell/analysis_input.h"

namespace orvik::shell {

using worksheet::CellPolicy;

bool ResolveDataBlock(Host& host) {
  if (auto refusal = worksheet::ResolveBlock(host.ActiveWorksheet(), host.CurrentSelection())) {
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

bool RequireColumnSpan(Host& host, long columns, const std::string& refusal_text) {
  const worksheet::Worksheet* sheet = host.ActiveWorksheet();
  if (sheet != nullptr && worksheet::SelectedColumnSpan(sheet->Selection) == columns) return true;
  host.Refuse(refusal_text);
  return false;
}

bool RequireAtMostColumns(Host& host, long columns, const std::string& refusal_text) {
  const worksheet::Worksheet* sheet = host.ActiveWorksheet();
  if (sheet != nullptr && worksheet::SelectedColumnSpan(sheet->Selection) <= columns) return true;
  host.Refuse(refusal_text);
  return false;
}

}  // namespace orvik::shell
