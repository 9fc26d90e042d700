#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "shell/number_series.h"

namespace orvik::shell {

// How a grid shows a number: the shortest text of at most 15 significant
// digits ("2.5", "1.666667"), either of the value itself or of the value
// rounded to a number of decimal places first, as the analyses store them.
struct NumberDisplay {
  bool rounded = false;
  int decimals = 0;

  static NumberDisplay Shortest() { return {}; }
  static NumberDisplay RoundedTo(int places) { return {true, places}; }
  // Appends the displayed text of `value` to `out`.
  void Append(double value, std::string& out) const;
};

// One column of a block of grid rows, holding its cells in the cheapest
// form that gives back their texts: texts as written; numbers shown by a
// display rule (shared with the chart that plots them); one text repeated
// down the column (a control limit); or short codes drawn from a small set
// (out-of-control codes). Rows above `firstRow` are empty, so a column can
// start lower than its neighbours (a moving range starts at sample 2).
// Whether `text` holds "Infinity", "-Infinity" or "NaN" as a word of its own.
bool ShowsNonFiniteText(std::string_view text);

class GridColumn {
 public:
  static GridColumn Texts(std::vector<std::string> texts);
  static GridColumn Numbers(NumberSeries values, NumberDisplay display);
  static GridColumn Repeated(std::string text, std::size_t count);
  // Cells drawn from a small set of texts: cell i shows texts[indices[i]].
  static GridColumn Coded(std::vector<std::uint32_t> indices, std::vector<std::string> texts);

  // Moves the column down so that its first cell stands in row `row`.
  GridColumn& StartingAt(std::size_t row);

  // The rows the column reaches, empty ones above it included.
  std::size_t RowCount() const { return first_ + length_; }
  // Appends the text of the cell in `row` (nothing for an empty cell).
  void AppendCell(std::size_t row, std::string& out) const;
  // The text of the cell in `row`: a view of the stored text, or of
  // `scratch` where the text is made (numbers). Valid until the next call.
  std::string_view CellView(std::size_t row, std::string& scratch) const;
  // Whether cells are made from numbers: their texts are digits, signs,
  // points and exponents only, never a character a writer must escape.
  bool HoldsNumbers() const { return cells_.index() == 1; }
  // Whether a cell shows a number that is not finite: a stored number, or a
  // text that reads "Infinity", "-Infinity" or "NaN" as a word of its own
  // (the texts the number formatting gives for such values).
  bool ShowsNonFiniteNumber() const;

 private:
  struct TextCells {
    std::vector<std::string> texts;
  };
  struct NumberCells {
    NumberSeries values;
    NumberDisplay display;
  };
  struct RepeatedCell {
    std::string text;
  };
  struct CodeCells {
    std::vector<std::uint32_t> indices;  // into `distinct`
    std::vector<std::string> distinct;
  };

  std::variant<TextCells, NumberCells, RepeatedCell, CodeCells> cells_;
  std::size_t first_ = 0;
  std::size_t length_ = 0;
};

}  // namespace orvik::shell
