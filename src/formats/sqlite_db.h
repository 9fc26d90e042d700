#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace orvik::formats {

// Thin owners of an SQLite connection and a prepared statement. Every
// failure throws SqliteError carrying SQLite's own message and code.
class SqliteError : public std::runtime_error {
 public:
  SqliteError(int code, const std::string& message) : std::runtime_error(message), code_(code) {}
  int Code() const { return code_; }

 private:
  int code_;
};

class SqliteDb {
 public:
  SqliteDb(const std::string& path, int flags);
  ~SqliteDb();
  SqliteDb(const SqliteDb&) = delete;
  SqliteDb& operator=(const SqliteDb&) = delete;

  sqlite3* Handle() const { return db_; }
  void Exec(const char* sql);
  // Closes the connection, reporting a failure (an unfinished write) as an error.
  void Close();
  [[noreturn]] void Throw(int code) const;

 private:
  sqlite3* db_ = nullptr;
};

class SqliteStatement {
 public:
  SqliteStatement(SqliteDb& db, std::string_view sql);
  ~SqliteStatement();
  SqliteStatement(const SqliteStatement&) = delete;
  SqliteStatement& operator=(const SqliteStatement&) = delete;

  // Binding counts parameters from 1, as SQLite does. Texts and blobs are
  // copied, so temporaries may be bound.
  void Bind(int index, std::int64_t value);
  void Bind(int index, std::string_view text);
  void BindBlob(int index, std::string_view bytes);
  void BindNull(int index);
  void Bind(int index, const std::optional<std::uint32_t>& value) {
    if (value) Bind(index, static_cast<std::int64_t>(*value));
    else BindNull(index);
  }

  // Steps once: true while a row is available. Step() on an insert runs it.
  bool Step();
  // Runs an insert or update and resets it for the next bindings.
  void Run();
  void Reset();

  // Columns count from 0, as SQLite does.
  int ColumnCount() const;
  bool IsNull(int column) const;
  int Type(int column) const;
  std::int64_t Int(int column) const;
  double Real(int column) const;
  std::string_view Text(int column) const;
  std::string_view Blob(int column) const;
  std::string ColumnName(int column) const;

 private:
  SqliteDb& db_;
  sqlite3_stmt* statement_ = nullptr;
};

}  // namespace orvik::formats
