#include "analyses/column_choice.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "analyses/simple_regression.h"
#include "support/case_table.h"
#include "support/sheet_host.h"

namespace orvik::analyses {
namespace {

// A sheet of three columns, the second named "Weight", with A:C selected.
struct NamedSheet {
  worksheet::Worksheet sheet = testing_support::MakeSheet({{"1", "2", "3"}, {"4", "5", "6"}});
  worksheet::DataSelection selection;
  NamedSheet() {
    sheet.SetColumnHeader(2, "Weight");
    sheet.Selection = testing_support::Block(1, -1, 3, -1);
    worksheet::ResolveBlock(&sheet, selection);
  }
};

TEST(ColumnChoiceTest, DefaultsAreTheBlocksSecondAndFirstColumns) {
  NamedSheet named;
  const SimpleReg dialog(ColumnsOfBlock(named.sheet, named.selection));
  EXPECT_EQ(dialog.Control("YColumn").text, "Weight");
  EXPECT_EQ(dialog.Control("XColumn").text, "A");
  EXPECT_EQ(SimpleReg().Control("YColumn").text, "");  // made without a block
}

// Names, letters, case and the two refusals (data/column_choices.tsv).
TEST(ColumnChoiceTest, BoxesNameBlockColumnsByHeaderOrLetters) {
  NamedSheet named;
  for (const auto& row : testing_support::ReadCases("analyses/data/column_choices.tsv")) {
    SimpleReg dialog(ColumnsOfBlock(named.sheet, named.selection));
    dialog.Type("YColumn", row[0]);
    dialog.Type("XColumn", row[1]);
    auto host = testing_support::HostOver({}, {});
    const bool accepted = row.fields.size() == 4;
    EXPECT_EQ(dialog.PressOk(host), accepted) << row.Where();
    if (accepted) {
      EXPECT_EQ(dialog.Result().responseColumn, row.Number(2)) << row.Where();
      EXPECT_EQ(dialog.Result().predictorColumn, row.Number(3)) << row.Where();
      EXPECT_TRUE(host.Messages().empty()) << row.Where();
    } else {
      EXPECT_EQ(testing_support::MessageTexts(host), std::vector<std::string>{row[2]}) << row.Where();
    }
  }
}

}  // namespace
}  // namespace orvik::analyses
