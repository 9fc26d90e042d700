#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orvik::worksheet {

// The texts of one worksheet column, stored compactly: every cell is an
// offset and a length into one character pool, so a million short numeric
// texts cost about 8 bytes each plus their characters (a std::string per cell
// would cost 32). Overwritten texts leave garbage in the pool, which is
// compacted once it outweighs the live text.
class CellColumn {
 public:
  // The text of the cell in `row` (1-based); empty beyond the stored rows.
  std::string_view Text(long row) const;
  void SetText(long row, std::string_view text);

  // The last row holding a non-empty text; 0 when the column is empty.
  long LastFilledRow() const { return last_filled_row_; }
  bool IsEmpty() const { return filled_cells_ == 0; }

  // Inserts `count` empty rows before `row`, or removes `count` rows from `row` on.
  void InsertRows(long row, long count);
  void RemoveRows(long row, long count);

  // Gives back spare capacity after a bulk load.
  void ShrinkToFit();

 private:
  struct Span {
    std::uint32_t offset = 0;
    std::uint32_t length = 0;
  };

  void Compact();
  void RecountFilled();

  std::vector<Span> spans_;
  std::string pool_;
  std::size_t garbage_ = 0;
  long filled_cells_ = 0;
  long last_filled_row_ = 0;
};

}  // namespace orvik::worksheet
