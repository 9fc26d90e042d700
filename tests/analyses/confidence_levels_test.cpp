#include "analyses/confidence_levels.h"

#include <gtest/gtest.h>

namespace orvik::analyses {
namespace {

struct RowCase {
  long df;
  int row;
};

TEST(TTableRowTest, OneRowPerDegreeOfFreedomUpToThirtyThenBands) {
  // Each band edge on both sides: 30 | 31..40 | 41..50 | 51..60 | 61..80 |
  // 81..100 | 101..120 | 121..1000 | above.
  const RowCase cases[] = {{1, 0},    {4, 3},     {29, 28},   {30, 29},   {31, 30},   {40, 30},
                           {41, 31},  {50, 31},   {51, 32},   {60, 32},   {61, 33},   {80, 33},
                           {81, 34},  {100, 34},  {101, 35},  {120, 35},  {121, 36},  {1000, 36},
                           {1001, 37}, {100000, 37}};
  for (const auto& c : cases) EXPECT_EQ(TTableRow(c.df), c.row) << "df " << c.df;
}

TEST(FTableRowTest, OneRowPerDegreeOfFreedomUpToThirtyThenFourBands) {
  const RowCase cases[] = {{1, 0},   {30, 29},  {31, 30},  {40, 30},  {41, 31},
                           {60, 31}, {61, 32},  {120, 32}, {121, 33}, {5000, 33}};
  for (const auto& c : cases) EXPECT_EQ(FTableRow(c.df), c.row) << "df " << c.df;
}

}  // namespace
}  // namespace orvik::analyses
