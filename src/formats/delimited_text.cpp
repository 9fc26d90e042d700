#include "formats/delimited_text.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <stdexcept>
#include <vector>

namespace orvik::formats {

namespace {

// A streaming RFC 4180 reader: the text arrives in blocks, and a field may
// span two blocks, so the state survives between them.
class DelimitedReader {
 public:
  DelimitedReader(const DelimitedOptions& options, worksheet::Worksheet& sheet)
      : separator_(options.separator), sheet_(sheet), row_(options.headerRow ? 0 : 1) {}

  void Feed(const char* data, std::size_t size) {
    for (std::size_t i = 0; i < size; ++i) {
      const char c = data[i];
      if (in_quotes_) {
        if (!quote_pending_) {
          if (c == '"') quote_pending_ = true;
          else field_.push_back(c);
          continue;
        }
        quote_pending_ = false;
        if (c == '"') {  // "" inside quotes is one quote
          field_.push_back('"');
          continue;
        }
        in_quotes_ = false;  // that was the closing quote; c is read below
      }
      if (cr_pending_) {
        // CR LF ends a row; a lone CR ends one as well.
        cr_pending_ = false;
        EndRow();
        if (c == '\n') continue;
      }
      if (c == separator_) {
        EndField();
      } else if (c == '\n') {
        EndRow();
      } else if (c == '\r') {
        cr_pending_ = true;
      } else if (c == '"' && field_.empty() && !field_was_quoted_) {
        in_quotes_ = true;
        field_was_quoted_ = true;
      } else {
        // Copy the rest of an unquoted field in one go.
        std::size_t j = i + 1;
        while (j < size && data[j] != separator_ && data[j] != '\n' && data[j] != '\r' && data[j] != '"') ++j;
        field_.append(data + i, j - i);
        i = j - 1;
      }
    }
  }

  void Finish() {
    if (cr_pending_ || !field_.empty() || column_ > 1 || field_was_quoted_) EndRow();
  }

 private:
  void EndField() {
    // Row 0 is the header row, when the text has one: its fields name the columns.
    if (row_ == 0) sheet_.SetColumnHeader(column_, field_);
    else if (!field_.empty()) sheet_.SetText(row_, column_, field_);
    field_.clear();
    field_was_quoted_ = false;
    ++column_;
  }

  void EndRow() {
    EndField();
    column_ = 1;
    ++row_;
  }

  char separator_;
  worksheet::Worksheet& sheet_;
  std::string field_;
  long row_;
  long column_ = 1;
  bool in_quotes_ = false;
  bool quote_pending_ = false;
  bool field_was_quoted_ = false;
  bool cr_pending_ = false;
};

}  // namespace

void ReadDelimitedText(std::istream& in, char separator, worksheet::Worksheet& sheet) {
  ReadDelimitedText(in, DelimitedOptions{separator, false}, sheet);
}

void ReadDelimitedText(std::istream& in, const DelimitedOptions& options, worksheet::Worksheet& sheet) {
  if (!IsUsableSeparator(options.separator)) throw std::invalid_argument("a quote or line break cannot separate fields");
  DelimitedReader reader(options, sheet);
  std::vector<char> block(1 << 20);
  bool first = true;
  while (in) {
    in.read(block.data(), static_cast<std::streamsize>(block.size()));
    std::size_t got = static_cast<std::size_t>(in.gcount());
    const char* data = block.data();
    if (first && got >= 3 && static_cast<unsigned char>(data[0]) == 0xEF &&
        static_cast<unsigned char>(data[1]) == 0xBB && static_cast<unsigned char>(data[2]) == 0xBF) {
      data += 3;
      got -= 3;
    }
    first = false;
    reader.Feed(data, got);
  }
  reader.Finish();
  sheet.ShrinkToFit();
}

char SeparatorForPath(const std::string& path) {
  std::string lower = path;
  std::transform(lower.begin(), lower.end(), lower.begin(), [](unsigned char c) { return std::tolower(c); });
  const auto ends_with = [&lower](const std::string& suffix) {
    return lower.size() >= suffix.size() && lower.compare(lower.size() - suffix.size(), suffix.size(), suffix) == 0;
  };
  return ends_with(".tsv") || ends_with(".txt") ? '\t' : ',';
}

void ReadDelimitedFile(const std::string& path, worksheet::Worksheet& sheet) {
  ReadDelimitedFile(path, DelimitedOptions{SeparatorForPath(path), false}, sheet);
}

void ReadDelimitedFile(const std::string& path, const DelimitedOptions& options, worksheet::Worksheet& sheet) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw std::runtime_error("cannot read " + path);
  ReadDelimitedText(in, options, sheet);
  if (in.bad()) throw std::runtime_error("error while reading " + path);
}

bool IsUsableSeparator(char separator) { return separator != '"' && separator != '\r' && separator != '\n' && separator != 0; }

namespace {

void WriteField(std::string& out, std::string_view text, char separator) {
  // A text starting with a byte-order mark is quoted too, or a reader would
  // drop the mark at the start of the file.
  const bool quoted = text.find_first_of(std::string{separator, '"', '\r', '\n'}) != std::string_view::npos ||
                      text.starts_with("\xEF\xBB\xBF");
  if (!quoted) {
    out.append(text);
    return;
  }
  out.push_back('"');
  for (char c : text) {
    if (c == '"') out.push_back('"');
    out.push_back(c);
  }
  out.push_back('"');
}

}  // namespace

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
      WriteField(buffer, sheet.ColumnHeaderName(col), options.separator);
    }
    buffer.append("\r\n");
  }
  for (long row = 1; row <= sheet.DataRowCnt(); ++row) {
    for (long col = 1; col <= cols; ++col) {
      if (col > 1) buffer.push_back(options.separator);
      WriteField(buffer, sheet.Text(row, col), options.separator);
    }
    buffer.append("\r\n");
    if (buffer.size() > (1 << 20)) flush();
  }
  flush();
}

}  // namespace orvik::formats
