#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orvik::worksheet {

// Decides whether a cell text is numeric and returns its number.
//
// Numeric is: optional blanks (spaces or tabs), an optional sign, digits with
// an optional decimal point (at least one digit, before or after the point),
// an optional exponent (e or E, optional sign, digits), optional blanks.
// Examples: "12", " -3.5 ", "+.5", "7.", "7.5e1", "1E-3".
//
// Not numeric, and so skipped by the analyses like any text:
// - thousands separators and decimal commas ("1,234", "12,5"): a comma is
//   ambiguous between the two, and reading "12,5" as 125 or 12.5 by guess
//   would put a wrong number into a control chart, which is worse than
//   leaving the cell out;
// - "inf", "nan", hexadecimal numbers, and numbers whose magnitude
//   overflows a double (a value of infinity would poison every statistic);
// - text before or after the number ("12 mm", "x1").
// A number too small for a double reads as 0 or a subnormal value.
std::optional<double> ParseCellNumber(std::string_view text);

// The text without the blanks (spaces or tabs) around it, as cells are read
// for names, labels and categories.
std::string TrimBlanks(std::string_view text);

}  // namespace orvik::worksheet
