// The database import: a table of an SQLite database (read through SQLite
// itself) or of an Access database (read through mdbtools' libmdb when this
// build has it) fills a worksheet.
#include "formats/database_import.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <fstream>
#include <memory>

#include "formats/number_text.h"
#include "formats/sqlite_db.h"

#ifdef ORVIK_HAVE_MDB
#include <mdbtools.h>
#endif

namespace orvik::formats {

namespace {

bool IsSqliteFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw DatabaseError("The database \"" + path + "\" could not be opened: " + std::strerror(errno) + ".");
  char magic[16] = {};
  in.read(magic, sizeof magic);
  return in.gcount() == sizeof magic && std::memcmp(magic, "SQLite format 3", 16) == 0;
}

// A name inside double quotes, as SQL writes identifiers.
std::string QuotedName(const std::string& name) {
  std::string quoted = "\"";
  for (char c : name) quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
  return quoted + "\"";
}

std::vector<std::string> SqliteTables(const std::string& path) {
  SqliteDb db(path, SQLITE_OPEN_READONLY);
  SqliteStatement tables(db, "SELECT name FROM sqlite_schema WHERE type IN ('table','view') AND name NOT LIKE 'sqlite_%' "
                             "ORDER BY rowid");
  std::vector<std::string> names;
  while (tables.Step()) names.emplace_back(tables.Text(0));
  return names;
}

void ReadSqliteTable(const std::string& path, const std::string& table, worksheet::Worksheet& sheet) {
  SqliteDb db(path, SQLITE_OPEN_READONLY);
  SqliteStatement rows(db, "SELECT * FROM " + QuotedName(table));
  for (int col = 0; col < rows.ColumnCount(); ++col) sheet.SetColumnHeader(col + 1, rows.ColumnName(col));
  long row = 0;
  while (rows.Step()) {
    ++row;
    for (int col = 0; col < rows.ColumnCount(); ++col) {
      switch (rows.Type(col)) {
        case SQLITE_NULL: break;
        case SQLITE_INTEGER: sheet.SetText(row, col + 1, std::to_string(rows.Int(col))); break;
        case SQLITE_FLOAT: sheet.SetText(row, col + 1, ShortestText(rows.Real(col))); break;
        case SQLITE_BLOB: sheet.SetText(row, col + 1, "(" + std::to_string(rows.Blob(col).size()) + " bytes)"); break;
        default: sheet.SetText(row, col + 1, rows.Text(col)); break;
      }
    }
  }
  sheet.ShrinkToFit();
}

#ifdef ORVIK_HAVE_MDB
struct MdbCloser {
  void operator()(MdbHandle* mdb) const { mdb_close(mdb); }
};
using MdbOwner = std::unique_ptr<MdbHandle, MdbCloser>;

MdbOwner OpenAccess(const std::string& path) {
  MdbOwner mdb(mdb_open(path.c_str(), MDB_NOFLAGS));
  if (!mdb || !mdb_read_catalog(mdb.get(), MDB_TABLE))
    throw DatabaseError("\"" + path + "\" cannot be read as an Access database.");
  return mdb;
}

std::vector<std::string> AccessTables(const std::string& path) {
  MdbOwner mdb = OpenAccess(path);
  std::vector<std::string> names;
  for (unsigned i = 0; i < mdb->num_catalog; ++i) {
    auto* entry = static_cast<MdbCatalogEntry*>(g_ptr_array_index(mdb->catalog, i));
    if (entry->object_type == MDB_TABLE && !mdb_is_system_table(entry)) names.emplace_back(entry->object_name);
  }
  return names;
}

void ReadAccessTable(const std::string& path, const std::string& name, worksheet::Worksheet& sheet) {
  MdbOwner mdb = OpenAccess(path);
  std::string table_name = name;
  MdbTableDef* table = mdb_read_table_by_name(mdb.get(), table_name.data(), MDB_TABLE);
  if (!table) throw DatabaseError("The Access database \"" + path + "\" has no table " + name + ".");
  std::unique_ptr<MdbTableDef, void (*)(MdbTableDef*)> owner(table, mdb_free_tabledef);
  mdb_read_columns(table);
  mdb_rewind_table(table);
  const unsigned columns = table->num_cols;
  std::vector<std::vector<char>> values(columns, std::vector<char>(MDB_BIND_SIZE));
  std::vector<int> lengths(columns);
  for (unsigned col = 0; col < columns; ++col) {
    auto* column = static_cast<MdbColumn*>(g_ptr_array_index(table->columns, col));
    sheet.SetColumnHeader(col + 1, column->name);
    mdb_bind_column(table, static_cast<int>(col) + 1, values[col].data(), &lengths[col]);
  }
  long row = 0;
  while (mdb_fetch_row(table)) {
    ++row;
    for (unsigned col = 0; col < columns; ++col)
      if (lengths[col] > 0) sheet.SetText(row, col + 1, std::string_view(values[col].data(), static_cast<std::size_t>(lengths[col])));
  }
  sheet.ShrinkToFit();
}
#endif

}  // namespace

bool CanReadAccess() {
#ifdef ORVIK_HAVE_MDB
  return true;
#else
  return false;
#endif
}

std::vector<std::string> DatabaseTables(const std::string& path) {
  try {
    if (IsSqliteFile(path)) return SqliteTables(path);
  } catch (const SqliteError& error) {
    throw DatabaseError("The database \"" + path + "\" cannot be read (" + error.what() + ").");
  }
#ifdef ORVIK_HAVE_MDB
  return AccessTables(path);
#else
  throw DatabaseError("\"" + path + "\" is not an SQLite database, and this build of Orvik reads no Access databases.");
#endif
}

void ReadDatabaseTable(const std::string& path, const std::string& table, worksheet::Worksheet& sheet) {
  try {
    if (IsSqliteFile(path)) return ReadSqliteTable(path, table, sheet);
  } catch (const SqliteError& error) {
    throw DatabaseError("The table " + table + " of \"" + path + "\" cannot be read (" + error.what() + ").");
  }
#ifdef ORVIK_HAVE_MDB
  ReadAccessTable(path, table, sheet);
#else
  throw DatabaseError("\"" + path + "\" is not an SQLite database, and this build of Orvik reads no Access databases.");
#endif
}

}  // namespace orvik::formats
