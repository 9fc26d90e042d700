// Excel workbooks. An .xlsx file is a zip archive (opened with libzip) of
// XML parts (parsed with expat, streaming, so a sheet of a million rows is
// never held as a document tree): _rels/.rels names the workbook part, the
// workbook's relationships name its sheets and shared strings. Writing goes
// through libxlsxwriter in its constant-memory mode; legacy .xls is read
// with libfreexl.
#include "formats/workbook_file.h"

#include <expat.h>
#include <freexl.h>
#include <unistd.h>
#include <xlsxwriter.h>
#include <zip.h>

#include <algorithm>
#include <cmath>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <map>
#include <memory>
#include <set>

#include "formats/delimited_text.h"
#include "formats/number_text.h"
#include "formats/project_file.h"
#include "worksheet/cell_number.h"

namespace orvik::formats {

namespace {

constexpr std::uint64_t kMaxInflationRatio = 250;
constexpr std::uint64_t kMaxPartBytes = 2ULL << 30;
// Excel's own limits on a cell's text and on the number of shared strings
// a reader keeps.
constexpr std::size_t kMaxCellCharacters = 32767;
constexpr std::size_t kMaxSharedStrings = std::size_t{1} << 24;

// The characters of UTF-8 text: its bytes that start one.
std::size_t CharacterCount(std::string_view text) {
  return static_cast<std::size_t>(
      std::count_if(text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

[[noreturn]] void NotAWorkbook(const std::string& path, const std::string& detail) {
  throw WorkbookError("\"" + path + "\" cannot be read as an Excel workbook (" + detail + ").");
}

// Digits a number format shows: at least `integers` before the point
// (leading zeros), exactly `decimals` after it.
struct ShownDigits {
  int integers = 1;
  int decimals = 0;
  auto operator<=>(const ShownDigits&) const = default;
};

constexpr int kMostFormatDigits = 30;  // the most digits an Excel number format takes on either side

// ---- the zip archive ------------------------------------------------------

class ZipArchive {
 public:
  explicit ZipArchive(const std::string& path) : path_(path) {
    int error = 0;
    archive_ = zip_open(path.c_str(), ZIP_RDONLY, &error);
    if (!archive_) {
      zip_error_t details;
      zip_error_init_with_code(&details, error);
      const std::string message = zip_error_strerror(&details);
      zip_error_fini(&details);
      NotAWorkbook(path, message);
    }
  }
  ~ZipArchive() { zip_discard(archive_); }
  ZipArchive(const ZipArchive&) = delete;
  ZipArchive& operator=(const ZipArchive&) = delete;

  bool Has(const std::string& name) const { return zip_name_locate(archive_, name.c_str(), 0) >= 0; }

  // Feeds the part `name` to `sink` in blocks as it is inflated. A part
  // that inflates beyond kMaxInflationRatio times its compressed size, or
  // beyond kMaxPartBytes, is refused: real sheets stay far below both,
  // while a crafted part of repeated bytes would keep the reader busy for
  // gigabytes.
  template <typename Sink>
  void Stream(const std::string& name, Sink&& sink) const {
    zip_stat_t stat;
    zip_stat_init(&stat);
    if (zip_stat(archive_, name.c_str(), 0, &stat) != 0) NotAWorkbook(path_, "the part " + name + " is missing");
    const std::uint64_t compressed = (stat.valid & ZIP_STAT_COMP_SIZE) ? stat.comp_size : 0;
    const std::uint64_t allowed = std::min<std::uint64_t>(kMaxPartBytes, std::max<std::uint64_t>(compressed, 4096) * kMaxInflationRatio);
    zip_file_t* file = zip_fopen(archive_, name.c_str(), 0);
    if (!file) NotAWorkbook(path_, "the part " + name + " is missing");
    std::unique_ptr<zip_file_t, int (*)(zip_file_t*)> owner(file, zip_fclose);
    std::vector<char> block(1 << 16);
    std::uint64_t inflated = 0;
    for (;;) {
      const zip_int64_t got = zip_fread(file, block.data(), block.size());
      if (got < 0) NotAWorkbook(path_, "the part " + name + " is damaged: " + zip_file_strerror(file));
      inflated += static_cast<std::uint64_t>(got);
      if (inflated > allowed)
        NotAWorkbook(path_, "the part " + name + " inflates to more than " +
                                (allowed == kMaxPartBytes ? std::string("2 GiB")
                                                          : std::to_string(kMaxInflationRatio) + " times its packed size"));
      sink(block.data(), static_cast<std::size_t>(got), got == 0);
      if (got == 0) break;
    }
  }

  const std::string& Path() const { return path_; }

 private:
  std::string path_;
  zip_t* archive_ = nullptr;
};

// ---- streaming XML ----------------------------------------------------------

// An expat parser with namespace processing: element names arrive as
// "namespace|local"; handlers see the local name only, plus the attribute
// list with local names too.
class XmlStream {
 public:
  using Attributes = std::vector<std::pair<std::string_view, std::string_view>>;

  virtual ~XmlStream() { XML_ParserFree(parser_); }

  void Parse(const ZipArchive& zip, const std::string& part) {
    zip.Stream(part, [&](const char* data, std::size_t size, bool last) {
      if (XML_Parse(parser_, data, static_cast<int>(size), last) == XML_STATUS_ERROR) {
        if (failure_.empty())
          failure_ = std::string(XML_ErrorString(XML_GetErrorCode(parser_))) + " at line " +
                     std::to_string(XML_GetCurrentLineNumber(parser_));
        NotAWorkbook(zip.Path(), "the part " + part + ": " + failure_);
      }
    });
  }

 protected:
  XmlStream() : parser_(XML_ParserCreateNS("UTF-8", '|')) {
    XML_SetUserData(parser_, this);
    XML_SetElementHandler(parser_, &XmlStream::OnStart, &XmlStream::OnEnd);
    XML_SetCharacterDataHandler(parser_, &XmlStream::OnText);
  }

  virtual void Start(std::string_view name, const Attributes& attributes) = 0;
  virtual void End(std::string_view name) = 0;
  virtual void Text(std::string_view) {}

  // Stops the parse with a message (a value out of range, for example).
  void Fail(std::string message) {
    failure_ = std::move(message);
    XML_StopParser(parser_, XML_FALSE);
  }

  static std::string_view Local(const char* name) {
    std::string_view full(name);
    const auto bar = full.rfind('|');
    return bar == std::string_view::npos ? full : full.substr(bar + 1);
  }

 private:
  static void OnStart(void* self, const char* name, const char** attributes) {
    auto* stream = static_cast<XmlStream*>(self);
    stream->attributes_.clear();
    for (int i = 0; attributes[i]; i += 2) stream->attributes_.emplace_back(Local(attributes[i]), attributes[i + 1]);
    stream->Start(Local(name), stream->attributes_);
  }
  static void OnEnd(void* self, const char* name) { static_cast<XmlStream*>(self)->End(Local(name)); }
  static void OnText(void* self, const char* text, int length) {
    static_cast<XmlStream*>(self)->Text(std::string_view(text, static_cast<std::size_t>(length)));
  }

  XML_Parser parser_;
  Attributes attributes_;
  std::string failure_;
};

std::string_view Attribute(const XmlStream::Attributes& attributes, std::string_view name) {
  for (const auto& [key, value] : attributes)
    if (key == name) return value;
  return {};
}

// Relationships of one part: id -> (type, target as an archive path).
class RelationshipsReader : public XmlStream {
 public:
  explicit RelationshipsReader(std::string base_folder) : base_(std::move(base_folder)) {}
  struct Relation {
    std::string type;
    std::string target;
  };
  std::map<std::string, Relation> relations;

 private:
  void Start(std::string_view name, const Attributes& attributes) override {
    if (name != "Relationship") return;
    std::string target(Attribute(attributes, "Target"));
    if (Attribute(attributes, "TargetMode") == "External") return;
    target = target.starts_with('/') ? target.substr(1) : base_ + target;
    relations[std::string(Attribute(attributes, "Id"))] = {std::string(Attribute(attributes, "Type")), Normalise(target)};
  }
  void End(std::string_view) override {}

  // Resolves "." and ".." in an archive path.
  static std::string Normalise(const std::string& path) {
    std::vector<std::string> parts;
    std::size_t start = 0;
    while (start <= path.size()) {
      const auto slash = path.find('/', start);
      const std::string part = path.substr(start, slash == std::string::npos ? std::string::npos : slash - start);
      if (part == "..") {
        if (!parts.empty()) parts.pop_back();
      } else if (!part.empty() && part != ".") {
        parts.push_back(part);
      }
      if (slash == std::string::npos) break;
      start = slash + 1;
    }
    std::string joined;
    for (const auto& part : parts) joined += (joined.empty() ? "" : "/") + part;
    return joined;
  }

  std::string base_;
};

std::string FolderOf(const std::string& part) {
  const auto slash = part.rfind('/');
  return slash == std::string::npos ? std::string() : part.substr(0, slash + 1);
}

std::string RelationshipsPartOf(const std::string& part) {
  const auto slash = part.rfind('/');
  const std::string folder = slash == std::string::npos ? "" : part.substr(0, slash + 1);
  const std::string name = slash == std::string::npos ? part : part.substr(slash + 1);
  return folder + "_rels/" + name + ".rels";
}

bool TypeIs(const std::string& type, std::string_view suffix) { return type.ends_with(suffix); }

class WorkbookReader : public XmlStream {
 public:
  struct SheetEntry {
    std::string name;
    std::string relation;
  };
  std::vector<SheetEntry> sheets;

 private:
  void Start(std::string_view name, const Attributes& attributes) override {
    if (name == "sheet") sheets.push_back({std::string(Attribute(attributes, "name")), std::string(Attribute(attributes, "id"))});
  }
  void End(std::string_view) override {}
};

// OOXML writes characters XML cannot hold as _xHHHH_; a literal "_x" that
// would look like one is itself written _x005F_x.
std::string DecodeEscapes(std::string text) {
  if (text.find("_x") == std::string::npos) return text;
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    unsigned code = 0;
    if (text[i] == '_' && i + 6 < text.size() && text[i + 1] == 'x' && text[i + 6] == '_' &&
        std::from_chars(text.data() + i + 2, text.data() + i + 6, code, 16).ptr == text.data() + i + 6) {
      // The code is one UTF-16 unit; below 0x800 except surrogates in practice.
      if (code < 0x80) {
        out.push_back(static_cast<char>(code));
      } else if (code < 0x800) {
        out.push_back(static_cast<char>(0xC0 | (code >> 6)));
        out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
      } else {
        out.push_back(static_cast<char>(0xE0 | (code >> 12)));
        out.push_back(static_cast<char>(0x80 | ((code >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
      }
      i += 6;
    } else {
      out.push_back(text[i]);
    }
  }
  return out;
}

// The shared strings: each <si> is one string, the <t> texts of its runs
// joined; phonetic runs (<rPh>) are not part of the text.
class SharedStringsReader : public XmlStream {
 public:
  std::vector<std::string> strings;

 private:
  void Start(std::string_view name, const Attributes&) override {
    if (name == "si") {
      current_.clear();
      characters_ = 0;
    }
    else if (name == "t" && phonetic_ == 0) in_text_ = true;
    else if (name == "rPh") ++phonetic_;
  }
  void End(std::string_view name) override {
    if (name == "t") in_text_ = false;
    else if (name == "rPh") --phonetic_;
    else if (name == "si") {
      if (strings.size() == kMaxSharedStrings) return Fail("the workbook has more than 16,777,216 shared strings");
      strings.push_back(DecodeEscapes(std::move(current_)));
    }
  }
  void Text(std::string_view text) override {
    if (!in_text_) return;
    characters_ += CharacterCount(text);
    if (characters_ > kMaxCellCharacters) return Fail("a cell is longer than 32,767 characters");
    current_.append(text);
  }

  std::string current_;
  std::size_t characters_ = 0;
  bool in_text_ = false;
  int phonetic_ = 0;
};

// "AB12" -> column 28, row 12; false when the reference is not one.
bool ParseCellReference(std::string_view ref, long& row, long& col) {
  std::size_t i = 0;
  long c = 0;
  while (i < ref.size() && ref[i] >= 'A' && ref[i] <= 'Z' && c <= kWorkbookMaxCols) c = c * 26 + (ref[i++] - 'A' + 1);
  long r = 0;
  const auto [end, error] = std::from_chars(ref.data() + i, ref.data() + ref.size(), r);
  if (i == 0 || error != std::errc() || end != ref.data() + ref.size()) return false;
  row = r;
  col = c;
  return true;
}

// The cell formats of the workbook, as far as they fix the digits shown:
// number formats "0", "0.00", "000.0" and so on (built in or the workbook's
// own). A number cell in such a format reads as the text the spreadsheet
// shows, "25.000" rather than "25".
class StylesReader : public XmlStream {
 public:
  std::vector<std::optional<ShownDigits>> digitsOfFormat;  // by cell format index

 private:
  static std::optional<ShownDigits> DigitsOfCode(std::string_view code) {
    const std::size_t point = code.find('.');
    const std::string_view integers = code.substr(0, point);
    const std::string_view decimals = point == std::string_view::npos ? "" : code.substr(point + 1);
    if (integers.empty() || integers.find_first_not_of('0') != std::string_view::npos ||
        decimals.find_first_not_of('0') != std::string_view::npos || (point != std::string_view::npos && decimals.empty()))
      return std::nullopt;
    return ShownDigits{static_cast<int>(integers.size()), static_cast<int>(decimals.size())};
  }
  static int Number(std::string_view text) {
    int number = -1;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
  }
  void Start(std::string_view name, const Attributes& attributes) override {
    if (name == "numFmt") {
      codes_[Number(Attribute(attributes, "numFmtId"))] = DigitsOfCode(Attribute(attributes, "formatCode"));
    } else if (name == "cellXfs") {
      in_cell_formats_ = true;
    } else if (name == "xf" && in_cell_formats_) {
      const auto code = codes_.find(Number(Attribute(attributes, "numFmtId")));
      digitsOfFormat.push_back(code != codes_.end() ? code->second : std::nullopt);
    }
  }
  void End(std::string_view name) override {
    if (name == "cellXfs") in_cell_formats_ = false;
  }

  // The built-in formats "0" and "0.00", then the workbook's own.
  std::map<int, std::optional<ShownDigits>> codes_{{1, ShownDigits{1, 0}}, {2, ShownDigits{1, 2}}};
  bool in_cell_formats_ = false;
};

class SheetReader : public XmlStream {
 public:
  SheetReader(const std::vector<std::string>& shared, const std::vector<std::optional<ShownDigits>>& digits_of_format, bool header_row,
              worksheet::Worksheet& sheet)
      : shared_(shared), digits_of_format_(digits_of_format), header_row_(header_row), sheet_(sheet) {}

 private:
  void Start(std::string_view name, const Attributes& attributes) override {
    if (name == "row") {
      const std::string_view r = Attribute(attributes, "r");
      long number = row_ + 1;
      if (!r.empty() && std::from_chars(r.data(), r.data() + r.size(), number).ec != std::errc()) number = row_ + 1;
      row_ = number;
      col_ = 0;
    } else if (name == "c") {
      in_cell_ = true;
      value_.clear();
      characters_ = 0;
      type_ = Attribute(attributes, "t");
      format_ = 0;
      const std::string_view style = Attribute(attributes, "s");
      std::from_chars(style.data(), style.data() + style.size(), format_);
      const std::string_view r = Attribute(attributes, "r");
      long row = row_, col = col_ + 1;
      if (!r.empty() && !ParseCellReference(r, row, col)) return Fail("bad cell reference " + std::string(r));
      row_ = row;
      col_ = col;
    } else if (in_cell_ && (name == "v" || (name == "t" && phonetic_ == 0))) {
      in_value_ = true;
    } else if (name == "rPh") {
      ++phonetic_;
    }
  }

  void End(std::string_view name) override {
    if (name == "v" || name == "t") {
      in_value_ = false;
    } else if (name == "rPh") {
      --phonetic_;
    } else if (name == "c") {
      in_cell_ = false;
      Store();
    }
  }

  void Text(std::string_view text) override {
    if (!in_value_) return;
    characters_ += CharacterCount(text);
    if (characters_ > kMaxCellCharacters) return Fail("a cell is longer than 32,767 characters");
    value_.append(text);
  }

  void Store() {
    if (col_ > kWorkbookMaxCols) return Fail("the sheet has more than 16,384 columns");
    if (row_ > kWorkbookMaxRows) return Fail("the sheet has more than 1,048,576 rows");
    if (row_ < 1 || col_ < 1) return Fail("cell outside the sheet at row " + std::to_string(row_));
    std::string text;
    if (type_ == "s") {
      std::size_t index = 0;
      const auto [end, error] = std::from_chars(value_.data(), value_.data() + value_.size(), index);
      if (value_.empty() || error != std::errc() || index >= shared_.size())
        return Fail("shared string " + value_ + " missing");
      text = shared_[index];
    } else if (type_ == "b") {
      text = value_ == "1" ? "TRUE" : value_ == "0" ? "FALSE" : value_;
    } else if (type_ == "inlineStr" || type_ == "str") {
      text = DecodeEscapes(value_);
    } else {
      text = ShownNumber();
    }
    if (header_row_) {
      if (row_ == 1) sheet_.SetColumnHeader(col_, std::move(text));
      else if (!text.empty()) sheet_.SetText(row_ - 1, col_, text);
    } else if (!text.empty()) {
      sheet_.SetText(row_, col_, text);
    }
  }

  // A number cell's value as its format shows it; in the general format the
  // shortest text of the number, where the writer gave more digits than it
  // needs ("9.800000000000001" for 9.8).
  std::string ShownNumber() const {
    double number = 0.0;
    const auto [end, error] = std::from_chars(value_.data(), value_.data() + value_.size(), number);
    if (value_.empty() || error != std::errc() || end != value_.data() + value_.size()) return value_;
    const std::optional<ShownDigits> digits =
        format_ < digits_of_format_.size() ? digits_of_format_[format_] : std::nullopt;
    if (!digits) {
      std::string shortest = ShortestText(number);
      return shortest.size() < value_.size() ? shortest : value_;
    }
    char shown[400];
    const auto written = std::to_chars(shown, shown + sizeof shown, number, std::chars_format::fixed, digits->decimals);
    if (written.ec != std::errc()) return value_;
    std::string text(shown, written.ptr);
    const std::size_t sign = text.front() == '-' ? 1 : 0;
    const std::size_t integers = std::min(text.find('.'), text.size()) - sign;
    if (integers < static_cast<std::size_t>(digits->integers))
      text.insert(sign, static_cast<std::size_t>(digits->integers) - integers, '0');
    return text;
  }

  const std::vector<std::string>& shared_;
  const std::vector<std::optional<ShownDigits>>& digits_of_format_;
  bool header_row_;
  worksheet::Worksheet& sheet_;
  long row_ = 0;
  long col_ = 0;
  bool in_cell_ = false;
  bool in_value_ = false;
  int phonetic_ = 0;
  std::string type_;
  std::size_t format_ = 0;
  std::string value_;
  std::size_t characters_ = 0;
};

struct XlsxParts {
  std::vector<WorkbookReader::SheetEntry> sheets;
  std::map<std::string, RelationshipsReader::Relation> relations;
  std::string shared_strings;
  std::string styles;
};

XlsxParts ReadParts(const ZipArchive& zip) {
  RelationshipsReader root("");
  root.Parse(zip, "_rels/.rels");
  std::string workbook_part;
  for (const auto& [id, relation] : root.relations)
    if (TypeIs(relation.type, "/officeDocument")) workbook_part = relation.target;
  if (workbook_part.empty()) NotAWorkbook(zip.Path(), "it names no workbook");
  WorkbookReader workbook;
  workbook.Parse(zip, workbook_part);
  RelationshipsReader relations(FolderOf(workbook_part));
  relations.Parse(zip, RelationshipsPartOf(workbook_part));
  XlsxParts parts{std::move(workbook.sheets), std::move(relations.relations), {}, {}};
  for (const auto& [id, relation] : parts.relations)
    if (TypeIs(relation.type, "/sharedStrings")) parts.shared_strings = relation.target;
    else if (TypeIs(relation.type, "/styles")) parts.styles = relation.target;
  return parts;
}

// ---- writing ----------------------------------------------------------------

// A sheet name Excel accepts: at most 31 characters, none of []:*?/\, not
// empty, unique within the workbook (case-insensitively).
std::string ExcelSheetName(const std::string& wanted, std::set<std::string>& taken) {
  std::string name;
  for (char c : wanted) name.push_back(std::strchr("[]:*?/\\", c) && c ? '_' : c);
  if (name.empty()) name = "Sheet";
  const auto cut = [](std::string text, std::size_t length) {
    // Cut on a character boundary of UTF-8.
    if (text.size() <= length) return text;
    while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80) --length;
    return text.substr(0, length);
  };
  const auto lower = [](std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::tolower(c); });
    return text;
  };
  std::string candidate = cut(name, 31);
  for (int n = 2; taken.contains(lower(candidate)); ++n) {
    const std::string suffix = " (" + std::to_string(n) + ")";
    candidate = cut(name, 31 - suffix.size()) + suffix;
  }
  taken.insert(lower(candidate));
  return candidate;
}

// The number a text stands for when Excel would write it back the same way
// ("%.16G"); texts such as "1.50", "007" or " 3" stay strings so they keep
// their form.
// A cell the worksheet reads as a number is written as a number, as long as
// the workbook's 16 significant digits give that number back (otherwise,
// 0.30000000000000004 for one, as text, so no digit is lost). Where the
// text shows other digits than the shortest form of its number ("25.000",
// "007"), the cell gets the number format that shows them.
std::optional<double> ExcelNumber(std::string_view text) {
  const std::optional<double> value = worksheet::ParseCellNumber(text);
  if (!value) return std::nullopt;
  char written[40];
  std::snprintf(written, sizeof written, "%.16G", *value);
  if (std::strtod(written, nullptr) != *value) return std::nullopt;
  return value;
}

// The digits a numeric cell text shows, where they differ from the shortest
// form of its number; nothing for texts the general format shows alike.
std::optional<ShownDigits> DigitsShown(std::string_view text, double value) {
  if (text.find_first_of("eE") != std::string_view::npos) return std::nullopt;
  const auto count_digits = [](std::string_view digits) {
    const std::size_t end = digits.find_first_not_of("0123456789");
    return static_cast<int>(end == std::string_view::npos ? digits.size() : end);
  };
  const std::size_t first_digit = text.find_first_of("0123456789.");
  const std::string_view number = text.substr(first_digit);
  const std::size_t point = number.find('.');
  const ShownDigits shown{count_digits(number),
                          point == std::string_view::npos ? 0 : count_digits(number.substr(point + 1))};
  char shortest[400];
  const auto written = std::to_chars(shortest, shortest + sizeof shortest, std::fabs(value), std::chars_format::fixed);
  const std::string_view plain(shortest, written.ptr);
  const std::size_t plain_point = plain.find('.');
  const int plain_decimals = plain_point == std::string_view::npos ? 0 : static_cast<int>(plain.size() - plain_point - 1);
  const bool leading_zeros = shown.integers > 1 && number.front() == '0';
  if (shown.decimals == plain_decimals && !leading_zeros) return std::nullopt;
  if (shown.integers > kMostFormatDigits || shown.decimals > kMostFormatDigits) return std::nullopt;
  return ShownDigits{leading_zeros ? shown.integers : 1, shown.decimals};
}

// One number format per shown digits, made when first needed.
class NumberFormats {
 public:
  explicit NumberFormats(lxw_workbook* workbook) : workbook_(workbook) {}
  lxw_format* For(const std::optional<ShownDigits>& digits) {
    if (!digits) return nullptr;
    lxw_format*& format = formats_[*digits];
    if (format == nullptr) {
      format = workbook_add_format(workbook_);
      std::string code(static_cast<std::size_t>(digits->integers), '0');
      if (digits->decimals > 0) code += "." + std::string(static_cast<std::size_t>(digits->decimals), '0');
      format_set_num_format(format, code.c_str());
    }
    return format;
  }

 private:
  lxw_workbook* workbook_;
  std::map<ShownDigits, lxw_format*> formats_;
};

// The text as OOXML stores it: a literal "_xHHHH_" in the text would read
// back as the character HHHH, so its underscore is itself escaped.
std::string EscapeLiteralEscapes(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '_' && i + 6 < text.size() && text[i + 1] == 'x' && text[i + 6] == '_' &&
        std::all_of(text.begin() + static_cast<std::ptrdiff_t>(i) + 2, text.begin() + static_cast<std::ptrdiff_t>(i) + 6,
                    [](unsigned char c) { return std::isxdigit(c); }))
      out += "_x005F";
    out.push_back(text[i]);
  }
  return out;
}

void Check(lxw_error error, const std::string& path, const std::string& where) {
  if (error != LXW_NO_ERROR)
    throw WorkbookError("The workbook \"" + path + "\" could not be written (" + where + ": " + lxw_strerror(error) + ").");
}

}  // namespace

std::vector<std::string> XlsxSheetNames(const std::string& path) {
  ZipArchive zip(path);
  std::vector<std::string> names;
  for (const auto& sheet : ReadParts(zip).sheets) names.push_back(sheet.name);
  return names;
}

void ReadXlsxSheet(const std::string& path, std::size_t index, bool header_row, worksheet::Worksheet& sheet) {
  ZipArchive zip(path);
  const XlsxParts parts = ReadParts(zip);
  if (index >= parts.sheets.size()) NotAWorkbook(path, "it has no sheet " + std::to_string(index + 1));
  const auto relation = parts.relations.find(parts.sheets[index].relation);
  if (relation == parts.relations.end()) NotAWorkbook(path, "sheet " + parts.sheets[index].name + " has no part");
  SharedStringsReader shared;
  if (!parts.shared_strings.empty() && zip.Has(parts.shared_strings)) shared.Parse(zip, parts.shared_strings);
  StylesReader styles;
  if (!parts.styles.empty() && zip.Has(parts.styles)) styles.Parse(zip, parts.styles);
  SheetReader reader(shared.strings, styles.digitsOfFormat, header_row, sheet);
  reader.Parse(zip, relation->second.target);
  sheet.ShrinkToFit();
}

void WriteXlsx(const std::string& path, const std::vector<const worksheet::Worksheet*>& sheets, bool header_row) {
  namespace fs = std::filesystem;
  for (const worksheet::Worksheet* sheet : sheets) {
    const bool headers = header_row && [&] {
      for (long col = 1; col <= sheet->MaxCols(); ++col)
        if (!sheet->ColumnHeaderName(col).empty()) return true;
      return false;
    }();
    if (sheet->DataRowCnt() + (headers ? 1 : 0) > kWorkbookMaxRows || sheet->DataColCnt() > kWorkbookMaxCols)
      throw WorkbookError("The worksheet \"" + sheet->Name() + "\" is larger than an Excel sheet (1,048,576 rows, " +
                          "16,384 columns) and cannot be written to \"" + path + "\".");
  }
  const fs::path target(path);
  const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
  std::string temporary = (folder / ("." + target.filename().string() + ".saving-XXXXXX")).string();
  const int fd = ::mkstemp(temporary.data());
  if (fd < 0) throw WorkbookError("The workbook \"" + path + "\" could not be written (" + std::strerror(errno) + ").");
  ::close(fd);
  const auto remove_temporary = [&temporary] {
    std::error_code ignored;
    fs::remove(temporary, ignored);
  };

  lxw_workbook_options options{};
  options.constant_memory = LXW_TRUE;
  options.use_zip64 = LXW_TRUE;
  std::string tmpdir = folder.string();
  options.tmpdir = tmpdir.data();
  lxw_workbook* workbook = workbook_new_opt(temporary.c_str(), &options);
  if (!workbook) {
    remove_temporary();
    throw WorkbookError("The workbook \"" + path + "\" could not be written.");
  }
  try {
    std::set<std::string> taken;
    NumberFormats number_formats(workbook);
    for (const worksheet::Worksheet* sheet : sheets) {
      const std::string name = ExcelSheetName(sheet->Name(), taken);
      lxw_worksheet* out = workbook_add_worksheet(workbook, name.c_str());
      if (!out) throw WorkbookError("The workbook \"" + path + "\" could not take the sheet " + name + ".");
      long cols = sheet->DataColCnt();
      lxw_row_t first = 0;
      if (header_row) {
        long last_named = 0;
        for (long col = 1; col <= sheet->MaxCols(); ++col)
          if (!sheet->ColumnHeaderName(col).empty()) last_named = col;
        if (last_named > 0) {
          cols = std::max(cols, last_named);
          for (long col = 1; col <= last_named; ++col)
            if (const std::string& header = sheet->ColumnHeaderName(col); !header.empty())
              Check(worksheet_write_string(out, 0, static_cast<lxw_col_t>(col - 1), EscapeLiteralEscapes(header).c_str(),
                                           nullptr),
                    path,
                    "header of column " + worksheet::ColumnLetters(col));
          first = 1;
        }
      }
      std::string text;
      for (long row = 1; row <= sheet->DataRowCnt(); ++row) {
        const auto out_row = static_cast<lxw_row_t>(first + row - 1);
        for (long col = 1; col <= cols; ++col) {
          const std::string_view cell = sheet->Text(row, col);
          if (cell.empty()) continue;
          const auto out_col = static_cast<lxw_col_t>(col - 1);
          if (const auto number = ExcelNumber(cell)) {
            Check(worksheet_write_number(out, out_row, out_col, *number, number_formats.For(DigitsShown(cell, *number))),
                  path, "a number");
          } else {
            text = EscapeLiteralEscapes(cell);
            const lxw_error error = worksheet_write_string(out, out_row, out_col, text.c_str(), nullptr);
            if (error == LXW_ERROR_MAX_STRING_LENGTH_EXCEEDED)
              throw WorkbookError("The cell " + worksheet::ColumnLetters(col) + std::to_string(row) + " of \"" +
                                  sheet->Name() + "\" holds more than the 32,767 characters an Excel cell takes.");
            Check(error, path, "cell " + worksheet::ColumnLetters(col) + std::to_string(row));
          }
        }
      }
    }
  } catch (...) {
    workbook_close(workbook);
    remove_temporary();
    throw;
  }
  const lxw_error closed = workbook_close(workbook);
  if (closed != LXW_NO_ERROR) {
    remove_temporary();
    Check(closed, path, "closing");
  }
  if (::rename(temporary.c_str(), path.c_str()) != 0) {
    const std::string reason = std::strerror(errno);
    remove_temporary();
    throw WorkbookError("The workbook \"" + path + "\" could not be written (" + reason + ").");
  }
}

// ---- .xls -----------------------------------------------------------------

namespace {

class XlsFile {
 public:
  explicit XlsFile(const std::string& path) : path_(path) {
    // Every Excel 97-2003 workbook is a compound document. libfreexl also
    // takes other bytes as a bare stream and trusts their sizes (32 bytes
    // can make it claim hundreds of megabytes), so those are refused first.
    static const unsigned char kCompoundSignature[8] = {0xD0, 0xCF, 0x11, 0xE0, 0xA1, 0xB1, 0x1A, 0xE1};
    unsigned char signature[8] = {};
    if (FILE* file = std::fopen(path.c_str(), "rb")) {
      const std::size_t got = std::fread(signature, 1, sizeof signature, file);
      std::fclose(file);
      if (got != sizeof signature || std::memcmp(signature, kCompoundSignature, sizeof signature) != 0)
        throw WorkbookError("\"" + path + "\" cannot be read as an Excel 97-2003 workbook (.xls): it is not one.");
    }
    const int code = freexl_open(path.c_str(), &handle_);
    if (code != FREEXL_OK) {
      freexl_close(handle_);
      handle_ = nullptr;
      throw WorkbookError("\"" + path + "\" cannot be read as an Excel 97-2003 workbook (.xls), error " +
                          std::to_string(code) + ".");
    }
  }
  ~XlsFile() {
    if (handle_) freexl_close(handle_);
  }
  XlsFile(const XlsFile&) = delete;
  XlsFile& operator=(const XlsFile&) = delete;

  const void* Handle() const { return handle_; }
  unsigned SheetCount() const {
    unsigned count = 0;
    freexl_get_info(handle_, FREEXL_BIFF_SHEET_COUNT, &count);
    return count;
  }

 private:
  std::string path_;
  const void* handle_ = nullptr;
};

}  // namespace

std::vector<std::string> XlsSheetNames(const std::string& path) {
  XlsFile file(path);
  std::vector<std::string> names;
  for (unsigned i = 0; i < file.SheetCount(); ++i) {
    const char* name = nullptr;
    freexl_get_worksheet_name(file.Handle(), static_cast<unsigned short>(i), &name);
    names.emplace_back(name ? name : "Sheet" + std::to_string(i + 1));
  }
  return names;
}

void ReadXlsSheet(const std::string& path, std::size_t index, bool header_row, worksheet::Worksheet& sheet) {
  XlsFile file(path);
  if (index >= file.SheetCount() || freexl_select_active_worksheet(file.Handle(), static_cast<unsigned short>(index)) != FREEXL_OK)
    throw WorkbookError("\"" + path + "\" has no sheet " + std::to_string(index + 1) + ".");
  unsigned rows = 0;
  unsigned short cols = 0;
  freexl_worksheet_dimensions(file.Handle(), &rows, &cols);
  for (unsigned row = 0; row < rows; ++row) {
    for (unsigned short col = 0; col < cols; ++col) {
      FreeXL_CellValue value{};
      if (freexl_get_cell_value(file.Handle(), row, col, &value) != FREEXL_OK) continue;
      std::string text;
      switch (value.type) {
        case FREEXL_CELL_INT: text = std::to_string(value.value.int_value); break;
        case FREEXL_CELL_DOUBLE: text = ShortestText(value.value.double_value); break;
        case FREEXL_CELL_TEXT:
        case FREEXL_CELL_SST_TEXT:
        case FREEXL_CELL_DATE:
        case FREEXL_CELL_DATETIME:
        case FREEXL_CELL_TIME: text = value.value.text_value ? value.value.text_value : ""; break;
        default: break;
      }
      if (header_row && row == 0) sheet.SetColumnHeader(col + 1, std::move(text));
      else if (!text.empty()) sheet.SetText(static_cast<long>(row) + (header_row ? 0 : 1), col + 1, text);
    }
  }
  sheet.ShrinkToFit();
}

// ---- any data file ----------------------------------------------------------

DataFileKind DataFileKindOf(const std::string& path) {
  std::string extension = std::filesystem::path(path).extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(), [](unsigned char c) { return std::tolower(c); });
  if (extension == ".xlsx" || extension == ".xlsm") return DataFileKind::Xlsx;
  if (extension == ".xls") return DataFileKind::Xls;
  if (extension == ".orv") return DataFileKind::Project;
  return DataFileKind::Delimited;
}

std::vector<std::string> DataFileSheetNames(const std::string& path) {
  switch (DataFileKindOf(path)) {
    case DataFileKind::Xlsx: return XlsxSheetNames(path);
    case DataFileKind::Xls: return XlsSheetNames(path);
    case DataFileKind::Project: {
      std::vector<std::string> names;
      for (const auto& entry : LoadProject(path).sheets) names.push_back(entry.sheet.Name());
      return names;
    }
    case DataFileKind::Delimited: break;
  }
  return {std::filesystem::path(path).stem().string()};
}

std::vector<std::string> ReadFirstSheet(const std::string& path, worksheet::Worksheet& sheet) {
  switch (DataFileKindOf(path)) {
    case DataFileKind::Xlsx: ReadXlsxSheet(path, 0, false, sheet); return {};
    case DataFileKind::Xls: ReadXlsSheet(path, 0, false, sheet); return {};
    case DataFileKind::Project: {
      Project project = LoadProject(path);
      for (const auto& document : project.order) {
        if (document.kind != Project::Document::Kind::Sheet) continue;
        // The cells, header names and grid size; the caller's name stays, and
        // the caret and selection start afresh as on any opened sheet.
        const std::string name = sheet.Name();
        sheet = std::move(project.sheets[document.index].sheet);
        sheet.SetName(name);
        sheet.Selection = {};
        sheet.ActiveRow = 1;
        sheet.ActiveCol = 1;
        return {};
      }
      throw WorkbookError("The project \"" + path + "\" holds no worksheet.");
    }
    case DataFileKind::Delimited: return ReadDelimitedFile(path, sheet);
  }
  return {};
}

}  // namespace orvik::formats
