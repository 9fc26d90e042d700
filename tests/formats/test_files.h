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

// Every cell, header name, size, caret and selection.
inline void ExpectSameSheet(const worksheet::Worksheet& got, const worksheet::Worksheet& want) {
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
  EXPECT_EQ(got.ActiveRow, want.ActiveRow);
  EXPECT_EQ(got.ActiveCol, want.ActiveCol);
  EXPECT_EQ(got.Selection.IsBlockSelected, want.Selection.IsBlockSelected);
  EXPECT_EQ(got.Selection.SelBlockCol, want.Selection.SelBlockCol);
  EXPECT_EQ(got.Selection.SelBlockCol2, want.Selection.SelBlockCol2);
  EXPECT_EQ(got.Selection.SelBlockRow, want.Selection.SelBlockRow);
  EXPECT_EQ(got.Selection.SelBlockRow2, want.Selection.SelBlockRow2);
}

// Doubles compare by their bits, so NaN, -0 and infinities must survive too.
inline std::vector<std::uint64_t> Bits(const std::vector<double>& values) {
  std::vector<std::uint64_t> bits;
  for (double value : values) bits.push_back(std::bit_cast<std::uint64_t>(value));
  return bits;
}

inline void ExpectSameFormats(const std::vector<worksheet::SheetFormats::Run>& got,
                              const std::vector<worksheet::SheetFormats::Run>& want) {
  ASSERT_EQ(got.size(), want.size());
  for (std::size_t i = 0; i < want.size(); ++i) {
    EXPECT_EQ(got[i].block, want[i].block);
    EXPECT_EQ(got[i].change.bold, want[i].change.bold);
    EXPECT_EQ(got[i].change.italic, want[i].change.italic);
    EXPECT_EQ(got[i].change.underline, want[i].change.underline);
    EXPECT_EQ(got[i].change.alignment, want[i].change.alignment);
    EXPECT_EQ(got[i].change.foreground, want[i].change.foreground);
    EXPECT_EQ(got[i].change.background, want[i].change.background);
  }
}

inline void ExpectSameResult(const shell::ResultWindow& got, const shell::ResultWindow& want) {
  EXPECT_EQ(got.kind, want.kind);
  EXPECT_EQ(got.title, want.title);
  EXPECT_EQ(got.commandKey, want.commandKey);
  ASSERT_EQ(got.table.has_value(), want.table.has_value());
  if (want.table) {
    EXPECT_EQ(got.table->columns, want.table->columns);
    EXPECT_EQ(got.table->rows, want.table->rows);
    ASSERT_EQ(got.table->rowStyles.size(), want.table->rowStyles.size());
    for (std::size_t i = 0; i < want.table->rowStyles.size(); ++i) {
      EXPECT_EQ(got.table->rowStyles[i].background, want.table->rowStyles[i].background);
      EXPECT_EQ(got.table->rowStyles[i].foreground, want.table->rowStyles[i].foreground);
      EXPECT_EQ(got.table->rowStyles[i].bold, want.table->rowStyles[i].bold);
    }
    EXPECT_EQ(got.table->background, want.table->background);
  }
  ASSERT_EQ(got.charts.size(), want.charts.size());
  for (std::size_t c = 0; c < want.charts.size(); ++c) {
    const auto& g = got.charts[c];
    const auto& w = want.charts[c];
    EXPECT_EQ(g.name, w.name);
    EXPECT_EQ(g.title, w.title);
    EXPECT_EQ(g.xTitle, w.xTitle);
    EXPECT_EQ(g.yTitle, w.yTitle);
    EXPECT_EQ(g.y2Title, w.y2Title);
    EXPECT_EQ(g.categories, w.categories);
    ASSERT_EQ(g.series.size(), w.series.size());
    for (std::size_t s = 0; s < w.series.size(); ++s) {
      EXPECT_EQ(g.series[s].name, w.series[s].name);
      EXPECT_EQ(g.series[s].type, w.series[s].type);
      EXPECT_EQ(Bits(g.series[s].x), Bits(w.series[s].x));
      EXPECT_EQ(Bits(g.series[s].y), Bits(w.series[s].y));
      EXPECT_EQ(g.series[s].marked, w.series[s].marked);
      EXPECT_EQ(g.series[s].color, w.series[s].color);
      EXPECT_EQ(g.series[s].onSecondAxis, w.series[s].onSecondAxis);
    }
    ASSERT_EQ(g.lines.size(), w.lines.size());
    for (std::size_t l = 0; l < w.lines.size(); ++l) {
      EXPECT_EQ(g.lines[l].orientation, w.lines[l].orientation);
      EXPECT_EQ(std::bit_cast<std::uint64_t>(g.lines[l].value), std::bit_cast<std::uint64_t>(w.lines[l].value));
      EXPECT_EQ(g.lines[l].label, w.lines[l].label);
      EXPECT_EQ(g.lines[l].color, w.lines[l].color);
      EXPECT_EQ(g.lines[l].dashed, w.lines[l].dashed);
    }
    ASSERT_EQ(g.labels.size(), w.labels.size());
    for (std::size_t l = 0; l < w.labels.size(); ++l) {
      EXPECT_EQ(g.labels[l].text, w.labels[l].text);
      EXPECT_EQ(g.labels[l].x, w.labels[l].x);
      EXPECT_EQ(g.labels[l].y, w.labels[l].y);
    }
  }
}

inline void ExpectSameProject(const Project& got, const Project& want) {
  EXPECT_EQ(got.worksheetCounter, want.worksheetCounter);
  EXPECT_EQ(got.active, want.active);
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
}

}  // namespace orvik::formats
