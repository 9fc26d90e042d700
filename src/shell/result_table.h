#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "shell/grid_column.h"

namespace orvik::shell {

// A colour as 0xRRGGBB.
struct Rgb {
  std::uint32_t value = 0;
  friend bool operator==(Rgb, Rgb) = default;
};

inline constexpr Rgb kBlue{0x0000FF};
inline constexpr Rgb kWhite{0xFFFFFF};
inline constexpr Rgb kRed{0xFF0000};
inline constexpr Rgb kBlack{0x000000};

// How one row of a result grid is drawn, where an analysis asks for it
// (for example the blue heading of a control chart's legend).
struct RowStyle {
  std::optional<Rgb> background;
  std::optional<Rgb> foreground;
  bool bold = false;
  bool IsPlain() const { return !background && !foreground && !bold; }
};

// The grid of a result window (`DataView`). Every front-end shows exactly
// the texts the analysis chose, but a cell's text is made only when it is
// shown or written: the grid is a run of blocks, each either rows of texts
// (reports, legends) or columns (a control chart's million points, its
// limits repeated down the grid, its codes), so a large grid costs little
// more than its numbers.
class ResultTable {
 public:
  // Captions of the heading row; empty strings where the grid has no heading.
  std::vector<std::string> columns;
  // The grid's own background, where an analysis asks for one (white grids).
  std::optional<Rgb> background;

  // Appends one row of texts.
  void AddRow(std::vector<std::string> cells, RowStyle style = {});
  // Appends a block of rows held by columns; it is as long as its longest
  // column, and shorter columns leave their lower cells empty.
  void AddColumns(std::vector<GridColumn> block);
  // Draws row `row` in `style`.
  void SetRowStyle(std::size_t row, RowStyle style);

  std::size_t RowCount() const { return row_count_; }
  // The cells of row `row`: its texts, or the columns of its block.
  std::size_t RowWidth(std::size_t row) const;
  // The widest row or heading.
  std::size_t Width() const;
  // Appends the text of a cell to `out`; a cell past its row is empty.
  void AppendCell(std::size_t row, std::size_t column, std::string& out) const;
  std::string Cell(std::size_t row, std::size_t column) const;
  std::vector<std::string> Row(std::size_t row) const;
  // Every row as texts; for small grids (reports, tests).
  std::vector<std::vector<std::string>> TextRows() const;
  const RowStyle& StyleOfRow(std::size_t row) const;
  // The rows drawn in a style of their own, in row order.
  const std::vector<std::pair<std::size_t, RowStyle>>& StyledRows() const { return styles_; }
  bool HasHeading() const;
  // Whether a cell shows a number that is not finite. Headings are captions
  // (a user's column name may read anything) and are not looked at.
  bool ShowsNonFiniteNumber() const;

  // Visits every row in order without looking rows up: row_start(width),
  // then cell(text, number) for each of its cells, then row_end(). `text`
  // is a std::string_view valid during the call; `number` tells a text
  // made from a number (no character to escape) from a stored text, whose
  // view stays the same for the grid's life. For writers that go through a
  // whole grid.
  template <class RowStart, class CellVisit, class RowEnd>
  void ForEachRow(RowStart&& row_start, CellVisit&& cell, RowEnd&& row_end) const {
    std::string scratch;
    for (const Block& block : blocks_) {
      for (std::size_t r = 0; r < block.rowCount; ++r) {
        const bool texts = block.columns.empty();
        const std::size_t width = texts ? block.textRows[r].size() : block.columns.size();
        row_start(width);
        for (std::size_t c = 0; c < width; ++c) {
          if (texts) cell(std::string_view(block.textRows[r][c]), false);
          else cell(block.columns[c].CellView(r, scratch), block.columns[c].HoldsNumbers());
        }
        row_end();
      }
    }
  }

 private:
  struct Block {
    std::size_t firstRow = 0;
    std::size_t rowCount = 0;
    std::vector<std::vector<std::string>> textRows;  // a block of texts
    std::vector<GridColumn> columns;                 // or a block of columns
  };
  const Block& BlockOf(std::size_t row) const;

  std::vector<Block> blocks_;
  std::size_t row_count_ = 0;
  std::vector<std::pair<std::size_t, RowStyle>> styles_;
};

}  // namespace orvik::shell
