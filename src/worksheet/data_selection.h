#pragma once

#include <optional>
#include <string>
#include <vector>

#include "worksheet/worksheet.h"

namespace orvik::worksheet {

// The resolved block and the numbers read from it. One is current at a time
// (the main window's); every analysis command overwrites it.
struct DataSelection {
  long firstColumn = 0;
  long lastColumn = 0;
  long firstRow = 0;
  long lastRow = 0;
  int columnStep = 1;
  int rowStep = 1;
  std::vector<double> values;  // accepted numbers in reading order
  long count = 0;
};

// The figures kept while walking a block, which the common checks use.
struct RunningFigures {
  long count = 0;
  // Values equal to the first accepted one. It starts at 1, so a block
  // without any number fails the count check, not the all-same check.
  long equalToFirst = 1;
  double sum = 0.0;
  double minimum = 0.0;
  double maximum = 0.0;
  long improperCells = 0;  // empty or non-numeric cells met in the block
};

// How an analysis treats the empty and non-numeric cells of its block.
enum class CellPolicy {
  Skip,          // leave them out silently, leaving no gap
  CountAsZero,   // read them as 0 after a notice
  DropWithNotice,// leave them out after a notice
  Refuse,        // refuse the whole run
};

// Refusal and notice texts shared by the analyses.
namespace messages {
inline constexpr const char* kSelectDataFromWorksheet = "Select data from worksheet";
inline constexpr const char* kSelectValidData = "Please, select valid data";
inline constexpr const char* kSelectValidDataShort = "Select valid data";
inline constexpr const char* kInputValidData = "Please, input valid data";
inline constexpr const char* kAllDataSame = "All data are same";
inline constexpr const char* kNotEnoughData = "All data are not enough to analysis";
inline constexpr const char* kChangeToZero = "If improper data or null cells then change to zero";
inline constexpr const char* kEliminated = "Non-numeric data or empty cell's data are elimination";
inline constexpr const char* kIncludeImproper = "Include improper data or null cells";
inline constexpr const char* kSelectTwoColumns = "Please, select two columns";
inline constexpr const char* kSelectThreeColumns = "Select three columns";
inline constexpr const char* kSelectOneColumnOnly = "Please select one column only";
inline constexpr const char* kExceedColumns = "Exceed selected available columns";
inline constexpr const char* kSameColumns = "Selected columns are same";
}  // namespace messages

// Resolves the sheet's selected block into `out` (bounds and steps; values
// emptied). `sheet` is the active worksheet, or null when none is open.
// Returns the refusal text instead when the block cannot be used: an empty
// sheet gives "Select data from worksheet", a sheet without a selected block
// `no_block_text` ("Please, select valid data" for most analyses; some use
// their own text).
std::optional<std::string> ResolveBlock(const Worksheet* sheet, DataSelection& out,
                                        const std::string& no_block_text = messages::kSelectValidData);

// Walks the block column by column, each column along the row step, and
// fills `selection.values` and `selection.count` with the accepted numbers.
// Under CellPolicy::CountAsZero an improper cell is read as 0 (and counted
// in improperCells); under every other policy it is left out.
// Only the part of the block inside the data extent is walked, and in each
// column only down to its last filled row: the cells past them are empty,
// so they add nothing but their count to improperCells. The time and memory
// of a walk therefore follow the data, whatever block was requested. Under
// CountAsZero the empty cells past the data extent are counted but give no
// zeros: a block reaching far beyond the data would otherwise be read as
// millions of zeros.
RunningFigures CollectNumericCells(const Worksheet& sheet, DataSelection& selection,
                                   CellPolicy policy = CellPolicy::Skip);

// How many columns and rows a walk over the block visits: none when the
// block's end was clipped to before its start (a block starting past the
// data).
long ColumnsToWalk(const DataSelection& selection);
long RowsToWalk(const DataSelection& selection);

// One direction of a block's walk cut to the part that lies within 1..extent
// (the data extent), kept in the walk's order: `first` to `last` by `step`,
// `length` positions; length 0 when no position lies within.
struct WalkSpan {
  long first = 0;
  long last = 0;
  int step = 1;
  long length = 0;
  long At(long index) const { return first + index * step; }
};
WalkSpan ColumnsWithData(const Worksheet& sheet, const DataSelection& selection);
WalkSpan RowsWithData(const Worksheet& sheet, const DataSelection& selection);

// The cells the block covers, ColumnsToWalk x RowsToWalk, saturated at the
// largest long for a block no grid can hold.
long CellsToWalk(const DataSelection& selection);

// The numeric cells of the block taken row by row: along each row with the
// column step, rows with the row step. Analyses whose data run in time
// along the rows (one subgroup per row) read the block this way.
std::vector<double> NumericCellsRowByRow(const Worksheet& sheet, const DataSelection& selection);

// The three common checks in their order: all values equal to the first,
// fewer than three values, a sum of exactly zero. Returns the refusal text
// of the first that fails.
std::optional<std::string> CommonDataChecks(const RunningFigures& figures);

// The number of columns the user's block spans, |SelBlockCol2 - SelBlockCol| + 1,
// which the column-count checks of the analyses measure.
long SelectedColumnSpan(const GridSelection& selection);

}  // namespace orvik::worksheet
