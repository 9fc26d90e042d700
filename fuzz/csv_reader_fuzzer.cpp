// libFuzzer target: the delimited-text reader on arbitrary bytes. The first
// byte picks the separator and the header-row option; whatever the reader
// fills must read back the same after writing it out again.
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <stdexcept>
#include <string>

#include "formats/delimited_text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  static const char kSeparators[] = {',', '\t', ';', ' ', '|', 'a', '\'', '\\'};
  const orvik::formats::DelimitedOptions options{kSeparators[data[0] & 7], (data[0] & 8) != 0};
  std::istringstream in(std::string(reinterpret_cast<const char*>(data) + 1, size - 1));
  orvik::worksheet::Worksheet sheet;
  try {
    orvik::formats::ReadDelimitedText(in, options, sheet);
  } catch (const std::length_error&) {
    return 0;  // a text past the grid's last column or row: refused as it should be
  }

  std::ostringstream out;
  orvik::formats::WriteDelimitedText(out, sheet, {options.separator, false});
  std::istringstream again(out.str());
  orvik::worksheet::Worksheet back;
  orvik::formats::ReadDelimitedText(again, {options.separator, false}, back);
  if (back.DataRowCnt() != sheet.DataRowCnt() || back.DataColCnt() != sheet.DataColCnt()) std::abort();
  for (long row = 1; row <= sheet.DataRowCnt(); ++row)
    for (long col = 1; col <= sheet.DataColCnt(); ++col)
      if (back.Text(row, col) != sheet.Text(row, col)) std::abort();
  return 0;
}
