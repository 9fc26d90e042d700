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
// compacted once it outweighs the live text. A column whose few cells lie
// far down (a cell at row 1,000,000 and little above it) keeps (row, text)
// pairs instead, so empty rows cost nothing whatever a file asks for.
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

  struct Placed {
    long row;
    Span span;
  };

  const Span* Find(long row) const;
  // The span of `row`, made (empty) when `create` and missing; null otherwise.
  Span* Slot(long row, bool create);
  void ToSparse();
  void ToDense();
  void Compact();
  void RecountFilled();

  std::vector<Span> spans_;            // one per row up to the last filled one
  std::vector<Placed> sparse_;         // or, in sparse mode, the filled rows in order
  bool sparse_mode_ = false;
  std::string pool_;
  std::size_t garbage_ = 0;
  long filled_cells_ = 0;
  long last_filled_row_ = 0;
};

}  // namespace orvik::worksheet
