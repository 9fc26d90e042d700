#pragma once

#include <istream>
#include <string>

#include "worksheet/worksheet.h"

namespace orvik::formats {

// Reads comma- or tab-separated text (RFC 4180 quoting) into a worksheet:
// every field becomes one cell's text, row 1 of the text is row 1 of the
// sheet and its first field column A. Quotes are removed ("" inside a quoted
// field is one quote); everything else is kept as written, blanks included.
// Lines end with LF or CR LF (a lone CR inside a quoted field is kept); a
// final line break ends the last row without making an empty one. A UTF-8
// byte-order mark at the start is dropped. Empty fields are empty cells.
void ReadDelimitedText(std::istream& in, char separator, worksheet::Worksheet& sheet);

// Reads the file at `path` into `sheet`, the separator chosen by the file's
// extension: ".csv" comma, ".tsv" and ".txt" tab (any other: comma).
// Throws std::runtime_error naming the file when it cannot be read.
void ReadDelimitedFile(const std::string& path, worksheet::Worksheet& sheet);

// The separator that ReadDelimitedFile chooses for `path`.
char SeparatorForPath(const std::string& path);

}  // namespace orvik::formats
