#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

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
};

// The grid of a result window (`DataView`): cells hold the displayed texts,
// never numbers, so every front-end shows exactly what the analysis wrote.
struct ResultTable {
  // Captions of the heading row; empty strings where the grid has no heading.
  std::vector<std::string> columns;
  std::vector<std::vector<std::string>> rows;
  // Styles of rows by index; rows past the end are drawn plainly.
  std::vector<RowStyle> rowStyles;
  // The grid's own background, where an analysis asks for one (white grids).
  std::optional<Rgb> background;

  void AddRow(std::vector<std::string> cells, RowStyle style = {});
  const RowStyle& StyleOfRow(std::size_t row) const;
};

}  // namespace orvik::shell
