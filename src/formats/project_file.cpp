// Project files: an SQLite database whose header carries the application id
// 'ORVK' and the format version (user_version). Worksheet cells are stored
// per column in blocks of rows, each block one blob of length-prefixed texts,
// so a million-row sheet is a few thousand blob rows rather than millions of
// table rows; the result windows are stored field by field, each with the run
// that made it (its command, selection, dialog answers and data sheet).
#include "formats/project_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>

#include "formats/byte_codec.h"
#include "formats/chart_presentation_text.h"
#include "formats/sqlite_db.h"

namespace orvik::formats {

namespace {

constexpr std::int64_t kApplicationId = 0x4F52564B;  // "ORVK"
// Rows per stored cell block: large enough that a million-row column is a
// hundred blobs, small enough that one blob stays a few hundred kilobytes.
constexpr long kRowsPerBlock = 8192;
// Limits that no real project reaches; a file beyond them is damaged, and
// checking them keeps a damaged file from asking for absurd memory.
// kMaxCellSlots bounds the memory that stored rows claim without bytes of
// the file behind them (empty rows skipped over, columns, header names), in
// units of one cell's eight bytes; stored cell texts take at least a byte of
// the file each, so they cost memory in proportion to the file's size.
constexpr long kMaxGridRows = worksheet::kGridMaxRows;
constexpr long kMaxGridCols = worksheet::kGridMaxCols;
constexpr std::uint64_t kMaxCellSlots = 1ULL << 26;

// header_names and cell_blocks hold the cells of two kinds of sheet under one
// numbering: the worksheet windows (sheets, ids from 0) and the data sheets
// the result windows' runs read (run_data, ids following the sheets'), so
// both are written and read by the same code. A data sheet shared by several
// runs is stored once; it is no window of its own.
const char* const kSchema = R"sql(
CREATE TABLE project(key TEXT PRIMARY KEY, value) WITHOUT ROWID;
CREATE TABLE documents(position INTEGER PRIMARY KEY, kind TEXT NOT NULL, item INTEGER NOT NULL,
  x INTEGER, y INTEGER, width INTEGER, height INTEGER, minimized INTEGER, maximized INTEGER);
CREATE TABLE sheets(id INTEGER PRIMARY KEY, name TEXT NOT NULL, max_rows INTEGER, max_cols INTEGER,
  active_row INTEGER, active_col INTEGER, block_selected INTEGER,
  sel_col INTEGER, sel_col2 INTEGER, sel_row INTEGER, sel_row2 INTEGER);
CREATE TABLE header_names(sheet INTEGER, col INTEGER, name TEXT NOT NULL);
CREATE TABLE cell_blocks(sheet INTEGER, col INTEGER, first_row INTEGER, row_count INTEGER, texts BLOB,
  check_value INTEGER);
CREATE TABLE cell_formats(sheet INTEGER, seq INTEGER, top INTEGER, left_col INTEGER, bottom INTEGER,
  right_col INTEGER, bold INTEGER, italic INTEGER, underline INTEGER, alignment INTEGER,
  foreground INTEGER, background INTEGER);
CREATE TABLE results(id INTEGER PRIMARY KEY, kind TEXT NOT NULL, title TEXT NOT NULL, command_key TEXT NOT NULL,
  has_table INTEGER, columns BLOB, table_background INTEGER);
CREATE TABLE result_rows(result INTEGER, seq INTEGER, cells BLOB);
CREATE TABLE result_row_styles(result INTEGER, seq INTEGER, background INTEGER, foreground INTEGER, bold INTEGER);
CREATE TABLE charts(result INTEGER, seq INTEGER, name TEXT, title TEXT, x_title TEXT, y_title TEXT, y2_title TEXT,
  categories BLOB);
CREATE TABLE chart_series(result INTEGER, chart INTEGER, seq INTEGER, name TEXT, type INTEGER, x BLOB, y BLOB,
  marked BLOB, color INTEGER, second_axis INTEGER, style INTEGER);
CREATE TABLE chart_lines(result INTEGER, chart INTEGER, seq INTEGER, orientation INTEGER, value BLOB, label TEXT,
  color INTEGER, dashed INTEGER);
CREATE TABLE chart_labels(result INTEGER, chart INTEGER, seq INTEGER, text TEXT, x BLOB, y BLOB);
CREATE TABLE chart_flags(result INTEGER, chart INTEGER, flags INTEGER);
CREATE TABLE run_data(id INTEGER PRIMARY KEY, name TEXT NOT NULL, max_rows INTEGER, max_cols INTEGER);
CREATE TABLE runs(result INTEGER PRIMARY KEY, command_key TEXT NOT NULL, data INTEGER, block_selected INTEGER,
  sel_col INTEGER, sel_col2 INTEGER, sel_row INTEGER, sel_row2 INTEGER);
CREATE TABLE run_settings(result INTEGER, seq INTEGER, dialog TEXT NOT NULL, control TEXT NOT NULL,
  value TEXT NOT NULL);
CREATE TABLE sheet_designs(sheet INTEGER PRIMARY KEY, design TEXT NOT NULL);
CREATE TABLE chart_looks(result INTEGER, chart TEXT NOT NULL, settings TEXT NOT NULL);
)sql";
// Tables that files of any format may lack; a missing one reads as empty.
const char* const kOptionalTables[] = {"chart_looks", "chart_flags"};

// The first format version with the runs of the result windows; older files
// open with windows whose making is not known.
constexpr int kFirstVersionWithRuns = 2;
// The first format version with the series' style: bit 1 stepped, bit 2
// dashed. Older files' series are plain lines.
constexpr int kFirstVersionWithSeriesStyle = 3;
// The first format version with the designs of design sheets (and of the
// data sheets runs read); older files hold plain worksheets only.
constexpr int kFirstVersionWithDesigns = 4;
constexpr std::int64_t kSteppedSeries = 1;
constexpr std::int64_t kDashedSeries = 2;
// A smooth curve (no point markers); files before it have none.
constexpr std::int64_t kCurveSeries = 4;
// The table chart_flags, which files before it lack: per chart, bit 1 a
// legend of every series, bit 2 the categories listed in reports. A chart
// without a row has neither.
constexpr std::int64_t kSeriesLegendChart = 1;
constexpr std::int64_t kReportsCategoriesChart = 2;

// ---- writing --------------------------------------------------------------

std::string TextList(const std::vector<std::string>& texts) {
  ByteWriter writer;
  writer.Unsigned(texts.size());
  for (const auto& text : texts) writer.Text(text);
  return writer.Bytes();
}

std::string DoubleList(const std::vector<double>& values) {
  ByteWriter writer;
  for (double value : values) writer.Double(value);
  return writer.Bytes();
}

std::string WholeList(const std::vector<long>& values) {
  ByteWriter writer;
  writer.Unsigned(values.size());
  for (long value : values) writer.Unsigned(static_cast<std::uint64_t>(value));
  return writer.Bytes();
}

// A series' marked points, then their codes when it has them (files of
// earlier versions end after the points).
std::string MarkedList(const shell::PlotSeries& series) {
  std::string bytes = WholeList(series.marked);
  if (!series.markCodes.empty()) bytes += TextList(series.markCodes);
  return bytes;
}

std::string OneDouble(double value) {
  ByteWriter writer;
  writer.Double(value);
  return writer.Bytes();
}

std::optional<std::uint32_t> RgbValue(const std::optional<shell::Rgb>& rgb) {
  if (!rgb) return std::nullopt;
  return rgb->value;
}

void BindFlag(SqliteStatement& statement, int index, const std::optional<bool>& flag) {
  if (flag) statement.Bind(index, std::int64_t{*flag});
  else statement.BindNull(index);
}

// The selection's five fields into `first` and the four parameters after it.
void BindSelection(SqliteStatement& statement, int first, const worksheet::GridSelection& selection) {
  statement.Bind(first, std::int64_t{selection.IsBlockSelected});
  statement.Bind(first + 1, std::int64_t{selection.SelBlockCol});
  statement.Bind(first + 2, std::int64_t{selection.SelBlockCol2});
  statement.Bind(first + 3, std::int64_t{selection.SelBlockRow});
  statement.Bind(first + 4, std::int64_t{selection.SelBlockRow2});
}

// The header names and cells of `sheet`, stored under `id`.
void WriteCells(SqliteDb& db, std::int64_t id, const worksheet::Worksheet& sheet) {
  SqliteStatement header(db, "INSERT INTO header_names VALUES(?,?,?)");
  for (long col = 1; col <= sheet.MaxCols(); ++col) {
    const std::string& name = sheet.ColumnHeaderName(col);
    if (name.empty()) continue;
    header.Bind(1, id);
    header.Bind(2, std::int64_t{col});
    header.Bind(3, name);
    header.Run();
  }

  SqliteStatement block(db, "INSERT INTO cell_blocks VALUES(?,?,?,?,?,?)");
  ByteWriter texts;
  for (long col = 1; col <= sheet.DataColCnt(); ++col) {
    long last = 0;
    for (long row = sheet.DataRowCnt(); row >= 1 && last == 0; --row)
      if (!sheet.Text(row, col).empty()) last = row;
    for (long first = 1; first <= last; first += kRowsPerBlock) {
      const long count = std::min(kRowsPerBlock, last - first + 1);
      texts.Clear();
      bool any = false;
      for (long row = first; row < first + count; ++row) {
        const std::string_view text = sheet.Text(row, col);
        any |= !text.empty();
        texts.Text(text);
      }
      if (!any) continue;  // a run of empty rows costs nothing
      block.Bind(1, id);
      block.Bind(2, std::int64_t{col});
      block.Bind(3, std::int64_t{first});
      block.Bind(4, std::int64_t{count});
      block.BindBlob(5, texts.Bytes());
      block.Bind(6, static_cast<std::int64_t>(CheckValue(texts.Bytes())));
      block.Run();
    }
  }
  if (const auto& design = sheet.Design()) {
    SqliteStatement insert(db, "INSERT INTO sheet_designs VALUES(?,?)");
    insert.Bind(1, id);
    insert.Bind(2, worksheet::DesignText(*design));
    insert.Run();
  }
}

void WriteSheet(SqliteDb& db, std::int64_t id, const ProjectSheet& entry) {
  const worksheet::Worksheet& sheet = entry.sheet;
  SqliteStatement insert(db, "INSERT INTO sheets VALUES(?,?,?,?,?,?,?,?,?,?,?)");
  insert.Bind(1, id);
  insert.Bind(2, sheet.Name());
  insert.Bind(3, std::int64_t{sheet.MaxRows()});
  insert.Bind(4, std::int64_t{sheet.MaxCols()});
  insert.Bind(5, std::int64_t{sheet.ActiveRow});
  insert.Bind(6, std::int64_t{sheet.ActiveCol});
  BindSelection(insert, 7, sheet.Selection);
  insert.Run();
  WriteCells(db, id, sheet);

  SqliteStatement format(db, "INSERT INTO cell_formats VALUES(?,?,?,?,?,?,?,?,?,?,?,?)");
  std::int64_t seq = 0;
  for (const auto& run : entry.formats) {
    format.Bind(1, id);
    format.Bind(2, seq++);
    format.Bind(3, std::int64_t{run.block.top});
    format.Bind(4, std::int64_t{run.block.left});
    format.Bind(5, std::int64_t{run.block.bottom});
    format.Bind(6, std::int64_t{run.block.right});
    BindFlag(format, 7, run.change.bold);
    BindFlag(format, 8, run.change.italic);
    BindFlag(format, 9, run.change.underline);
    if (run.change.alignment) format.Bind(10, static_cast<std::int64_t>(*run.change.alignment));
    else format.BindNull(10);
    format.Bind(11, run.change.foreground);
    format.Bind(12, run.change.background);
    format.Run();
  }
}

void WriteResult(SqliteDb& db, std::int64_t id, const shell::ResultWindow& window) {
  SqliteStatement insert(db, "INSERT INTO results VALUES(?,?,?,?,?,?,?)");
  insert.Bind(1, id);
  insert.Bind(2, std::string_view(shell::WindowKindName(window.kind)));
  insert.Bind(3, window.title);
  insert.Bind(4, window.commandKey);
  insert.Bind(5, std::int64_t{window.table.has_value()});
  if (window.table) {
    insert.BindBlob(6, TextList(window.table->columns));
    insert.Bind(7, RgbValue(window.table->background));
  } else {
    insert.BindNull(6);
    insert.BindNull(7);
  }
  insert.Run();

  if (window.table) {
    SqliteStatement row(db, "INSERT INTO result_rows VALUES(?,?,?)");
    std::int64_t seq = 0;
    for (std::size_t r = 0; r < window.table->RowCount(); ++r) {
      row.Bind(1, id);
      row.Bind(2, seq++);
      row.BindBlob(3, TextList(window.table->Row(r)));
      row.Run();
    }
    // Only the rows drawn in a style of their own, by row number.
    SqliteStatement style(db, "INSERT INTO result_row_styles VALUES(?,?,?,?,?)");
    for (const auto& [styled_row, s] : window.table->StyledRows()) {
      style.Bind(1, id);
      style.Bind(2, static_cast<std::int64_t>(styled_row));
      style.Bind(3, RgbValue(s.background));
      style.Bind(4, RgbValue(s.foreground));
      style.Bind(5, std::int64_t{s.bold});
      style.Run();
    }
  }

  SqliteStatement chart(db, "INSERT INTO charts VALUES(?,?,?,?,?,?,?,?)");
  SqliteStatement series(db, "INSERT INTO chart_series VALUES(?,?,?,?,?,?,?,?,?,?,?)");
  SqliteStatement line(db, "INSERT INTO chart_lines VALUES(?,?,?,?,?,?,?,?)");
  SqliteStatement label(db, "INSERT INTO chart_labels VALUES(?,?,?,?,?,?)");
  std::int64_t chart_seq = 0;
  for (const auto& c : window.charts) {
    chart.Bind(1, id);
    chart.Bind(2, chart_seq);
    chart.Bind(3, c.name);
    chart.Bind(4, c.title);
    chart.Bind(5, c.xTitle);
    chart.Bind(6, c.yTitle);
    chart.Bind(7, c.y2Title);
    chart.BindBlob(8, TextList(c.categories));
    chart.Run();
    if (c.seriesLegend || c.reportsCategories) {
      SqliteStatement flags(db, "INSERT INTO chart_flags VALUES(?,?,?)");
      flags.Bind(1, id);
      flags.Bind(2, chart_seq);
      flags.Bind(3, (c.seriesLegend ? kSeriesLegendChart : 0) | (c.reportsCategories ? kReportsCategoriesChart : 0));
      flags.Run();
    }
    std::int64_t seq = 0;
    for (const auto& s : c.series) {
      series.Bind(1, id);
      series.Bind(2, chart_seq);
      series.Bind(3, seq++);
      series.Bind(4, s.name);
      series.Bind(5, static_cast<std::int64_t>(s.type));
      const std::string x = DoubleList(s.x.Values()), y = DoubleList(s.y.Values()), marked = MarkedList(s);
      series.BindBlob(6, x);
      series.BindBlob(7, y);
      series.BindBlob(8, marked);
      series.Bind(9, RgbValue(s.color));
      series.Bind(10, std::int64_t{s.onSecondAxis});
      series.Bind(11, (s.stepped ? kSteppedSeries : 0) | (s.dashed ? kDashedSeries : 0) | (s.curve ? kCurveSeries : 0));
      series.Run();
    }
    seq = 0;
    for (const auto& l : c.lines) {
      line.Bind(1, id);
      line.Bind(2, chart_seq);
      line.Bind(3, seq++);
      line.Bind(4, static_cast<std::int64_t>(l.orientation));
      const std::string value = OneDouble(l.value);
      line.BindBlob(5, value);
      line.Bind(6, l.label);
      line.Bind(7, RgbValue(l.color));
      line.Bind(8, std::int64_t{l.dashed});
      line.Run();
    }
    seq = 0;
    for (const auto& t : c.labels) {
      label.Bind(1, id);
      label.Bind(2, chart_seq);
      label.Bind(3, seq++);
      label.Bind(4, t.text);
      const std::string x = t.x ? OneDouble(*t.x) : std::string(), y = t.y ? OneDouble(*t.y) : std::string();
      if (t.x) label.BindBlob(5, x);
      else label.BindNull(5);
      if (t.y) label.BindBlob(6, y);
      else label.BindNull(6);
      label.Run();
    }
    ++chart_seq;
  }
}

// The runs of the result windows, with the data sheets they read. A data
// sheet is written once, at the first run that reads it, however many
// windows share it; its ids follow the worksheet windows'.
// The look the user gave each restyled chart, by window and chart name.
void WriteChartLooks(SqliteDb& db, const Project& project) {
  SqliteStatement insert(db, "INSERT INTO chart_looks VALUES(?,?,?)");
  for (std::size_t i = 0; i < project.results.size(); ++i)
    for (const shell::ChartPresentation& look : project.results[i].window.presentation) {
      insert.Bind(1, static_cast<std::int64_t>(i));
      insert.Bind(2, look.chart);
      insert.Bind(3, PresentationText(look));
      insert.Run();
    }
}

void WriteRuns(SqliteDb& db, const Project& project) {
  SqliteStatement data(db, "INSERT INTO run_data VALUES(?,?,?,?)");
  SqliteStatement insert(db, "INSERT INTO runs VALUES(?,?,?,?,?,?,?,?)");
  SqliteStatement setting(db, "INSERT INTO run_settings VALUES(?,?,?,?,?)");
  std::map<const worksheet::Worksheet*, std::int64_t> data_ids;
  for (std::size_t i = 0; i < project.results.size(); ++i) {
    const shell::CommandRun* run = project.results[i].window.run.get();
    if (run == nullptr) continue;
    const auto result = static_cast<std::int64_t>(i);
    insert.Bind(1, result);
    insert.Bind(2, run->key);
    if (run->data) {
      const auto next = static_cast<std::int64_t>(project.sheets.size() + data_ids.size());
      const auto [entry, added] = data_ids.try_emplace(run->data.get(), next);
      if (added) {
        data.Bind(1, next);
        data.Bind(2, run->data->Name());
        data.Bind(3, std::int64_t{run->data->MaxRows()});
        data.Bind(4, std::int64_t{run->data->MaxCols()});
        data.Run();
        WriteCells(db, next, *run->data);
      }
      insert.Bind(3, entry->second);
    } else {
      insert.BindNull(3);
    }
    BindSelection(insert, 4, run->selection);
    insert.Run();
    std::int64_t seq = 0;
    for (const shell::ControlSetting& s : run->settings) {
      setting.Bind(1, result);
      setting.Bind(2, seq++);
      setting.Bind(3, s.dialog);
      setting.Bind(4, s.control);
      setting.Bind(5, s.value);
      setting.Run();
    }
  }
}

void WriteProject(SqliteDb& db, const Project& project, const std::function<void(SaveStage)>& progress) {
  // The file is a temporary that nobody else sees until it is complete, so
  // SQLite's journal would only protect what the rename already protects.
  db.Exec("PRAGMA page_size=65536; PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF; PRAGMA locking_mode=EXCLUSIVE;");
  db.Exec(("PRAGMA application_id=" + std::to_string(kApplicationId) +
           "; PRAGMA user_version=" + std::to_string(kProjectFormatVersion) + ";")
              .c_str());
  db.Exec("BEGIN");
  db.Exec(kSchema);
  {
    SqliteStatement meta(db, "INSERT INTO project VALUES(?,?)");
    meta.Bind(1, std::string_view("worksheet_counter"));
    meta.Bind(2, std::int64_t{project.worksheetCounter});
    meta.Run();
    if (!project.options.empty()) {
      // Dialog, control and value of each option in turn; files without
      // the key hold none, and readers that do not know it pass it by.
      std::vector<std::string> triples;
      for (const shell::ControlSetting& option : project.options)
        triples.insert(triples.end(), {option.dialog, option.control, option.value});
      meta.Bind(1, std::string_view("options"));
      meta.BindBlob(2, TextList(triples));
      meta.Run();
    }
    meta.Bind(1, std::string_view("active"));
    if (project.active) meta.Bind(2, static_cast<std::int64_t>(*project.active));
    else meta.BindNull(2);
    meta.Run();
    meta.Bind(1, std::string_view("writer"));
    meta.Bind(2, std::string_view("Orvik 2.0"));
    meta.Run();
  }
  for (std::size_t i = 0; i < project.sheets.size(); ++i) WriteSheet(db, static_cast<std::int64_t>(i), project.sheets[i]);
  if (progress) progress(SaveStage::SheetsWritten);
  for (std::size_t i = 0; i < project.results.size(); ++i)
    WriteResult(db, static_cast<std::int64_t>(i), project.results[i].window);
  WriteRuns(db, project);
  WriteChartLooks(db, project);
  if (progress) progress(SaveStage::ResultsWritten);

  SqliteStatement document(db, "INSERT INTO documents VALUES(?,?,?,?,?,?,?,?,?)");
  std::int64_t position = 0;
  for (const auto& entry : project.order) {
    const bool is_sheet = entry.kind == Project::Document::Kind::Sheet;
    const auto& placement = is_sheet ? project.sheets.at(entry.index).placement : project.results.at(entry.index).placement;
    document.Bind(1, position++);
    document.Bind(2, std::string_view(is_sheet ? "sheet" : "result"));
    document.Bind(3, static_cast<std::int64_t>(entry.index));
    if (placement) {
      document.Bind(4, std::int64_t{placement->x});
      document.Bind(5, std::int64_t{placement->y});
      document.Bind(6, std::int64_t{placement->width});
      document.Bind(7, std::int64_t{placement->height});
      document.Bind(8, std::int64_t{placement->minimized});
      document.Bind(9, std::int64_t{placement->maximized});
    }
    document.Run();
  }
  db.Exec("COMMIT");
}

std::string SystemError(const std::string& what) { return what + ": " + std::strerror(errno); }

// Flushes a file or folder to the disk.
bool SyncPath(const std::string& path, int flags) {
  const int fd = ::open(path.c_str(), flags | O_CLOEXEC);
  if (fd < 0) return false;
  const bool ok = ::fsync(fd) == 0;
  ::close(fd);
  return ok;
}

// ---- reading --------------------------------------------------------------

[[noreturn]] void Damaged(const std::string& path, const std::string& detail) {
  throw ProjectFileError("The project file \"" + path + "\" is damaged and cannot be opened (" + detail + ").");
}

std::uint32_t BigEndian32(const unsigned char* bytes) {
  return (std::uint32_t{bytes[0]} << 24) | (std::uint32_t{bytes[1]} << 16) | (std::uint32_t{bytes[2]} << 8) | bytes[3];
}

// Checks the file before SQLite sees it, from the 100 bytes of its header:
// an SQLite database, of this application, of a version this program reads,
// and as long as the header says.
void CheckHeader(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw ProjectFileError("The project file \"" + path + "\" could not be opened: " + std::strerror(errno) + ".");
  unsigned char header[100] = {};
  in.read(reinterpret_cast<char*>(header), sizeof header);
  const auto got = static_cast<std::size_t>(in.gcount());
  static const char kMagic[] = "SQLite format 3";  // followed by a NUL byte
  const std::size_t magic_bytes = std::min<std::size_t>(got, sizeof kMagic);
  const bool magic = got > 0 && std::memcmp(header, kMagic, magic_bytes) == 0;
  if (!magic) throw ProjectFileError("\"" + path + "\" is not an Orvik project file.");
  if (got < sizeof header)
    throw ProjectFileError("The project file \"" + path + "\" is incomplete: it ends after " + std::to_string(got) +
                           " bytes. It may have been cut short while it was copied or saved.");
  if (BigEndian32(header + 68) != static_cast<std::uint32_t>(kApplicationId))
    throw ProjectFileError("\"" + path + "\" is not an Orvik project file.");
  const auto version = static_cast<std::int32_t>(BigEndian32(header + 60));
  if (version > kProjectFormatVersion)
    throw ProjectFileError("The project file \"" + path + "\" was saved by a newer version of Orvik (project format " +
                           std::to_string(version) + "); this version reads project formats up to " +
                           std::to_string(kProjectFormatVersion) + ".");
  if (version < 1) Damaged(path, "no format version");
  std::uint32_t page_size = (std::uint32_t{header[16]} << 8) | header[17];
  if (page_size == 1) page_size = 65536;
  const std::uint32_t page_count = BigEndian32(header + 28);
  // The page count in the header is valid when the change counter beside it matches.
  if (BigEndian32(header + 24) == BigEndian32(header + 92) && page_count > 0) {
    std::error_code error;
    const auto size = std::filesystem::file_size(path, error);
    if (!error && size < std::uint64_t{page_size} * page_count)
      throw ProjectFileError("The project file \"" + path + "\" is incomplete: it holds " + std::to_string(size) +
                             " of its " + std::to_string(std::uint64_t{page_size} * page_count) +
                             " bytes. It may have been cut short while it was copied or saved.");
  }
}

// Limits of a project's opening. SQLite keeps no string or blob longer than
// kMaxValueBytes (a stored block of 8,192 cells stays far below), and the
// whole opening, integrity check included, must end within kOpenBudget:
// a legitimate project of a million rows opens in seconds.
constexpr int kMaxValueBytes = 1 << 29;
constexpr auto kOpenBudget = std::chrono::seconds(60);

// Sets a connection up for a file that may have been crafted: the schema is
// not trusted (no functions or virtual tables reached from it), views and
// triggers are off, the database cannot be changed, values are bounded in
// length, and a progress handler interrupts any statement once `deadline`
// has passed.
void HardenForReading(SqliteDb& db, std::chrono::steady_clock::time_point* deadline) {
  sqlite3* handle = db.Handle();
  sqlite3_db_config(handle, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
  sqlite3_db_config(handle, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
  sqlite3_db_config(handle, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
  sqlite3_db_config(handle, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
  sqlite3_db_config(handle, SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0, nullptr);
  sqlite3_limit(handle, SQLITE_LIMIT_LENGTH, kMaxValueBytes);
  sqlite3_limit(handle, SQLITE_LIMIT_SQL_LENGTH, 1 << 16);
  sqlite3_limit(handle, SQLITE_LIMIT_EXPR_DEPTH, 100);
  sqlite3_limit(handle, SQLITE_LIMIT_COMPOUND_SELECT, 10);
  sqlite3_limit(handle, SQLITE_LIMIT_ATTACHED, 0);
  sqlite3_progress_handler(
      handle, 10000,
      [](void* limit) {
        return std::chrono::steady_clock::now() > *static_cast<std::chrono::steady_clock::time_point*>(limit) ? 1 : 0;
      },
      deadline);
}

// The columns of `table` as SQLite reports them (hidden ones included, so a
// generated column shows): name, declared type, not-null, default, key.
std::vector<std::string> TableColumns(SqliteDb& db, const std::string& table) {
  std::vector<std::string> columns;
  SqliteStatement info(db, "SELECT name, type, \"notnull\", dflt_value, pk, hidden FROM pragma_table_xinfo(?1)");
  info.Bind(1, table);
  while (info.Step()) {
    std::string column;
    for (int i = 0; i < 6; ++i) column.append(info.IsNull(i) ? "<null>" : std::string(info.Text(i))).push_back('|');
    columns.push_back(std::move(column));
  }
  return columns;
}

bool HasTable(SqliteDb& db, const std::string& table) {
  SqliteStatement found(db, "SELECT 1 FROM sqlite_schema WHERE type = 'table' AND name = ?1");
  found.Bind(1, table);
  return found.Step();
}

// Checks that the file holds the tables this program writes and nothing
// else: each a plain table with exactly the columns of kSchema (format 1
// lacks the three tables of the runs, formats 1 and 2 the series' style
// column), besides the indexes SQLite makes for
// their keys. A view, trigger, virtual table or any other object would run
// code of the file's choosing as it is read, so such a file is refused.
void CheckSchema(const std::string& path, SqliteDb& db, std::int64_t format) {
  const bool with_runs = format >= kFirstVersionWithRuns;
  SqliteDb reference(":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
  reference.Exec(kSchema);
  std::map<std::string, std::vector<std::string>> expected;
  {
    SqliteStatement tables(reference, "SELECT name FROM sqlite_schema WHERE type = 'table'");
    while (tables.Step()) {
      const std::string name(tables.Text(0));
      if (!with_runs && (name == "runs" || name == "run_settings" || name == "run_data")) continue;
      if (format < kFirstVersionWithDesigns && name == "sheet_designs") continue;
      expected[name] = TableColumns(reference, name);
    }
  }
  if (format < kFirstVersionWithSeriesStyle) expected["chart_series"].pop_back();  // the style column
  std::size_t tables_found = 0;
  SqliteStatement objects(db, "SELECT type, name, tbl_name, sql FROM sqlite_schema");
  while (objects.Step()) {
    const std::string type(objects.Text(0)), name(objects.Text(1)), table(objects.Text(2));
    const std::string sql(objects.Text(3));
    if (type == "index" && name.rfind("sqlite_autoindex_", 0) == 0 && objects.IsNull(3) && expected.count(table))
      continue;
    if (type != "table" || !expected.count(name) || sql.rfind("CREATE TABLE ", 0) != 0)
      Damaged(path, "it holds the " + type + " \"" + name + "\", which no Orvik project has");
    ++tables_found;
  }
  for (const char* optional : kOptionalTables)
    if (!HasTable(db, optional)) expected.erase(optional);
  if (tables_found != expected.size()) Damaged(path, "tables are missing");
  for (const auto& [name, columns] : expected)
    if (TableColumns(db, name) != columns) Damaged(path, "the table \"" + name + "\" has other columns");
}

class ProjectReader {
 public:
  ProjectReader(const std::string& path, SqliteDb& db) : path_(path), db_(db) {}

  Project Read() {
    Project project;
    std::int64_t format = 0;
    {
      SqliteStatement version(db_, "PRAGMA user_version");
      if (version.Step()) format = version.Int(0);
    }
    const bool with_runs = format >= kFirstVersionWithRuns;
    ReadMeta(project);
    ReadSheets(project, with_runs);
    if (format >= kFirstVersionWithDesigns) ReadDesigns(project);
    ReadResults(project, format >= kFirstVersionWithSeriesStyle);
    if (with_runs) ReadRuns(project);
    if (HasTable(db_, "chart_looks")) ReadChartLooks(project);
    ReadOrder(project);
    return project;
  }

 private:
  [[noreturn]] void Bad(const std::string& detail) const { Damaged(path_, detail); }

  std::int64_t Within(std::int64_t value, std::int64_t low, std::int64_t high, const char* what) const {
    if (value < low || value > high) Bad(std::string("bad ") + what);
    return value;
  }

  std::optional<shell::Rgb> Color(SqliteStatement& s, int column) const {
    if (s.IsNull(column)) return std::nullopt;
    return shell::Rgb{static_cast<std::uint32_t>(Within(s.Int(column), 0, 0xFFFFFF, "colour"))};
  }

  std::vector<std::string> Texts(std::string_view blob, const char* what) const {
    ByteReader reader(blob);
    const std::uint64_t count = reader.Unsigned();
    // Every text takes at least one byte, which bounds a damaged count.
    if (reader.Failed() || count > reader.Remaining()) Bad(what);
    std::vector<std::string> texts;
    texts.reserve(count);
    for (std::uint64_t i = 0; i < count; ++i) texts.emplace_back(reader.Text());
    if (reader.Failed() || !reader.AtEnd()) Bad(what);
    return texts;
  }

  std::vector<double> Doubles(std::string_view blob, const char* what) const {
    if (blob.size() % 8 != 0) Bad(what);
    ByteReader reader(blob);
    std::vector<double> values(blob.size() / 8);
    for (double& value : values) value = reader.Double();
    return values;
  }

  double OneValue(std::string_view blob, const char* what) const {
    if (blob.size() != 8) Bad(what);
    return ByteReader(blob).Double();
  }

  // The selection stored in `first` and the four columns after it.
  worksheet::GridSelection ReadSelection(SqliteStatement& s, int first) const {
    return {s.Int(first) != 0, static_cast<long>(Within(s.Int(first + 1), -1, kMaxGridCols, "selection")),
            static_cast<long>(Within(s.Int(first + 2), -1, kMaxGridCols, "selection")),
            static_cast<long>(Within(s.Int(first + 3), -1, kMaxGridRows, "selection")),
            static_cast<long>(Within(s.Int(first + 4), -1, kMaxGridRows, "selection"))};
  }

  // Counts `slots` more cells' worth of memory that stored rows claim without
  // bytes of the file behind them, and refuses the file beyond what any real
  // project takes: a few damaged rows must not ask for gigabytes.
  void Spend(std::uint64_t slots) {
    spent_ += slots;
    if (spent_ > kMaxCellSlots) Bad("too many cells");
  }

  void ReadMeta(Project& project) {
    SqliteStatement meta(db_, "SELECT key, value FROM project");
    bool counter = false;
    while (meta.Step()) {
      const std::string_view key = meta.Text(0);
      if (key == "worksheet_counter") {
        project.worksheetCounter = static_cast<int>(Within(meta.Int(1), 0, 1 << 30, "worksheet counter"));
        counter = true;
      } else if (key == "active" && !meta.IsNull(1)) {
        project.active = static_cast<std::size_t>(Within(meta.Int(1), 0, 1 << 30, "active window"));
      } else if (key == "options") {
        const std::vector<std::string> triples = Texts(meta.Blob(1), "options");
        if (triples.size() % 3 != 0) Bad("options");
        for (std::size_t i = 0; i < triples.size(); i += 3)
          project.options.push_back({triples[i], triples[i + 1], triples[i + 2]});
      }
    }
    if (!counter) Bad("no worksheet counter");
  }

  void ReadSheets(Project& project, bool with_runs) {
    SqliteStatement sheets(db_, "SELECT * FROM sheets ORDER BY id");
    while (sheets.Step()) {
      if (sheets.Int(0) != static_cast<std::int64_t>(project.sheets.size())) Bad("sheet numbering");
      const long rows = static_cast<long>(Within(sheets.Int(2), 1, kMaxGridRows, "sheet size"));
      const long cols = static_cast<long>(Within(sheets.Int(3), 1, kMaxGridCols, "sheet size"));
      ProjectSheet entry{worksheet::Worksheet(std::string(sheets.Text(1)), rows, cols), {}, {}};
      worksheet::Worksheet& sheet = entry.sheet;
      sheet.ActiveRow = static_cast<long>(Within(sheets.Int(4), 1, kMaxGridRows, "caret"));
      sheet.ActiveCol = static_cast<long>(Within(sheets.Int(5), 1, kMaxGridCols, "caret"));
      sheet.Selection = ReadSelection(sheets, 6);
      project.sheets.push_back(std::move(entry));
    }
    if (with_runs) {
      SqliteStatement data(db_, "SELECT id, name, max_rows, max_cols FROM run_data ORDER BY id");
      while (data.Step()) {
        if (data.Int(0) != static_cast<std::int64_t>(project.sheets.size() + data_sheets_.size()))
          Bad("run data numbering");
        data_sheets_.emplace_back(std::string(data.Text(1)),
                                  static_cast<long>(Within(data.Int(2), 1, kMaxGridRows, "run data size")),
                                  static_cast<long>(Within(data.Int(3), 1, kMaxGridCols, "run data size")));
      }
    }

    // Header names in column order, so each sheet's list grows once to its last.
    SqliteStatement headers(db_, "SELECT sheet, col, name FROM header_names ORDER BY sheet, col");
    std::pair<std::int64_t, long> previous{-1, 0};
    while (headers.Step()) {
      worksheet::Worksheet& sheet = CellsAt(project, headers.Int(0));
      const long col = static_cast<long>(Within(headers.Int(1), 1, sheet.MaxCols(), "header column"));
      Spend(4 * static_cast<std::uint64_t>(col - (previous.first == headers.Int(0) ? previous.second : 0)));
      previous = {headers.Int(0), col};
      sheet.SetColumnHeader(col, std::string(headers.Text(2)));
    }

    // Blocks in column order, so each column fills from its top.
    SqliteStatement blocks(db_, "SELECT sheet, col, first_row, row_count, texts, check_value FROM cell_blocks "
                                "ORDER BY sheet, col, first_row");
    std::map<std::pair<std::int64_t, std::int64_t>, std::int64_t> column_ends;
    while (blocks.Step()) {
      worksheet::Worksheet& sheet = CellsAt(project, blocks.Int(0));
      const long col = static_cast<long>(Within(blocks.Int(1), 1, sheet.MaxCols(), "cell column"));
      const long first = static_cast<long>(Within(blocks.Int(2), 1, sheet.MaxRows(), "cell row"));
      const long count = static_cast<long>(Within(blocks.Int(3), 1, sheet.MaxRows() - first + 1, "cell rows"));
      std::int64_t& end = column_ends[{blocks.Int(0), col}];
      if (first <= end) Bad("overlapping cells");
      // Each text takes at least a byte; the rows skipped before the block
      // and new columns (sixteen cells' worth each) have no bytes behind them.
      if (static_cast<std::uint64_t>(count) > blocks.Blob(4).size()) Bad("cell texts");
      Spend(static_cast<std::uint64_t>(first - 1 - end + 16 * std::max(0L, col - sheet.DataColCnt())));
      end = first + count - 1;
      if (static_cast<std::uint64_t>(blocks.Int(5)) != CheckValue(blocks.Blob(4))) Bad("cell texts altered");
      ByteReader reader(blocks.Blob(4));
      for (long row = first; row < first + count; ++row) {
        const std::string_view text = reader.Text();
        if (reader.Failed()) Bad("cell texts");
        if (!text.empty()) sheet.SetText(row, col, text);
      }
      if (!reader.AtEnd()) Bad("cell texts");
    }
    for (auto& entry : project.sheets) entry.sheet.ShrinkToFit();
    for (auto& sheet : data_sheets_) sheet.ShrinkToFit();

    SqliteStatement formats(db_, "SELECT * FROM cell_formats ORDER BY sheet, seq");
    while (formats.Step()) {
      SheetAt(project, formats.Int(0));
      worksheet::SheetFormats::Run run;
      run.block.top = static_cast<long>(Within(formats.Int(2), 1, kMaxGridRows, "format block"));
      run.block.left = static_cast<long>(Within(formats.Int(3), 1, kMaxGridCols, "format block"));
      run.block.bottom = static_cast<long>(Within(formats.Int(4), run.block.top, kMaxGridRows, "format block"));
      run.block.right = static_cast<long>(Within(formats.Int(5), run.block.left, kMaxGridCols, "format block"));
      const auto flag = [&formats](int column) -> std::optional<bool> {
        if (formats.IsNull(column)) return std::nullopt;
        return formats.Int(column) != 0;
      };
      run.change.bold = flag(6);
      run.change.italic = flag(7);
      run.change.underline = flag(8);
      if (!formats.IsNull(9))
        run.change.alignment = static_cast<worksheet::Alignment>(Within(formats.Int(9), 0, 3, "alignment"));
      if (auto color = Color(formats, 10)) run.change.foreground = color->value;
      if (auto color = Color(formats, 11)) run.change.background = color->value;
      project.sheets[static_cast<std::size_t>(formats.Int(0))].formats.push_back(run);
    }
  }

  void ReadDesigns(Project& project) {
    SqliteStatement designs(db_, "SELECT sheet, design FROM sheet_designs ORDER BY sheet");
    while (designs.Step()) {
      auto design = worksheet::ParseDesignText(designs.Text(1));
      if (!design) Bad("sheet design");
      CellsAt(project, designs.Int(0)).SetDesign(std::move(design));
    }
  }

  worksheet::Worksheet& SheetAt(Project& project, std::int64_t id) const {
    if (id < 0 || id >= static_cast<std::int64_t>(project.sheets.size())) Bad("sheet reference");
    return project.sheets[static_cast<std::size_t>(id)].sheet;
  }

  // A sheet whose cells are stored: a worksheet window's, or a run's data sheet.
  worksheet::Worksheet& CellsAt(Project& project, std::int64_t id) {
    const auto windows = static_cast<std::int64_t>(project.sheets.size());
    if (id >= windows && id - windows < static_cast<std::int64_t>(data_sheets_.size()))
      return data_sheets_[static_cast<std::size_t>(id - windows)];
    return SheetAt(project, id);
  }

  shell::ResultWindow& ResultAt(Project& project, std::int64_t id) const {
    if (id < 0 || id >= static_cast<std::int64_t>(project.results.size())) Bad("result window reference");
    return project.results[static_cast<std::size_t>(id)].window;
  }

  shell::ChartSeries& ChartAt(Project& project, std::int64_t result, std::int64_t chart) const {
    auto& charts = ResultAt(project, result).charts;
    if (chart < 0 || chart >= static_cast<std::int64_t>(charts.size())) Bad("chart reference");
    return charts[static_cast<std::size_t>(chart)];
  }

  void ReadResults(Project& project, bool with_series_style) {
    SqliteStatement results(db_, "SELECT * FROM results ORDER BY id");
    while (results.Step()) {
      if (results.Int(0) != static_cast<std::int64_t>(project.results.size())) Bad("result window numbering");
      shell::ResultWindow window;
      const std::string_view kind = results.Text(1);
      if (kind == shell::WindowKindName(shell::WindowKind::ControlForm)) window.kind = shell::WindowKind::ControlForm;
      else if (kind == shell::WindowKindName(shell::WindowKind::DataChart)) window.kind = shell::WindowKind::DataChart;
      else Bad("result window kind");
      window.title = results.Text(2);
      window.commandKey = results.Text(3);
      if (results.Int(4) != 0) {
        window.table.emplace();
        window.table->columns = Texts(results.Blob(5), "grid heading");
        window.table->background = Color(results, 6);
      }
      project.results.push_back({std::move(window), std::nullopt});
    }

    SqliteStatement rows(db_, "SELECT result, seq, cells FROM result_rows ORDER BY result, seq");
    while (rows.Step()) {
      auto& window = ResultAt(project, rows.Int(0));
      if (!window.table || rows.Int(1) != static_cast<std::int64_t>(window.table->RowCount())) Bad("grid rows");
      window.table->AddRow(Texts(rows.Blob(2), "grid row"));
    }
    SqliteStatement styles(db_, "SELECT * FROM result_row_styles ORDER BY result, seq");
    while (styles.Step()) {
      auto& window = ResultAt(project, styles.Int(0));
      if (!window.table || styles.Int(1) < 0 || styles.Int(1) >= static_cast<std::int64_t>(window.table->RowCount()))
        Bad("grid styles");
      window.table->SetRowStyle(static_cast<std::size_t>(styles.Int(1)),
                                {Color(styles, 2), Color(styles, 3), styles.Int(4) != 0});
    }

    SqliteStatement charts(db_, "SELECT * FROM charts ORDER BY result, seq");
    while (charts.Step()) {
      auto& window = ResultAt(project, charts.Int(0));
      if (charts.Int(1) != static_cast<std::int64_t>(window.charts.size())) Bad("chart numbering");
      shell::ChartSeries chart;
      chart.name = charts.Text(2);
      chart.title = charts.Text(3);
      chart.xTitle = charts.Text(4);
      chart.yTitle = charts.Text(5);
      chart.y2Title = charts.Text(6);
      chart.categories = Texts(charts.Blob(7), "chart categories");
      window.charts.push_back(std::move(chart));
    }
    SqliteStatement series(db_, "SELECT * FROM chart_series ORDER BY result, chart, seq");
    while (series.Step()) {
      auto& chart = ChartAt(project, series.Int(0), series.Int(1));
      if (series.Int(2) != static_cast<std::int64_t>(chart.series.size())) Bad("series numbering");
      shell::PlotSeries s;
      s.name = series.Text(3);
      s.type = static_cast<shell::SeriesType>(Within(series.Int(4), 0, 6, "series type"));
      s.x = Doubles(series.Blob(5), "series values");
      s.y = Doubles(series.Blob(6), "series values");
      ByteReader marked(series.Blob(7));
      const std::uint64_t count = marked.Unsigned();
      if (marked.Failed() || count > marked.Remaining()) Bad("marked points");
      for (std::uint64_t i = 0; i < count; ++i) s.marked.push_back(static_cast<long>(marked.Unsigned()));
      if (marked.Failed()) Bad("marked points");
      if (!marked.AtEnd()) {
        s.markCodes = Texts(marked.Rest(), "marked point codes");
        if (s.markCodes.size() != s.marked.size()) Bad("marked point codes");
      }
      s.color = Color(series, 8);
      s.onSecondAxis = series.Int(9) != 0;
      if (with_series_style) {
        const std::int64_t style =
            Within(series.Int(10), 0, kSteppedSeries | kDashedSeries | kCurveSeries, "series style");
        s.stepped = (style & kSteppedSeries) != 0;
        s.dashed = (style & kDashedSeries) != 0;
        s.curve = (style & kCurveSeries) != 0;
      }
      chart.series.push_back(std::move(s));
    }
    if (HasTable(db_, "chart_flags")) {
      SqliteStatement flags(db_, "SELECT * FROM chart_flags");
      while (flags.Step()) {
        auto& chart = ChartAt(project, flags.Int(0), flags.Int(1));
        const std::int64_t set = Within(flags.Int(2), 0, kSeriesLegendChart | kReportsCategoriesChart, "chart flags");
        chart.seriesLegend = (set & kSeriesLegendChart) != 0;
        chart.reportsCategories = (set & kReportsCategoriesChart) != 0;
      }
    }
    SqliteStatement lines(db_, "SELECT * FROM chart_lines ORDER BY result, chart, seq");
    while (lines.Step()) {
      auto& chart = ChartAt(project, lines.Int(0), lines.Int(1));
      if (lines.Int(2) != static_cast<std::int64_t>(chart.lines.size())) Bad("line numbering");
      shell::ChartLine line;
      line.orientation = static_cast<shell::LineOrientation>(Within(lines.Int(3), 0, 1, "line orientation"));
      line.value = OneValue(lines.Blob(4), "line value");
      line.label = lines.Text(5);
      line.color = Color(lines, 6);
      line.dashed = lines.Int(7) != 0;
      chart.lines.push_back(std::move(line));
    }
    SqliteStatement labels(db_, "SELECT * FROM chart_labels ORDER BY result, chart, seq");
    while (labels.Step()) {
      auto& chart = ChartAt(project, labels.Int(0), labels.Int(1));
      if (labels.Int(2) != static_cast<std::int64_t>(chart.labels.size())) Bad("label numbering");
      shell::ChartLabel label;
      label.text = labels.Text(3);
      if (!labels.IsNull(4)) label.x = OneValue(labels.Blob(4), "label position");
      if (!labels.IsNull(5)) label.y = OneValue(labels.Blob(5), "label position");
      chart.labels.push_back(std::move(label));
    }
  }

  // The runs of the result windows. Windows whose runs read the same data
  // sheet share one copy of it again; the copy carries the selection of the
  // first run that reads it, as it did when the run was recorded.
  void ReadChartLooks(Project& project) {
    SqliteStatement looks(db_, "SELECT * FROM chart_looks ORDER BY result, rowid");
    while (looks.Step()) {
      shell::ResultWindow& window = ResultAt(project, looks.Int(0));
      std::optional<shell::ChartPresentation> look = ParsePresentation(looks.Text(2));
      if (!look) Bad("chart look");
      look->chart = looks.Text(1);
      window.presentation.push_back(std::move(*look));
    }
  }

  void ReadRuns(Project& project) {
    std::vector<std::shared_ptr<const worksheet::Worksheet>> shared(data_sheets_.size());
    std::vector<std::shared_ptr<shell::CommandRun>> runs(project.results.size());
    SqliteStatement rows(db_, "SELECT * FROM runs ORDER BY result");
    while (rows.Step()) {
      shell::ResultWindow& window = ResultAt(project, rows.Int(0));
      auto& run = runs[static_cast<std::size_t>(rows.Int(0))];
      if (run) Bad("run listed twice");
      run = std::make_shared<shell::CommandRun>();
      run->key = rows.Text(1);
      run->selection = ReadSelection(rows, 3);
      if (!rows.IsNull(2)) {
        const std::int64_t data = rows.Int(2) - static_cast<std::int64_t>(project.sheets.size());
        if (data < 0 || data >= static_cast<std::int64_t>(shared.size())) Bad("run data reference");
        auto& sheet = shared[static_cast<std::size_t>(data)];
        if (!sheet) {
          worksheet::Worksheet& stored = data_sheets_[static_cast<std::size_t>(data)];
          stored.Selection = run->selection;
          sheet = std::make_shared<const worksheet::Worksheet>(std::move(stored));
        }
        run->data = sheet;
      }
      window.run = run;
    }
    SqliteStatement settings(db_, "SELECT * FROM run_settings ORDER BY result, seq");
    while (settings.Step()) {
      ResultAt(project, settings.Int(0));
      const auto& run = runs[static_cast<std::size_t>(settings.Int(0))];
      if (!run || settings.Int(1) != static_cast<std::int64_t>(run->settings.size())) Bad("run settings");
      run->settings.push_back(
          {std::string(settings.Text(2)), std::string(settings.Text(3)), std::string(settings.Text(4))});
    }
  }

  void ReadOrder(Project& project) {
    SqliteStatement documents(db_, "SELECT * FROM documents ORDER BY position");
    std::vector<bool> sheet_seen(project.sheets.size()), result_seen(project.results.size());
    while (documents.Step()) {
      if (documents.Int(0) != static_cast<std::int64_t>(project.order.size())) Bad("window order");
      Project::Document entry;
      const std::string_view kind = documents.Text(1);
      std::vector<bool>* seen = nullptr;
      std::optional<WindowPlacement>* placement = nullptr;
      const std::int64_t item = documents.Int(2);
      if (kind == "sheet") {
        entry.kind = Project::Document::Kind::Sheet;
        SheetAt(project, item);
        seen = &sheet_seen;
        placement = &project.sheets[static_cast<std::size_t>(item)].placement;
      } else if (kind == "result") {
        entry.kind = Project::Document::Kind::Result;
        ResultAt(project, item);
        seen = &result_seen;
        placement = &project.results[static_cast<std::size_t>(item)].placement;
      } else {
        Bad("window kind");
      }
      entry.index = static_cast<std::size_t>(item);
      if ((*seen)[entry.index]) Bad("window listed twice");
      (*seen)[entry.index] = true;
      if (!documents.IsNull(3)) {
        constexpr int kFar = 1 << 20;
        *placement = WindowPlacement{static_cast<int>(Within(documents.Int(3), -kFar, kFar, "window place")),
                                     static_cast<int>(Within(documents.Int(4), -kFar, kFar, "window place")),
                                     static_cast<int>(Within(documents.Int(5), 0, kFar, "window size")),
                                     static_cast<int>(Within(documents.Int(6), 0, kFar, "window size")),
                                     documents.Int(7) != 0, documents.Int(8) != 0};
      }
      project.order.push_back(entry);
    }
    if (std::find(sheet_seen.begin(), sheet_seen.end(), false) != sheet_seen.end() ||
        std::find(result_seen.begin(), result_seen.end(), false) != result_seen.end())
      Bad("window missing from the order");
    if (project.active && *project.active >= project.order.size()) Bad("active window");
  }

  std::string path_;
  SqliteDb& db_;
  // The runs' data sheets as read, until the runs take them.
  std::vector<worksheet::Worksheet> data_sheets_;
  std::uint64_t spent_ = 0;
};

}  // namespace

namespace {

// The name a save of `target` writes under until its rename:
// ".NAME.orv.saving-" and six characters of mkstemp.
std::string SavingPrefix(const std::filesystem::path& target) { return "." + target.filename().string() + ".saving-"; }

std::filesystem::path FolderOf(const std::filesystem::path& target) {
  return target.has_parent_path() ? target.parent_path() : std::filesystem::path(".");
}

// Removes the temporaries that saves of `target` left when they were killed
// before their rename. A save holds an exclusive flock on its temporary from
// its creation to its rename, and the system drops the lock when the process
// ends, so a temporary whose lock can be taken belongs to no running save;
// one that is locked is being written and is left alone. Best effort: a
// folder that cannot be listed or a file that cannot be removed is skipped.
void RemoveStaleSaves(const std::filesystem::path& target) {
  namespace fs = std::filesystem;
  const std::string prefix = SavingPrefix(target);
  std::error_code error;
  fs::directory_iterator entries(FolderOf(target), error);
  if (error) return;
  for (; entries != fs::directory_iterator(); entries.increment(error)) {
    if (error) return;
    const fs::directory_entry& entry = *entries;
    const std::string name = entry.path().filename().string();
    if (name.size() != prefix.size() + 6 || name.compare(0, prefix.size(), prefix) != 0) continue;
    const int fd = ::open(entry.path().c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
    if (fd < 0) continue;
    struct stat status {};
    if (::fstat(fd, &status) == 0 && S_ISREG(status.st_mode) && ::flock(fd, LOCK_EX | LOCK_NB) == 0)
      ::unlink(entry.path().c_str());
    ::close(fd);
  }
}

}  // namespace

bool IsProjectPath(const std::string& path) {
  if (path.size() < 4) return false;
  std::string suffix = path.substr(path.size() - 4);
  std::transform(suffix.begin(), suffix.end(), suffix.begin(), [](unsigned char c) { return std::tolower(c); });
  return suffix == ".orv";
}

void SaveProject(const std::string& path, const Project& project, const std::function<void(SaveStage)>& progress) {
  namespace fs = std::filesystem;
  const fs::path target(path);
  const fs::path folder = FolderOf(target);
  RemoveStaleSaves(target);
  std::string temporary = (folder / (SavingPrefix(target) + "XXXXXX")).string();
  const int fd = ::mkstemp(temporary.data());
  if (fd < 0) throw ProjectFileError(SystemError("The project could not be saved to \"" + path + "\""));
  // Held until the save ends (or its process does): it tells the saves and
  // opens that clear stale temporaries that this one is being written.
  ::flock(fd, LOCK_EX | LOCK_NB);
  struct LockHolder {
    int fd;
    ~LockHolder() { ::close(fd); }
  } const lock{fd};
  // The new file takes the old one's permissions, or the usual ones for a new file.
  struct stat old_status {};
  if (::stat(path.c_str(), &old_status) == 0) {
    ::fchmod(fd, old_status.st_mode & 07777);
  } else {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    ::fchmod(fd, 0666 & ~mask);
  }
  const auto fail = [&](const std::string& reason) {
    std::error_code ignored;
    fs::remove(temporary, ignored);
    throw ProjectFileError("The project could not be saved to \"" + path + "\": " + reason);
  };
  if (progress) progress(SaveStage::TemporaryCreated);
  try {
    SqliteDb db(temporary, SQLITE_OPEN_READWRITE);
    WriteProject(db, project, progress);
    db.Close();
  } catch (const SqliteError& error) {
    fail(error.what());
  } catch (const std::out_of_range&) {
    fail("the window order names a window that does not exist");
  }
  if (progress) progress(SaveStage::Committed);
  if (!SyncPath(temporary, O_RDONLY)) fail(std::strerror(errno));
  if (progress) progress(SaveStage::Synced);
  if (::rename(temporary.c_str(), path.c_str()) != 0) fail(std::strerror(errno));
  // The rename itself reaches the disk with the folder's entry.
  SyncPath(folder.string(), O_RDONLY | O_DIRECTORY);
  if (progress) progress(SaveStage::Renamed);
}

Project LoadProject(const std::string& path) {
  RemoveStaleSaves(path);
  CheckHeader(path);
  auto deadline = std::chrono::steady_clock::now() + kOpenBudget;
  try {
    SqliteDb db(path, SQLITE_OPEN_READONLY);
    HardenForReading(db, &deadline);
    {
      SqliteStatement version(db, "PRAGMA user_version");
      CheckSchema(path, db, version.Step() ? version.Int(0) : 0);
    }
    {
      SqliteStatement check(db, "PRAGMA quick_check(1)");
      if (!check.Step() || check.Text(0) != "ok") Damaged(path, std::string(check.Text(0)));
    }
    return ProjectReader(path, db).Read();
  } catch (const SqliteError& error) {
    if (std::chrono::steady_clock::now() > deadline)
      Damaged(path, "reading it took longer than " + std::to_string(kOpenBudget.count()) + " seconds");
    Damaged(path, error.what());
  }
}

}  // namespace orvik::formats
