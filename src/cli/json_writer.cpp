#include "cli/json_writer.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>

namespace orvik::cli {

namespace {

constexpr std::size_t kChunk = 1 << 16;

inline bool NeedsEscape(char c) { return c == '"' || c == '\\' || static_cast<unsigned char>(c) < 0x20; }

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

}  // namespace

std::string JsonEscape(std::string_view value) {
  std::string out;
  out.reserve(value.size());
  AppendEscapedTo(out, value);
  return out;
}

std::string ExactNumberText(double value) {
  char buffer[32];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
  return std::string(buffer, result.ptr);
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
  char buffer[32];
  // A whole number without trailing zeros (sample numbers) has the same
  // shortest text as an integer, which is much quicker to write.
  const bool plain_integer =
      std::fabs(value) < 1e15 && value == std::trunc(value) && static_cast<long long>(value) % 10 != 0;
  const auto result = plain_integer
                          ? std::to_chars(buffer, buffer + sizeof buffer, static_cast<long long>(value))
                          : std::to_chars(buffer, buffer + sizeof buffer, value);
  out_.append(buffer, result.ptr);
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

JsonWriter& JsonWriter::StringArrayElement(std::string_view value, bool first) {
  if (!first) out_ += ',';
  out_ += '"';
  if (!AnyNeedsEscape(value)) out_.append(value);
  else AppendEscaped(value);
  out_ += '"';
  return *this;
}

JsonWriter& JsonWriter::Raw(std::string_view text) {
  out_ += text;
  return *this;
}

}  // namespace orvik::cli
