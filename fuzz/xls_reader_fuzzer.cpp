// libFuzzer target: the legacy .xls reader on arbitrary files. Every input
// must either load or be refused with WorkbookError; anything else is a
// finding.
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <string>

#include "formats/workbook_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const std::string path = "/tmp/orvik-fuzz-xls-" + std::to_string(getpid()) + ".xls";
  FILE* file = std::fopen(path.c_str(), "wb");
  if (!file) return 0;
  std::fwrite(data, 1, size, file);
  std::fclose(file);
  try {
    orvik::worksheet::Worksheet read;
    orvik::formats::ReadXlsSheet(path, 0, false, read);
  } catch (const orvik::formats::WorkbookError&) {
  }
  return 0;
}
