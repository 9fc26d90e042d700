#include "formats/database_import.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include "formats/test_files.h"

namespace orvik::formats {
namespace {

TEST(DatabaseImportTest, ATableOfAnSqliteDatabaseFillsASheet) {
  TempFolder folder;
  const std::string path = folder.Path("plant.db");
  sqlite3* db = nullptr;
  ASSERT_EQ(sqlite3_open(path.c_str(), &db), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(db,
                         "CREATE TABLE \"Line \"\"2\"\"\"(id INTEGER, \"diameter mm\" REAL, note TEXT, raw BLOB);"
                         "INSERT INTO \"Line \"\"2\"\"\" VALUES(1, 0.1, 'ok, \"fine\"', NULL),"
                         "(2, NULL, 'Größe\nzwei', x'0102'),(9007199254740993, 1e300, '', NULL);"
                         "CREATE TABLE empty(a, b);"
                         "CREATE VIEW v AS SELECT id FROM \"Line \"\"2\"\"\";",
                         nullptr, nullptr, nullptr),
            SQLITE_OK);
  sqlite3_close(db);

  EXPECT_EQ(DatabaseTables(path), (std::vector<std::string>{"Line \"2\"", "empty", "v"}));
  worksheet::Worksheet sheet("WorkSheet 1");
  ReadDatabaseTable(path, "Line \"2\"", sheet);
  EXPECT_EQ(sheet.ColumnHeaderName(1), "id");
  EXPECT_EQ(sheet.ColumnHeaderName(2), "diameter mm");
  EXPECT_EQ(sheet.DataRowCnt(), 3);
  EXPECT_EQ(sheet.Text(1, 2), "0.1");  // shortest exact form, not SQLite's 15 digits
  EXPECT_EQ(sheet.Text(1, 3), "ok, \"fine\"");
  EXPECT_EQ(sheet.Text(2, 2), "");
  EXPECT_EQ(sheet.Text(2, 3), "Größe\nzwei");
  EXPECT_EQ(sheet.Text(2, 4), "(2 bytes)");
  EXPECT_EQ(sheet.Text(3, 1), "9007199254740993");  // integers beyond a double's precision stay exact
  EXPECT_EQ(sheet.Text(3, 2), "1e+300");
  worksheet::Worksheet empty;
  ReadDatabaseTable(path, "empty", empty);
  EXPECT_EQ(empty.DataRowCnt(), 0);
  EXPECT_EQ(empty.ColumnHeaderName(2), "b");
  EXPECT_THROW(ReadDatabaseTable(path, "missing", empty), DatabaseError);
}

TEST(DatabaseImportTest, FilesThatAreNoDatabaseAreRefused) {
  TempFolder folder;
  WriteAll(folder.Path("text.db"), "id,value\r\n1,2\r\n");
  EXPECT_THROW(DatabaseTables(folder.Path("text.db")), DatabaseError);
  EXPECT_THROW(DatabaseTables(folder.Path("missing.db")), DatabaseError);
  WriteAll(folder.Path("cut.db"), std::string("SQLite format 3\0", 16) + std::string(200, '\x7f'));
  EXPECT_THROW(DatabaseTables(folder.Path("cut.db")), DatabaseError);
}

}  // namespace
}  // namespace orvik::formats
