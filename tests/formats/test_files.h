#pragma once

// Helpers of the file-format tests: a temporary folder, whole-file reads
// and writes, and field-by-field comparison of projects.

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include "formats/project_file.h"

namespace orvik::formats {

class TempFolder {
 public:
  TempFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "orvik-test-XXXXXX").string();
    path_ = ::mkdtemp(pattern.data());
  }
  ~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  std::string Path(const std::string& name) const { return (path_ / name).string(); }
  std::vector<std::string> Entries() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(path_)) names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
  }

 private:
  std::filesystem::path path_;
};

inline std::string ReadAll(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

inline void WriteAll(const std::string& path, const std::string& bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out << bytes;
}

inline auto SelectionKey(const worksheet::GridSelection& s) {
  return std::tuple(s.IsBlockSelected, s.SelBlockCol, s.SelBlockCol2, s.SelBlockRow, s.SelBlockRow2);
}

// Name, size, extent, header names and every cell.
inline void ExpectSameCells(const worksheet::Worksheet& got, const worksheet::Worksheet& want) {
  EXPECT_EQ(got.Name(), want.Name());
  EXPECT_EQ(got.MaxRows(), want.MaxRows());
  EXPECT_EQ(got.MaxCols(), want.MaxCols());
  ASSERT_EQ(got.DataRowCnt(), want.DataRowCnt()) << want.Name();
  ASSERT_EQ(got.DataColCnt(), want.DataColCnt()) << want.Name();
  long differences = 0;
  for (long col = 1; col <= want.DataColCnt(); ++col)
    for (long row = 1; row <= want.DataRowCnt(); ++row)
      if (got.Text(row, col) != want.Text(row, col) && ++differences < 5)
        ADD_FAILURE() << want.Name() << " cell " << row << "," << col << ": " << got.Text(row, col) << " != "
                      << want.Text(row, col);
  EXPECT_EQ(differences, 0);
  for (long col = 1; col <= want.MaxCols(); ++col) EXPECT_EQ(got.ColumnHeaderName(col), want.ColumnHeaderName(col));
}

// ExpectSameCells, and the caret and selection.
inline void ExpectSameSheet(const worksheet::Worksheet& got, const worksheet::Worksheet& want) {
  ExpectSameCells(got, want);
  EXPECT_EQ(std::pair(got.ActiveRow, got.ActiveCol), std::pair(want.ActiveRow, want.ActiveCol));
  EXPECT_EQ(SelectionKey(got.Selection), SelectionKey(want.Selection));
  EXPECT_TRUE(got.Design() == want.Design()) << got.Name();
}

// Doubles compare by their bits, so NaN, -0 and infinities must survive too.
inline std::vector<std::uint64_t> Bits(const shell::NumberSeries& values) {
  std::vector<std::uint64_t> bits;
  for (double value : values) bits.push_back(std::bit_cast<std::uint64_t>(value));
  return bits;
}

// Each record's fields as a tuple, doubles by their bits, so that whole
// lists compare at once and a difference prints with its record.
template <typename T, typename Key>
auto Keys(const std::vector<T>& items, Key key) {
  std::vector<decltype(key(items.front()))> keys;
  for (const T& item : items) keys.push_back(key(item));
  return keys;
}
inline auto RunKey(const worksheet::SheetFormats::Run& r) {
  const auto& c = r.change;
  return std::tuple(r.block, c.bold, c.italic, c.underline, c.alignment, c.foreground, c.background);
}
inline auto StyleKey(const std::pair<std::size_t, shell::RowStyle>& styled) {
  const auto& [row, s] = styled;
  return std::tuple(row, s.background, s.foreground, s.bold);
}
inline auto SeriesKey(const shell::PlotSeries& s) {
  return std::tuple(s.name, s.type, Bits(s.x), Bits(s.y), s.marked, s.color, s.onSecondAxis, s.stepped, s.dashed,
                    s.markCodes);
}
inline auto LineKey(const shell::ChartLine& l) {
  return std::tuple(l.orientation, std::bit_cast<std::uint64_t>(l.value), l.label, l.color, l.dashed);
}
inline auto LabelKey(const shell::ChartLabel& l) { return std::tuple(l.text, l.x, l.y); }
inline auto ChartKey(const shell::ChartSeries& c) {
  return std::tuple(c.name, c.title, c.xTitle, c.yTitle, c.y2Title, c.categories, Keys(c.series, SeriesKey),
                    Keys(c.lines, LineKey), Keys(c.labels, LabelKey));
}

inline auto SettingKey(const shell::ControlSetting& s) { return std::tuple(s.dialog, s.control, s.value); }

// The run that made a window: its key, selection, dialog answers in order
// and its data sheet's cells.
inline void ExpectSameRun(const shell::CommandRun* got, const shell::CommandRun* want) {
  ASSERT_EQ(got != nullptr, want != nullptr);
  if (want == nullptr) return;
  EXPECT_EQ(std::tuple(got->key, SelectionKey(got->selection), Keys(got->settings, SettingKey)),
            std::tuple(want->key, SelectionKey(want->selection), Keys(want->settings, SettingKey)));
  ASSERT_EQ(got->data != nullptr, want->data != nullptr);
  if (want->data) ExpectSameCells(*got->data, *want->data);
}

inline void ExpectSameFormats(const std::vector<worksheet::SheetFormats::Run>& got,
                              const std::vector<worksheet::SheetFormats::Run>& want) {
  EXPECT_EQ(Keys(got, RunKey), Keys(want, RunKey));
}

inline void ExpectSameResult(const shell::ResultWindow& got, const shell::ResultWindow& want) {
  EXPECT_EQ(std::tuple(got.kind, got.title, got.commandKey), std::tuple(want.kind, want.title, want.commandKey));
  ASSERT_EQ(got.table.has_value(), want.table.has_value());
  if (want.table) {
    EXPECT_EQ(got.table->columns, want.table->columns);
    EXPECT_EQ(got.table->TextRows(), want.table->TextRows());
    EXPECT_EQ(Keys(got.table->StyledRows(), StyleKey), Keys(want.table->StyledRows(), StyleKey));
    EXPECT_EQ(got.table->background, want.table->background);
  }
  EXPECT_EQ(Keys(got.charts, ChartKey), Keys(want.charts, ChartKey));
  EXPECT_TRUE(got.presentation == want.presentation) << "chart looks differ";
  ExpectSameRun(got.run.get(), want.run.get());
}

inline void ExpectSameProject(const Project& got, const Project& want) {
  EXPECT_EQ(got.worksheetCounter, want.worksheetCounter);
  EXPECT_EQ(got.active, want.active);
  EXPECT_EQ(got.options, want.options);
  ASSERT_EQ(got.order.size(), want.order.size());
  for (std::size_t i = 0; i < want.order.size(); ++i) {
    EXPECT_EQ(got.order[i].kind, want.order[i].kind);
    EXPECT_EQ(got.order[i].index, want.order[i].index);
  }
  ASSERT_EQ(got.sheets.size(), want.sheets.size());
  for (std::size_t i = 0; i < want.sheets.size(); ++i) {
    ExpectSameSheet(got.sheets[i].sheet, want.sheets[i].sheet);
    ExpectSameFormats(got.sheets[i].formats, want.sheets[i].formats);
    EXPECT_EQ(got.sheets[i].placement, want.sheets[i].placement);
  }
  ASSERT_EQ(got.results.size(), want.results.size());
  for (std::size_t i = 0; i < want.results.size(); ++i) {
    ExpectSameResult(got.results[i].window, want.results[i].window);
    EXPECT_EQ(got.results[i].placement, want.results[i].placement);
  }
  // Runs that read one data sheet share it again, and only those.
  const auto data = [](const Project& project, std::size_t i) {
    const auto& run = project.results[i].window.run;
    return run ? run->data.get() : nullptr;
  };
  for (std::size_t i = 0; i < want.results.size(); ++i)
    for (std::size_t j = i + 1; j < want.results.size(); ++j)
      if (data(want, i) && data(want, j)) {
        EXPECT_EQ(data(got, i) == data(got, j), data(want, i) == data(want, j)) << "windows " << i << ", " << j;
      }
}

}  // namespace orvik::formats
