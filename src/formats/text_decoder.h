#pragma once

#include <string>
#include <string_view>

namespace orvik::formats {

// Turns the bytes of a text file into UTF-8 as they arrive in pieces, so that
// everything read from a file is UTF-8 (The Unicode Standard, chapter 3,
// table 3-7 for well-formed UTF-8; RFC 2781 for UTF-16).
//
// The encoding is decided by the first bytes: a UTF-16 byte-order mark (FF FE
// little-endian, FE FF big-endian) selects UTF-16, whose code units are
// converted; otherwise the text is read as UTF-8, a UTF-8 byte-order mark
// dropped. A byte that does not belong to a well-formed UTF-8 sequence is
// read as the Latin-1 character of that value (a file saved in Latin-1 or
// Windows-1252 keeps its accented letters); an unpaired UTF-16 surrogate or a
// trailing odd byte becomes U+FFFD. Either is remembered, so the reader can
// tell the user once.
class TextDecoder {
 public:
  // Appends the UTF-8 of `bytes` to `out`. A sequence cut at the end of
  // `bytes` waits for the next piece.
  void Decode(std::string_view bytes, std::string& out);
  // Ends the text: bytes still waiting are converted as they stand.
  void Finish(std::string& out);

  // Whether any byte had to be read as Latin-1 or replaced.
  bool Repaired() const { return repaired_; }

 private:
  enum class Encoding { Undecided, Utf8, Utf16Le, Utf16Be };

  std::string_view JoinPending(std::string_view bytes, std::string& joined);

  void DecodeUtf8(std::string_view bytes, std::string& out);
  void DecodeUtf16(std::string_view bytes, std::string& out);
  void AppendLatin1(unsigned char byte, std::string& out);

  Encoding encoding_ = Encoding::Undecided;
  std::string pending_;        // bytes of an unfinished sequence or of the start
  unsigned high_surrogate_ = 0;
  bool repaired_ = false;
};

// Appends code point `cp` to `out` as UTF-8.
void AppendUtf8(unsigned cp, std::string& out);

}  // namespace orvik::formats
