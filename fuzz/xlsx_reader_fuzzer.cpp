// libFuzzer target: the .xlsx reader on a workbook whose sheet part and
// shared strings come from the input (split at its first NUL byte), inside
// a fixed package, so that the XML reading is reached on every input.
// Every input must either load or be refused with WorkbookError; anything
// else (a crash, another exception, a leak, a hang, memory out of
// proportion) is a finding.
#include <unistd.h>
#include <zip.h>

#include <cstdint>
#include <string>

#include "formats/workbook_file.h"

namespace {

const char kRels[] =
    R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">)"
    R"(<Relationship Id="r1" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument" Target="b.xml"/></Relationships>)";
const char kBook[] =
    R"(<workbook xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main" xmlns:r="http://schemas.openxmlformats.org/officeDocument/2006/relationships">)"
    R"(<sheets><sheet name="S" sheetId="1" r:id="r7"/></sheets></workbook>)";
const char kBookRels[] =
    R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">)"
    R"(<Relationship Id="r7" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/worksheet" Target="s.xml"/>)"
    R"(<Relationship Id="r8" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/sharedStrings" Target="t.xml"/></Relationships>)";

bool WritePackage(const std::string& path, const std::string& sheet, const std::string& strings) {
  int error = 0;
  zip_t* archive = zip_open(path.c_str(), ZIP_CREATE | ZIP_TRUNCATE, &error);
  if (!archive) return false;
  const std::pair<const char*, std::string> parts[] = {
      {"_rels/.rels", kRels}, {"b.xml", kBook}, {"_rels/b.xml.rels", kBookRels}, {"s.xml", sheet}, {"t.xml", strings}};
  for (const auto& [name, text] : parts) {
    zip_source_t* source = zip_source_buffer(archive, text.data(), text.size(), 0);
    if (!source || zip_file_add(archive, name, source, ZIP_FL_OVERWRITE) < 0) {
      zip_source_free(source);
      zip_discard(archive);
      return false;
    }
  }
  return zip_close(archive) == 0;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const std::string path = "/tmp/orvik-fuzz-xlsx-" + std::to_string(getpid()) + ".xlsx";
  const std::string input(reinterpret_cast<const char*>(data), size);
  const auto split = input.find('\0');
  const std::string sheet = input.substr(0, split);
  const std::string strings = split == std::string::npos ? std::string() : input.substr(split + 1);
  if (!WritePackage(path, sheet, strings)) return 0;
  try {
    orvik::worksheet::Worksheet read;
    orvik::formats::ReadXlsxSheet(path, 0, (size & 1) != 0, read);
  } catch (const orvik::formats::WorkbookError&) {
  }
  return 0;
}
