#include "formats/delimited_text.h"

#include "formats/text_decoder.h"
#include "worksheet/delimited_cells.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <stdexcept>
#include <vector>

namespace orvik::formats {

namespace {

// Puts every parsed field into the sheet; with a header row, the fields of
// the first row name the columns instead.
worksheet::DelimitedParser SheetParser(const DelimitedOptions& options, worksheet::Worksheet& sheet) {
  const long first_data_row = options.headerRow ? 1 : 0;
  return worksheet::DelimitedParser(options.separator, [&sheet, first_data_row](long row, long col, std::string_view text) {
    // Empty fields cost nothing, so only a text past the grid's limits ends
    // the reading (a line of millions of fields would otherwise make as
    // many columns).
    if (!text.empty() && col >= worksheet::kGridMaxCols)
      throw std::length_error("the sheet has more than 16,384 columns");
    if (!text.empty() && row - first_data_row >= worksheet::kGridMaxRows)
      throw std::length_error("the sheet has more than 16,777,216 rows");
    if (row < first_data_row) sheet.SetColumnHeader(col + 1, std::string(text));
    else if (!text.empty()) sheet.SetText(row - first_data_row + 1, col + 1, text);
  });
}

}  // namespace

std::vector<std::string> ReadDelimitedText(std::istream& in, char separator, worksheet::Worksheet& sheet) {
  return ReadDelimitedText(in, DelimitedOptions{separator, false}, sheet);
}

std::vector<std::string> ReadDelimitedText(std::istream& in, const DelimitedOptions& options,
                                           worksheet::Worksheet& sheet) {
  if (!IsUsableSeparator(options.separator)) throw std::invalid_argument("a quote or line break cannot separate fields");
  worksheet::DelimitedParser reader = SheetParser(options, sheet);
  TextDecoder decoder;
  std::vector<char> block(1 << 20);
  std::string text;
  while (in) {
    in.read(block.data(), static_cast<std::streamsize>(block.size()));
    text.clear();
    decoder.Decode(std::string_view(block.data(), static_cast<std::size_t>(in.gcount())), text);
    reader.Feed(text);
  }
  text.clear();
  decoder.Finish(text);
  reader.Feed(text);
  reader.Finish();
  sheet.ShrinkToFit();
  std::vector<std::string> notices;
  if (decoder.Repaired()) notices.emplace_back(kNotUtf8Notice);
  if (const long line = reader.UnclosedQuoteLine())
    notices.push_back("The quote that opens on line " + std::to_string(line) +
                      " is never closed: everything after it was read into one cell.");
  return notices;
}

char SeparatorForPath(const std::string& path) {
  std::string lower = path;
  std::transform(lower.begin(), lower.end(), lower.begin(), [](unsigned char c) { return std::tolower(c); });
  const auto ends_with = [&lower](const std::string& suffix) {
    return lower.size() >= suffix.size() && lower.compare(lower.size() - suffix.size(), suffix.size(), suffix) == 0;
  };
  return ends_with(".tsv") || ends_with(".txt") ? '\t' : ',';
}

std::vector<std::string> ReadDelimitedFile(const std::string& path, worksheet::Worksheet& sheet) {
  return ReadDelimitedFile(path, DelimitedOptions{SeparatorForPath(path), false}, sheet);
}

std::vector<std::string> ReadDelimitedFile(const std::string& path, const DelimitedOptions& options,
                                           worksheet::Worksheet& sheet) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw std::runtime_error("cannot read " + path);
  std::vector<std::string> notices;
  try {
    notices = ReadDelimitedText(in, options, sheet);
  } catch (const std::length_error& limit) {
    throw std::runtime_error("\"" + path + "\" cannot be read: " + limit.what() + ".");
  }
  if (in.bad()) throw std::runtime_error("error while reading " + path);
  return notices;
}

bool IsUsableSeparator(char separator) { return separator != '"' && separator != '\r' && separator != '\n' && separator != 0; }


void WriteDelimitedText(std::ostream& out, const worksheet::Worksheet& sheet, const DelimitedOptions& options) {
  if (!IsUsableSeparator(options.separator)) throw std::invalid_argument("a quote or line break cannot separate fields");
  long cols = sheet.DataColCnt();
  bool any_header = false;
  if (options.headerRow) {
    for (long col = 1; col <= sheet.MaxCols(); ++col)
      if (!sheet.ColumnHeaderName(col).empty()) {
        any_header = true;
        cols = std::max(cols, col);
      }
  }
  std::string buffer;
  const auto flush = [&] {
    out.write(buffer.data(), static_cast<std::streamsize>(buffer.size()));
    buffer.clear();
  };
  // Every row has the same number of fields, as RFC 4180 asks; rows end
  // with CR LF. A one-column row whose cell is empty is an empty line.
  if (any_header) {
    for (long col = 1; col <= cols; ++col) {
      if (col > 1) buffer.push_back(options.separator);
      worksheet::AppendDelimitedField(buffer, sheet.ColumnHeaderName(col), options.separator);
    }
    buffer.append("\r\n");
  }
  for (long row = 1; row <= sheet.DataRowCnt(); ++row) {
    for (long col = 1; col <= cols; ++col) {
      if (col > 1) buffer.push_back(options.separator);
      worksheet::AppendDelimitedField(buffer, sheet.Text(row, col), options.separator);
    }
    buffer.append("\r\n");
    if (buffer.size() > (1 << 20)) flush();
  }
  flush();
}

}  // namespace orvik::formats
