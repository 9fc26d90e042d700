#include "formats/sqlite_db.h"

namespace orvik::formats {

SqliteDb::SqliteDb(const std::string& path, int flags) {
  const int code = sqlite3_open_v2(path.c_str(), &db_, flags, nullptr);
  if (code != SQLITE_OK) {
    const std::string message = db_ ? sqlite3_errmsg(db_) : sqlite3_errstr(code);
    sqlite3_close(db_);
    db_ = nullptr;
    throw SqliteError(code, message);
  }
  sqlite3_extended_result_codes(db_, 1);
}

SqliteDb::~SqliteDb() {
  if (db_) sqlite3_close_v2(db_);
}

void SqliteDb::Exec(const char* sql) {
  const int code = sqlite3_exec(db_, sql, nullptr, nullptr, nullptr);
  if (code != SQLITE_OK) Throw(code);
}

void SqliteDb::Close() {
  if (!db_) return;
  const int code = sqlite3_close(db_);
  if (code != SQLITE_OK) Throw(code);
  db_ = nullptr;
}

void SqliteDb::Throw(int code) const { throw SqliteError(code, db_ ? sqlite3_errmsg(db_) : sqlite3_errstr(code)); }

SqliteStatement::SqliteStatement(SqliteDb& db, std::string_view sql) : db_(db) {
  const int code = sqlite3_prepare_v2(db.Handle(), sql.data(), static_cast<int>(sql.size()), &statement_, nullptr);
  if (code != SQLITE_OK) db.Throw(code);
}

SqliteStatement::~SqliteStatement() { sqlite3_finalize(statement_); }

void SqliteStatement::Bind(int index, std::int64_t value) {
  if (const int code = sqlite3_bind_int64(statement_, index, value); code != SQLITE_OK) db_.Throw(code);
}

void SqliteStatement::Bind(int index, std::string_view text) {
  const int code = sqlite3_bind_text64(statement_, index, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
  if (code != SQLITE_OK) db_.Throw(code);
}

void SqliteStatement::BindBlob(int index, std::string_view bytes) {
  // An empty blob is still a blob, not NULL: SQLite needs a non-null pointer.
  const int code = sqlite3_bind_blob64(statement_, index, bytes.empty() ? "" : bytes.data(), bytes.size(), SQLITE_TRANSIENT);
  if (code != SQLITE_OK) db_.Throw(code);
}

void SqliteStatement::BindNull(int index) {
  if (const int code = sqlite3_bind_null(statement_, index); code != SQLITE_OK) db_.Throw(code);
}

bool SqliteStatement::Step() {
  const int code = sqlite3_step(statement_);
  if (code == SQLITE_ROW) return true;
  if (code == SQLITE_DONE) return false;
  db_.Throw(code);
}

void SqliteStatement::Run() {
  Step();
  Reset();
}

void SqliteStatement::Reset() {
  sqlite3_reset(statement_);
  sqlite3_clear_bindings(statement_);
}

int SqliteStatement::ColumnCount() const { return sqlite3_column_count(statement_); }
bool SqliteStatement::IsNull(int column) const { return sqlite3_column_type(statement_, column) == SQLITE_NULL; }
int SqliteStatement::Type(int column) const { return sqlite3_column_type(statement_, column); }
std::int64_t SqliteStatement::Int(int column) const { return sqlite3_column_int64(statement_, column); }
double SqliteStatement::Real(int column) const { return sqlite3_column_double(statement_, column); }

std::string_view SqliteStatement::Text(int column) const {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
  const int size = sqlite3_column_bytes(statement_, column);
  return text ? std::string_view(text, static_cast<std::size_t>(size)) : std::string_view();
}

std::string_view SqliteStatement::Blob(int column) const {
  const auto* bytes = static_cast<const char*>(sqlite3_column_blob(statement_, column));
  const int size = sqlite3_column_bytes(statement_, column);
  return bytes ? std::string_view(bytes, static_cast<std::size_t>(size)) : std::string_view();
}

std::string SqliteStatement::ColumnName(int column) const {
  const char* name = sqlite3_column_name(statement_, column);
  return name ? name : "";
}

}  // namespace orvik::formats
