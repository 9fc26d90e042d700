#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvik::cli {

// A small streaming JSON writer: objects, arrays, strings and numbers, with
// commas placed by itself. Doubles carry their full value (shortest text
// that reads back exactly); NaN and infinities become null.
class JsonWriter {
 public:
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
  JsonWriter& NumberArray(const std::vector<double>& values);

  const std::string& Text() const { return out_; }

 private:
  void BeforeValue();

  std::string out_;
  // One entry per open container: whether it holds a value already.
  std::vector<bool> has_value_;
  bool after_key_ = false;
};

// `value` with JSON escapes, without the surrounding quotes.
std::string JsonEscape(std::string_view value);

// The shortest text that reads back to exactly `value`.
std::string ExactNumberText(double value);

}  // namespace orvik::cli
