#pragma once

#include <istream>
#include <ostream>
#include <string>
#include <vector>

#include "worksheet/worksheet.h"

namespace orvik::formats {

// Reads comma- or tab-separated text (RFC 4180 quoting) into a worksheet:
// every field becomes one cell's text, row 1 of the text is row 1 of the
// sheet and its first field column A. Quotes are removed ("" inside a quoted
// field is one quote); everything else is kept as written, blanks included.
// Lines end with LF or CR LF (a lone CR inside a quoted field is kept); a
// final line break ends the last row without making an empty one. Empty
// fields are empty cells. The bytes are decoded at the door (TextDecoder):
// UTF-8 with or without its byte-order mark, UTF-16 with one, and bytes
// that are not UTF-8 read as Latin-1, so every cell holds UTF-8.
// A text holding a field past column 16,384 or row 16,777,216 (the grid's
// limits) throws std::length_error saying which; ReadDelimitedFile turns it
// into a std::runtime_error naming the file.
// Returns the information notices the user is to see once, in order: the
// text was not all UTF-8 (kNotUtf8Notice); a quote that was never closed,
// naming its line, because its field swallowed the rest of the text.
std::vector<std::string> ReadDelimitedText(std::istream& in, char separator, worksheet::Worksheet& sheet);

inline constexpr const char* kNotUtf8Notice =
    "The file is not all UTF-8 text: what is not was read as Latin-1 characters or replaced.";

// How a delimited text is read or written: the field separator (comma, tab,
// semicolon or any other character but a quote or a line break) and whether
// the first row holds the column header names rather than data.
struct DelimitedOptions {
  char separator = ',';
  bool headerRow = false;
};

// Reads as above; with a header row, the first row's fields become the
// column header names and the second row is row 1 of the sheet.
// Throws std::invalid_argument for a separator that cannot separate fields.
std::vector<std::string> ReadDelimitedText(std::istream& in, const DelimitedOptions& options,
                                           worksheet::Worksheet& sheet);
std::vector<std::string> ReadDelimitedFile(const std::string& path, const DelimitedOptions& options,
                                           worksheet::Worksheet& sheet);

// Writes the sheet's data extent as RFC 4180 text: every row holds as many
// fields as the data has columns, rows end with CR LF, and a field holding
// the separator, a quote or a line break is quoted ("" for a quote inside).
// With headerRow, a first row of header names is written when any column
// has one. Reading the text back with the same options gives the same cells.
void WriteDelimitedText(std::ostream& out, const worksheet::Worksheet& sheet, const DelimitedOptions& options);

// False for the characters that cannot separate fields: quote, CR, LF, NUL.
bool IsUsableSeparator(char separator);

// Reads the file at `path` into `sheet`, the separator chosen by the file's
// extension: ".csv" comma, ".tsv" and ".txt" tab (any other: comma).
// Throws std::runtime_error naming the file when it cannot be read.
std::vector<std::string> ReadDelimitedFile(const std::string& path, worksheet::Worksheet& sheet);

// The separator that ReadDelimitedFile chooses for `path`.
char SeparatorForPath(const std::string& path);

}  // namespace orvik::formats
