#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace orvik::worksheet {

// Comma- or tab-separated text as RFC 4180 writes it, the form in which
// spreadsheets exchange cells through files and the clipboard: fields that
// hold the separator, a quote or a line break are quoted, with "" for a
// quote inside; rows end with CR LF.

// Appends one field to `out`, quoted where it needs to be. A text starting
// with a UTF-8 byte-order mark is quoted too, so that a reader dropping the
// mark at the start of a file keeps it.
void AppendDelimitedField(std::string& out, std::string_view text, char separator);

// Rows of cell texts as delimited text; every row ends with CR LF.
std::string FormatDelimited(const std::vector<std::vector<std::string>>& rows, char separator);

// Reads delimited text that may arrive in pieces (a field may span two), and
// reports every field, empty ones included, with its row and column counted
// from 0. Quotes are removed ("" inside a quoted field is one quote);
// everything else is kept as written, blanks included. Rows end with LF,
// CR LF or a lone CR (line breaks inside quotes are kept); a final line break
// ends the last row without making an empty one.
class DelimitedParser {
 public:
  using FieldSink = std::function<void(long row, long column, std::string_view text)>;

  DelimitedParser(char separator, FieldSink on_field);

  void Feed(std::string_view data);
  // Ends the text: a last row without a line break is reported now.
  void Finish();
  // After Finish: the line (counted from 1, each LF, CR LF or lone CR
  // ending one) on which a quote began that was never closed, so that its
  // field took the rest of the text; 0 when every quote was closed.
  long UnclosedQuoteLine() const { return unclosed_quote_line_; }

 private:
  void EndField();
  void EndRow();

  char separator_;
  FieldSink on_field_;
  std::string field_;
  long row_ = 0;
  long column_ = 0;
  bool in_quotes_ = false;
  bool quote_pending_ = false;
  bool field_was_quoted_ = false;
  bool cr_pending_ = false;
  long line_ = 1;
  long quote_line_ = 0;
  long unclosed_quote_line_ = 0;
};

// The rows of a delimited text, each with all its fields (rows may differ
// in length, as pasted text often does).
std::vector<std::vector<std::string>> ParseDelimited(std::string_view text, char separator);

}  // namespace orvik::worksheet
