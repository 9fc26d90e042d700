#include "cli/json_writer.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>

namespace orvik::cli {

namespace {

constexpr std::size_t kChunk = 1 << 16;

// Quotes, backslashes and control characters are escaped; bytes of 0x80 and
// above are looked at too, so that a text that is not well-formed UTF-8 (a
// cell of a damaged file) cannot make the output invalid JSON.
inline bool NeedsEscape(char c) {
  const auto b = static_cast<unsigned char>(c);
  return c == '"' || c == '\\' || b < 0x20 || b >= 0x80;
}

// The length of the well-formed UTF-8 sequence at value[i] (The Unicode
// Standard, table 3-7), or 0 when the bytes there are not one.
std::size_t Utf8SequenceAt(std::string_view value, std::size_t i) {
  const auto at = [&value](std::size_t k) { return static_cast<unsigned char>(value[k]); };
  const unsigned char b = at(i);
  std::size_t length = 0;
  unsigned char low = 0x80, high = 0xBF;
  if (b >= 0xC2 && b <= 0xDF) length = 2;
  else if (b == 0xE0) length = 3, low = 0xA0;
  else if (b == 0xED) length = 3, high = 0x9F;
  else if (b >= 0xE1 && b <= 0xEF) length = 3;
  else if (b == 0xF0) length = 4, low = 0x90;
  else if (b == 0xF4) length = 4, high = 0x8F;
  else if (b >= 0xF1 && b <= 0xF3) length = 4;
  if (length == 0 || i + length > value.size()) return 0;
  if (at(i + 1) < low || at(i + 1) > high) return 0;
  for (std::size_t k = 2; k < length; ++k)
    if (at(i + k) < 0x80 || at(i + k) > 0xBF) return 0;
  return length;
}

inline bool AnyNeedsEscape(std::string_view value) {
  for (const char c : value)
    if (NeedsEscape(c)) return true;
  return false;
}

void AppendEscapedTo(std::string& out, std::string_view value) {
  std::size_t plain = 0;
  for (std::size_t i = 0; i < value.size(); ++i) {
    const char c = value[i];
    if (!NeedsEscape(c)) continue;
    if (static_cast<unsigned char>(c) >= 0x80) {
      if (const std::size_t length = Utf8SequenceAt(value, i)) {
        i += length - 1;  // well formed: copied as it stands
        continue;
      }
      out.append(value.data() + plain, i - plain);
      plain = i + 1;
      out += "\\ufffd";  // a byte that is not UTF-8: the replacement character
      continue;
    }
    out.append(value.data() + plain, i - plain);
    plain = i + 1;
    switch (c) {
      case '"': out += "\\\""; break;
      case '\\': out += "\\\\"; break;
      case '\n': out += "\\n"; break;
      case '\r': out += "\\r"; break;
      case '\t': out += "\\t"; break;
      case '\b': out += "\\b"; break;
      case '\f': out += "\\f"; break;
      default: {
        char escape[8];
        std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned char>(c));
        out += escape;
      }
    }
  }
  out.append(value.data() + plain, value.size() - plain);
}

constexpr double kPowersOfTen[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};

// The shortest text of `value` exactly as std::to_chars writes it, found
// quickly for the numbers measurements are made of: a few decimal places
// and not too many digits. The decimal k / 10^d with the fewest places d
// that reads back to the value is its shortest digits; to_chars then writes
// fixed notation unless the scientific one is shorter. Returns false where
// it cannot tell, for to_chars to decide.
bool AppendShortDecimal(double value, std::string& out) {
  const double magnitude = std::fabs(value);
  if (!(magnitude >= 1e-3 && magnitude < 1e15)) return false;
  for (int places = 0; places < 10; ++places) {
    const double scaled = magnitude * kPowersOfTen[places];
    if (scaled >= 9e15) return false;
    const double units = std::nearbyint(scaled);
    // A decimal that reads back to the value lies within a few units of its
    // last place of the scaled value; farther off, no need to divide.
    if (std::fabs(scaled - units) > scaled * 1e-15) continue;
    if (units / kPowersOfTen[places] != magnitude) continue;
    char digits[24];
    auto whole = static_cast<unsigned long long>(units);
    int count = static_cast<int>(std::to_chars(digits, digits + sizeof digits, whole).ptr - digits);
    // Trailing zeros of a whole number are digits scientific notation drops.
    int significant = count;
    while (places == 0 && significant > 1 && digits[significant - 1] == '0') --significant;
    const int exponent = count - 1 - places;
    const int fixed_length = places == 0 ? count : (count > places ? count + 1 : places + 2);
    const int exponent_digits = std::abs(exponent) >= 100 ? 3 : 2;
    const int scientific_length = significant + (significant > 1 ? 1 : 0) + 2 + exponent_digits;
    if (scientific_length < fixed_length) return false;  // to_chars writes the exponent form
    if (value < 0) out += '-';
    if (places == 0) {
      out.append(digits, count);
    } else if (count > places) {
      out.append(digits, count - places);
      out += '.';
      out.append(digits + count - places, places);
    } else {
      out += "0.";
      out.append(places - count, '0');
      out.append(digits, count);
    }
    return true;
  }
  return false;
}

}  // namespace

void AppendShortestNumber(double value, std::string& out) {
  if (AppendShortDecimal(value, out)) return;
  char buffer[32];
  out.append(buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr);
}

std::string JsonEscape(std::string_view value) {
  std::string out;
  out.reserve(value.size());
  AppendEscapedTo(out, value);
  return out;
}

std::string ExactNumberText(double value) {
  std::string text;
  AppendShortestNumber(value, text);
  return text;
}

void JsonWriter::Flush() {
  if (sink_ == nullptr || out_.empty()) return;
  sink_->write(out_.data(), static_cast<std::streamsize>(out_.size()));
  out_.clear();
}

void JsonWriter::AppendEscaped(std::string_view value) { AppendEscapedTo(out_, value); }

void JsonWriter::BeforeValue() {
  if (sink_ != nullptr && out_.size() >= kChunk) Flush();
  if (after_key_) {
    after_key_ = false;
    return;
  }
  if (!has_value_.empty()) {
    if (has_value_.back()) out_ += ',';
    has_value_.back() = true;
  }
}

JsonWriter& JsonWriter::BeginObject() {
  BeforeValue();
  out_ += '{';
  has_value_.push_back(false);
  return *this;
}

JsonWriter& JsonWriter::EndObject() {
  out_ += '}';
  has_value_.pop_back();
  return *this;
}

JsonWriter& JsonWriter::BeginArray() {
  BeforeValue();
  out_ += '[';
  has_value_.push_back(false);
  return *this;
}

JsonWriter& JsonWriter::EndArray() {
  out_ += ']';
  has_value_.pop_back();
  return *this;
}

JsonWriter& JsonWriter::Key(std::string_view key) {
  BeforeValue();
  out_ += '"';
  AppendEscaped(key);
  out_ += "\":";
  after_key_ = true;
  return *this;
}

JsonWriter& JsonWriter::String(std::string_view value) {
  BeforeValue();
  out_ += '"';
  // Most texts (every number) need no escape: one scan, one copy.
  if (!AnyNeedsEscape(value)) out_.append(value);
  else AppendEscaped(value);
  out_ += '"';
  return *this;
}

JsonWriter& JsonWriter::Number(double value) {
  if (!std::isfinite(value)) return Null();
  BeforeValue();
  AppendShortestNumber(value, out_);
  return *this;
}

JsonWriter& JsonWriter::Integer(long long value) {
  BeforeValue();
  out_ += std::to_string(value);
  return *this;
}

JsonWriter& JsonWriter::Null() {
  BeforeValue();
  out_ += "null";
  return *this;
}

JsonWriter& JsonWriter::StringArray(const std::vector<std::string>& values) {
  BeginArray();
  for (const auto& value : values) String(value);
  return EndArray();
}

void JsonWriter::FlushIfFull() {
  if (sink_ != nullptr && out_.size() >= kChunk) Flush();
}

JsonWriter& JsonWriter::Raw(std::string_view text) {
  FlushIfFull();
  out_ += text;
  return *this;
}

}  // namespace orvik::cli
