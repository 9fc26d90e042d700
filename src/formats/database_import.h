#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "worksheet/worksheet.h"

namespace orvik::formats {

// A database that cannot be read; what() is the message the user sees.
class DatabaseError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Whether this build reads Access databases (.mdb, .accdb) through mdbtools.
bool CanReadAccess();

// The user tables of the database at `path`, in the database's order: an
// SQLite file (recognised by its header) or, where mdbtools is built in, an
// Access file. System tables are left out.
std::vector<std::string> DatabaseTables(const std::string& path);

// Fills `sheet` with the table: its column names as header names, each row
// of the table one row of the sheet from row 1. NULL is an empty cell;
// numbers are written in their shortest exact form; binary values as their
// size, "(12 bytes)", since a cell holds text.
void ReadDatabaseTable(const std::string& path, const std::string& table, worksheet::Worksheet& sheet);

}  // namespace orvik::formats
