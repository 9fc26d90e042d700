#include "capability/pie_chart.h"

#include <gtest/gtest.h>

#include "support/case_table.h"

namespace orvik::capability {
namespace {

// The shown percentages add up to exactly 100 whatever the rounding of the
// shares, and the hundredths left over go where the table says.
TEST(PieChartTest, PercentagesSumToOneHundredByLargestRemainder) {
  for (const auto& row : testing_support::ReadCases("capability/data/pie_percentages.tsv")) {
    std::vector<PieSlice> slices;
    std::size_t i = 0;
    for (; row[i] != "->"; ++i) slices.push_back({"", row.Number(i), 0.0});
    SetPercentages(slices);
    double sum = 0.0;
    for (std::size_t s = 0; s < slices.size(); ++s) {
      EXPECT_EQ(slices[s].percent, row.Number(i + 1 + s)) << row.Where() << " slice " << s + 1;
      sum += slices[s].percent;
    }
    EXPECT_EQ(sum, 10000.0) << row.Where();
  }
}

}  // namespace
}  // namespace orvik::capability
