#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace orvik::cli {

// A small streaming JSON writer: objects, arrays, strings and numbers, with
// commas placed by itself. Doubles carry their full value (shortest text
// that reads back exactly); NaN and infinities become null.
//
// Without a sink the text collects in Text(); with one it goes out in
// chunks as it is written, so a result of millions of numbers is never held
// as one string.
class JsonWriter {
 public:
  JsonWriter() = default;
  explicit JsonWriter(std::ostream& sink) : sink_(&sink) {}
  JsonWriter(const JsonWriter&) = delete;
  JsonWriter& operator=(const JsonWriter&) = delete;
  ~JsonWriter() { Flush(); }

  JsonWriter& BeginObject();
  JsonWriter& EndObject();
  JsonWriter& BeginArray();
  JsonWriter& EndArray();
  JsonWriter& Key(std::string_view key);
  JsonWriter& String(std::string_view value);
  JsonWriter& Number(double value);
  JsonWriter& Integer(long long value);
  JsonWriter& Null();

  JsonWriter& Field(std::string_view key, std::string_view value) { return Key(key).String(value); }
  JsonWriter& StringArray(const std::vector<std::string>& values);
  template <class Numbers>
  JsonWriter& NumberArray(const Numbers& values) {
    BeginArray();
    for (const double value : values) Number(value);
    return EndArray();
  }
  // Raw text placed as it is, for example a line break after the document.
  JsonWriter& Raw(std::string_view text);
  // The text written so far and not yet sent, for writers of long runs of
  // values (grids) that place their own separators; they call FlushIfFull
  // between rows.
  std::string& Buffer() { return out_; }
  void FlushIfFull();

  const std::string& Text() const { return out_; }
  // Sends what is written so far to the sink.
  void Flush();

 private:
  void BeforeValue();
  void AppendEscaped(std::string_view value);

  std::ostream* sink_ = nullptr;
  std::string out_;
  // One entry per open container: whether it holds a value already.
  std::vector<bool> has_value_;
  bool after_key_ = false;
};

// `value` with JSON escapes, without the surrounding quotes.
std::string JsonEscape(std::string_view value);

// The shortest text that reads back to exactly `value`, as std::to_chars
// writes it (quicker for numbers of a few decimal places).
std::string ExactNumberText(double value);
void AppendShortestNumber(double value, std::string& out);

}  // namespace orvik::cli
