#include "worksheet/delimited_cells.h"

namespace orvik::worksheet {

void AppendDelimitedField(std::string& out, std::string_view text, char separator) {
  const char special[] = {separator, '"', '\r', '\n', '\0'};
  const bool quoted = text.find_first_of(special) != std::string_view::npos || text.starts_with("\xEF\xBB\xBF");
  if (!quoted) {
    out.append(text);
    return;
  }
  out.push_back('"');
  for (const char c : text) {
    if (c == '"') out.push_back('"');
    out.push_back(c);
  }
  out.push_back('"');
}

std::string FormatDelimited(const std::vector<std::vector<std::string>>& rows, char separator) {
  std::string out;
  for (const auto& row : rows) {
    for (std::size_t c = 0; c < row.size(); ++c) {
      if (c > 0) out.push_back(separator);
      AppendDelimitedField(out, row[c], separator);
    }
    out.append("\r\n");
  }
  return out;
}

DelimitedParser::DelimitedParser(char separator, FieldSink on_field)
    : separator_(separator), on_field_(std::move(on_field)) {}

void DelimitedParser::Feed(std::string_view data) {
  const std::size_t size = data.size();
  for (std::size_t i = 0; i < size; ++i) {
    const char c = data[i];
    if (in_quotes_) {
      if (!quote_pending_) {
        if (c == '"') quote_pending_ = true;
        else field_.push_back(c);
        if (c == '\n') ++line_;
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
      ++line_;
      if (c == '\n') continue;
    }
    if (c == separator_) {
      EndField();
    } else if (c == '\n') {
      EndRow();
      ++line_;
    } else if (c == '\r') {
      cr_pending_ = true;
    } else if (c == '"' && field_.empty() && !field_was_quoted_) {
      in_quotes_ = true;
      field_was_quoted_ = true;
      quote_line_ = line_;
    } else {
      // Copy the rest of an unquoted field in one go.
      std::size_t j = i + 1;
      while (j < size && data[j] != separator_ && data[j] != '\n' && data[j] != '\r' && data[j] != '"') ++j;
      field_.append(data.substr(i, j - i));
      i = j - 1;
    }
  }
}

void DelimitedParser::Finish() {
  // A quote still open at the end took the rest of the text into its field.
  if (in_quotes_ && !quote_pending_) unclosed_quote_line_ = quote_line_;
  if (cr_pending_ || !field_.empty() || column_ > 0 || field_was_quoted_) EndRow();
  cr_pending_ = false;
}

void DelimitedParser::EndField() {
  on_field_(row_, column_, field_);
  field_.clear();
  field_was_quoted_ = false;
  ++column_;
}

void DelimitedParser::EndRow() {
  EndField();
  column_ = 0;
  ++row_;
}

std::vector<std::vector<std::string>> ParseDelimited(std::string_view text, char separator) {
  std::vector<std::vector<std::string>> rows;
  DelimitedParser parser(separator, [&rows](long row, long, std::string_view field) {
    if (static_cast<long>(rows.size()) <= row) rows.resize(row + 1);
    rows[row].emplace_back(field);
  });
  parser.Feed(text);
  parser.Finish();
  return rows;
}

}  // namespace orvik::worksheet
