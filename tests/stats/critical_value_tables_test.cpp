#include "stats/critical_value_tables.h"

#include <gtest/gtest.h>

#include <stdexcept>

// Every entry is checked against Boost.Math in critical_value_accuracy_test.

namespace orvik::stats {
namespace {

// The indices outside the tables are in data/edges.tsv; the message names
// the table and its rows.
TEST(CriticalValueTables, IndexOutsideATableNamesTheTable) {
  try {
    Estt(38, 0);
    FAIL();
  } catch (const std::out_of_range& error) {
    EXPECT_STREQ(error.what(), "row 38 is outside the t table (whole numbers 0 to 37)");
  }
}

}  // namespace
}  // namespace orvik::stats
