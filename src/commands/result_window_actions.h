#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "shell/host.h"
#include "shell/result_window.h"

namespace orvik::commands {

// What a result window offers beyond its contents, read from the
// declaration of the command that made it (its commandKey).

// Whether the window is a control chart whose limits the user may give.
bool OffersGivenLimits(const shell::ResultWindow& window);

// Opens the given-limits dialog of command `key` (one limit set or two, as
// declared), showing the limits in force; when the user presses OK the
// command runs again and draws a new result window. A key without given
// limits opens nothing.
void OpenGivenLimits(shell::Host& host, std::string_view key);
// The same for a result window: on OK its command runs again over the
// window's own data and dialog answers (not the worksheet's current
// selection); a window that does not know how it was made runs its command
// on the current selection.
void OpenGivenLimits(shell::Host& host, const shell::ResultWindow& window);

// Whether the window is a control chart that applies the run rules (the
// charts that offer given limits; the CUSUM, EWMA and MA charts code only
// points beyond their limits).
bool OffersRuleSettings(const shell::ResultWindow& window);

// Opens the RuleSettings dialog showing the program-wide choice; OK makes
// it the choice of the charts to come.
void OpenRuleSettings(shell::Host& host);
// The same from a control chart window: the dialog shows the rules the
// chart was made with, and on OK the chart is drawn again, in a new
// window, with the rules confirmed.
void OpenRuleSettings(shell::Host& host, const shell::ResultWindow& window);

// The text a chart of `window` shows when the user clicks point
// `point_number` ("Number: 3 | Value: 25.001"), on the charts its command
// declares; empty for other charts, other windows and points out of range.
std::optional<std::string> PointInformation(const shell::ResultWindow& window, const std::string& chart_name,
                                            long point_number);

}  // namespace orvik::commands
