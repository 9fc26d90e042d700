#pragma once

#include <optional>
#include <string>

#include "shell/host.h"
#include "worksheet/data_selection.h"

namespace orvik::shell {

// The input steps every analysis begins with. Each shows its refusal as a
// "Confirmation Data" message box and returns false (or nullopt); the caller
// then stops at once, writing nothing to the log and opening no window.

// Resolves the active worksheet's block into host.CurrentSelection().
// `no_block_text` is the refusal when no block is selected.
bool ResolveDataBlock(Host& host, const std::string& no_block_text = worksheet::messages::kSelectValidData);

// Reads the numbers of host.CurrentSelection() under `policy`. An improper
// (empty or non-numeric) cell in the block makes CountAsZero and
// DropWithNotice show their notice first, and makes Refuse show
// `refusal_text` ("Include improper data or null cells", or the chart's own
// "Improper data for ... control chart") and stop.
std::optional<worksheet::RunningFigures> CollectNumericCells(
    Host& host, worksheet::CellPolicy policy = worksheet::CellPolicy::Skip,
    const std::string& refusal_text = worksheet::messages::kIncludeImproper);

// ResolveDataBlock, CollectNumericCells with skipping, and the three common
// checks in their order: the input of the descriptive graphs.
std::optional<worksheet::RunningFigures> ReadCheckedSelection(Host& host);

// The block-shape checks: the user's block must span exactly `columns`
// columns, or at most `columns`; otherwise `refusal_text` is shown. The span
// is measured on the user's drag (SelBlockCol to SelBlockCol2). Whole rows
// and the whole sheet carry no columns of their own (-1), so there the
// resolved block's columns (1 to DataColCnt) are measured instead: selecting
// the whole sheet of a two-column table is a two-column selection. Call
// them after ResolveDataBlock.
bool RequireColumnSpan(Host& host, long columns, const std::string& refusal_text);
bool RequireAtMostColumns(Host& host, long columns,
                          const std::string& refusal_text = worksheet::messages::kExceedColumns);

// Shows the result window of an analysis. A window holding a number that is
// not finite (a value overflowed where the analysis could not compute
// around it) is not shown: the analysis's run-time failure path runs
// instead, `failure_text` as a "Confirmation Data" box, `cancel_line` in
// the session log (none when empty), and the command ends by throwing
// CommandFailed.
void ShowResultOrFail(Host& host, ResultWindow window, const std::string& failure_text,
                      const std::string& cancel_line);

}  // namespace orvik::shell
