#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace orvik::formats {

// The compact binary lists a project file keeps in its blobs: texts as a
// LEB128 length followed by their bytes, doubles as their 8 IEEE bytes in
// little-endian order (so every value, NaN and infinities included, comes
// back bit for bit), whole numbers as LEB128.
class ByteWriter {
 public:
  void Unsigned(std::uint64_t value) {
    while (value >= 0x80) {
      bytes_.push_back(static_cast<char>((value & 0x7F) | 0x80));
      value >>= 7;
    }
    bytes_.push_back(static_cast<char>(value));
  }
  void Text(std::string_view text) {
    Unsigned(text.size());
    bytes_.append(text.data(), text.size());
  }
  void Double(double value) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    for (int i = 0; i < 8; ++i) bytes_.push_back(static_cast<char>((bits >> (8 * i)) & 0xFF));
  }

  const std::string& Bytes() const { return bytes_; }
  std::size_t Size() const { return bytes_.size(); }
  void Clear() { bytes_.clear(); }

 private:
  std::string bytes_;
};

// Reads what ByteWriter wrote. Every read checks the remaining length, so a
// damaged blob sets Failed() instead of reading past its end; callers test
// Failed() (and AtEnd()) once after a run of reads.
class ByteReader {
 public:
  explicit ByteReader(std::string_view bytes) : bytes_(bytes) {}

  std::uint64_t Unsigned() {
    std::uint64_t value = 0;
    for (int shift = 0; shift < 64; shift += 7) {
      if (pos_ >= bytes_.size()) return Fail();
      const auto byte = static_cast<unsigned char>(bytes_[pos_++]);
      value |= static_cast<std::uint64_t>(byte & 0x7F) << shift;
      if ((byte & 0x80) == 0) return value;
    }
    return Fail();
  }
  std::string_view Text() {
    const std::uint64_t length = Unsigned();
    if (failed_ || length > bytes_.size() - pos_) {
      Fail();
      return {};
    }
    const std::string_view text = bytes_.substr(pos_, length);
    pos_ += length;
    return text;
  }
  double Double() {
    if (bytes_.size() - pos_ < 8) {
      Fail();
      return 0.0;
    }
    std::uint64_t bits = 0;
    for (int i = 0; i < 8; ++i) bits |= static_cast<std::uint64_t>(static_cast<unsigned char>(bytes_[pos_ + i])) << (8 * i);
    pos_ += 8;
    double value = 0.0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
  }

  // The bytes left, an upper bound for the number of items still to come.
  std::size_t Remaining() const { return bytes_.size() - pos_; }
  bool AtEnd() const { return pos_ == bytes_.size(); }
  bool Failed() const { return failed_; }
  // The bytes not read yet.
  std::string_view Rest() const { return bytes_.substr(pos_); }

 private:
  std::uint64_t Fail() {
    failed_ = true;
    pos_ = bytes_.size();
    return 0;
  }

  std::string_view bytes_;
  std::size_t pos_ = 0;
  bool failed_ = false;
};

// A 64-bit check value of a blob, to notice damage inside stored data that
// the database's own structure checks cannot see. Eight bytes at a time, so
// hashing costs far less than writing the bytes.
inline std::uint64_t CheckValue(std::string_view bytes) {
  std::uint64_t hash = 0x6A09E667F3BCC909ULL ^ bytes.size();
  std::size_t i = 0;
  for (; i + 8 <= bytes.size(); i += 8) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes.data() + i, 8);
    hash = (hash ^ word) * 0x9E3779B97F4A7C15ULL;
    hash ^= hash >> 29;
  }
  for (; i < bytes.size(); ++i) {
    hash = (hash ^ static_cast<unsigned char>(bytes[i])) * 0x100000001B3ULL;
    hash ^= hash >> 29;
  }
  return hash;
}

}  // namespace orvik::formats
