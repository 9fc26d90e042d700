#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "shell/chart_presentation.h"

namespace orvik::formats {

// A chart's presentation as text of "key=value" lines, as project files
// store it: only the settings that differ from the defaults are written,
// and a reader skips keys it does not know, so newer settings can be added
// without a new layout. The chart's name is stored beside the text.
std::string PresentationText(const shell::ChartPresentation& presentation);
// The presentation of `text`; nothing when a line is malformed or a value
// is out of its range (a damaged file).
std::optional<shell::ChartPresentation> ParsePresentation(std::string_view text);

}  // namespace orvik::formats
