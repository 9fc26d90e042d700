#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvik::cli {

// The words of one line of a history file as a POSIX shell splits them:
// blanks separate words, 'single quotes' keep everything, "double quotes"
// keep everything but \" and \\, a backslash outside quotes keeps the next
// character. Throws std::invalid_argument for an unclosed quote.
std::vector<std::string> ShellWords(std::string_view line);

// `orvik-cli replay FILE [--format json|text]`: runs every
// `orvik-cli run ...` line of a history file (as the History pane writes
// it) in turn, each in a freshly started program, and prints each result
// as `run` would, one after the other. Empty lines and lines starting with
// # are skipped. The format given here applies to lines without their own.
int ReplayCommand(const std::vector<std::string>& args);

}  // namespace orvik::cli
