#include "formats/text_decoder.h"

namespace orvik::formats {

namespace {

constexpr unsigned kReplacement = 0xFFFD;

// The length of the UTF-8 sequence that `lead` starts and the range its
// second byte must lie in; length 0 for a byte that starts none.
struct LeadByte {
  int length = 0;
  unsigned char low = 0x80;
  unsigned char high = 0xBF;
};

LeadByte Lead(unsigned char b) {
  if (b >= 0xC2 && b <= 0xDF) return {2};
  if (b == 0xE0) return {3, 0xA0, 0xBF};
  if (b == 0xED) return {3, 0x80, 0x9F};  // no surrogates
  if (b >= 0xE1 && b <= 0xEF) return {3};
  if (b == 0xF0) return {4, 0x90, 0xBF};
  if (b == 0xF4) return {4, 0x80, 0x8F};  // nothing past U+10FFFF
  if (b >= 0xF1 && b <= 0xF3) return {4};
  return {};
}

// How many bytes of the sequence starting at data[0] are well formed, up to
// `available` of them.
int WellFormedPrefix(const unsigned char* data, std::size_t available, const LeadByte& lead) {
  int good = 1;
  for (int k = 1; k < lead.length && static_cast<std::size_t>(k) < available; ++k) {
    const unsigned char low = k == 1 ? lead.low : 0x80, high = k == 1 ? lead.high : 0xBF;
    if (data[k] < low || data[k] > high) break;
    ++good;
  }
  return good;
}

}  // namespace

void AppendUtf8(unsigned cp, std::string& out) {
  if (cp < 0x80) {
    out.push_back(static_cast<char>(cp));
  } else if (cp < 0x800) {
    out.push_back(static_cast<char>(0xC0 | (cp >> 6)));
    out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
  } else if (cp < 0x10000) {
    out.push_back(static_cast<char>(0xE0 | (cp >> 12)));
    out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
  } else {
    out.push_back(static_cast<char>(0xF0 | (cp >> 18)));
    out.push_back(static_cast<char>(0x80 | ((cp >> 12) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
  }
}

void TextDecoder::AppendLatin1(unsigned char byte, std::string& out) {
  AppendUtf8(byte, out);
  repaired_ = true;
}

void TextDecoder::Decode(std::string_view bytes, std::string& out) {
  if (encoding_ == Encoding::Undecided) {
    pending_.append(bytes);
    if (pending_.size() < 2) return;  // too short to tell yet
    const auto b0 = static_cast<unsigned char>(pending_[0]), b1 = static_cast<unsigned char>(pending_[1]);
    std::string start = std::move(pending_);
    pending_.clear();
    if (b0 == 0xFF && b1 == 0xFE) {
      encoding_ = Encoding::Utf16Le;
      DecodeUtf16(std::string_view(start).substr(2), out);
    } else if (b0 == 0xFE && b1 == 0xFF) {
      encoding_ = Encoding::Utf16Be;
      DecodeUtf16(std::string_view(start).substr(2), out);
    } else {
      if (start.size() < 3) {  // two bytes may still begin a UTF-8 mark
        if (b0 == 0xEF && b1 == 0xBB) {
          pending_ = std::move(start);
          return;
        }
      }
      encoding_ = Encoding::Utf8;
      const bool mark = start.size() >= 3 && start.compare(0, 3, "\xEF\xBB\xBF") == 0;
      DecodeUtf8(std::string_view(start).substr(mark ? 3 : 0), out);
    }
    return;
  }
  if (encoding_ == Encoding::Utf8) DecodeUtf8(bytes, out);
  else DecodeUtf16(bytes, out);
}

// The bytes left over from the last piece, then this piece: in `joined`
// when there were any, so a sequence cut between pieces decodes whole.
std::string_view TextDecoder::JoinPending(std::string_view bytes, std::string& joined) {
  if (pending_.empty()) return bytes;
  joined = std::move(pending_);
  pending_.clear();
  joined.append(bytes);
  return joined;
}

void TextDecoder::DecodeUtf8(std::string_view bytes, std::string& out) {
  std::string joined;
  bytes = JoinPending(bytes, joined);
  const auto* data = reinterpret_cast<const unsigned char*>(bytes.data());
  const std::size_t size = bytes.size();
  std::size_t i = 0;
  while (i < size) {
    // Runs of ASCII and of well-formed sequences are copied in one go.
    std::size_t j = i;
    while (j < size) {
      if (data[j] < 0x80) {
        ++j;
        continue;
      }
      const LeadByte lead = Lead(data[j]);
      if (lead.length == 0 || j + lead.length > size ||
          WellFormedPrefix(data + j, size - j, lead) != lead.length)
        break;
      j += lead.length;
    }
    out.append(bytes.substr(i, j - i));
    i = j;
    if (i == size) break;
    const LeadByte lead = Lead(data[i]);
    if (lead.length > 0 && i + lead.length > size &&
        WellFormedPrefix(data + i, size - i, lead) == static_cast<int>(size - i)) {
      pending_.assign(bytes.substr(i));  // cut by the end of this piece
      return;
    }
    AppendLatin1(data[i], out);
    ++i;
  }
}

void TextDecoder::DecodeUtf16(std::string_view bytes, std::string& out) {
  std::string joined;
  bytes = JoinPending(bytes, joined);
  const bool little = encoding_ == Encoding::Utf16Le;
  std::size_t i = 0;
  for (; i + 1 < bytes.size(); i += 2) {
    const auto a = static_cast<unsigned char>(bytes[i]), b = static_cast<unsigned char>(bytes[i + 1]);
    const unsigned unit = little ? (a | (b << 8)) : ((a << 8) | b);
    if (high_surrogate_ != 0) {
      const unsigned high = high_surrogate_;
      high_surrogate_ = 0;
      if (unit >= 0xDC00 && unit <= 0xDFFF) {
        AppendUtf8(0x10000 + ((high - 0xD800) << 10) + (unit - 0xDC00), out);
        continue;
      }
      AppendUtf8(kReplacement, out);
      repaired_ = true;
    }
    if (unit >= 0xD800 && unit <= 0xDBFF) {
      high_surrogate_ = unit;
    } else if (unit >= 0xDC00 && unit <= 0xDFFF) {
      AppendUtf8(kReplacement, out);
      repaired_ = true;
    } else {
      AppendUtf8(unit, out);
    }
  }
  pending_.assign(bytes.substr(i));
}

void TextDecoder::Finish(std::string& out) {
  if (encoding_ == Encoding::Undecided) {
    encoding_ = Encoding::Utf8;
    std::string start = std::move(pending_);
    pending_.clear();
    DecodeUtf8(start, out);
  }
  if (encoding_ == Encoding::Utf8) {
    // An unfinished sequence at the end: its bytes as Latin-1.
    for (const char c : pending_) AppendLatin1(static_cast<unsigned char>(c), out);
  } else if (!pending_.empty() || high_surrogate_ != 0) {
    AppendUtf8(kReplacement, out);
    repaired_ = true;
  }
  pending_.clear();
  high_surrogate_ = 0;
}

}  // namespace orvik::formats
