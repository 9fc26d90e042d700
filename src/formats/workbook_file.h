#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "worksheet/worksheet.h"

namespace orvik::formats {

// A workbook or data file that cannot be read or written; what() is the
// message the user sees.
class WorkbookError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The largest sheet a workbook holds.
inline constexpr long kWorkbookMaxRows = 1048576;
inline constexpr long kWorkbookMaxCols = 16384;

// ---- Excel 2007 and later (.xlsx), read with libzip and expat -------------

// The names of the workbook's sheets in their order.
std::vector<std::string> XlsxSheetNames(const std::string& path);
// Reads sheet `index` (0-based) of the workbook into `sheet`: every cell's
// value as text (shared and inline strings as written, numbers as stored,
// booleans TRUE and FALSE, errors as their code). With `header_row`, the
// first row names the columns and the second becomes row 1.
void ReadXlsxSheet(const std::string& path, std::size_t index, bool header_row, worksheet::Worksheet& sheet);

// Writes `sheets` as a workbook with libxlsxwriter, one sheet each, under
// their names made fit for Excel (31 characters at most, no []:*?/\, unique).
// A cell whose text is a number in Excel's own notation is written as a
// number, every other text as a string, so reading the file back gives the
// same texts. With `header_row`, columns with header names get a first row
// of them. The file is written under a temporary name and renamed when
// complete. Throws WorkbookError when a sheet exceeds Excel's limits.
void WriteXlsx(const std::string& path, const std::vector<const worksheet::Worksheet*>& sheets, bool header_row);

// ---- Excel 97-2003 (.xls), read with libfreexl -----------------------------

std::vector<std::string> XlsSheetNames(const std::string& path);
void ReadXlsSheet(const std::string& path, std::size_t index, bool header_row, worksheet::Worksheet& sheet);

// ---- any data file ----------------------------------------------------------

enum class DataFileKind { Delimited, Xlsx, Xls, Project };
// The kind of `path` by its extension; anything unknown is delimited text.
DataFileKind DataFileKindOf(const std::string& path);

// The sheet names of a workbook (one unnamed entry for delimited text).
std::vector<std::string> DataFileSheetNames(const std::string& path);

// Reads the first sheet of `path` as orvik-cli --sheet does: delimited text
// with its separator by extension and no header row, the first sheet of a
// workbook, or the first worksheet of a project with its header names.
// Throws std::runtime_error (or a subclass) with a message naming the file.
// Returns the reader's information notices for the user (delimited text:
// ReadDelimitedText).
std::vector<std::string> ReadFirstSheet(const std::string& path, worksheet::Worksheet& sheet);

}  // namespace orvik::formats
