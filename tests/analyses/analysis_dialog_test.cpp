#include "analyses/analysis_dialog.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "analyses/design_sheets.h"
#include "analyses/estimation_dialogs.h"
#include "analyses/hypothesis_dialogs.h"
#include "support/case_table.h"
#include "support/sheet_host.h"

namespace orvik::analyses {
namespace {

using Make = std::function<std::unique_ptr<shell::DialogModel>()>;
template <typename D, typename... Args>
Make Of(Args... args) {
  return [=] { return std::make_unique<D>(args...); };
}

// OK on the typed values of the estimation and test dialogs: every refusal
// is the one numerical-data message and keeps the dialog open
// (data/dialog_entries.tsv).
TEST(AnalysisDialogTest, OkAcceptsOnlyValidNumbers) {
  const std::map<std::string, Make> dialogs = {{"sigma", Of<Estimation>()},
                                               {"counts", Of<Proportions>()},
                                               {"mean", Of<MeanHypoth>()},
                                               {"variance", Of<MeanHypoth>(MeanHypoth::Tested::Variance)},
                                               {"p0", Of<HypothProportion>()},
                                               {"one", MakeDOEOneFactor},
                                               {"two", MakeDOETwoFactor},
                                               {"factorial", MakeDOESelection}};
  for (const auto& row : testing_support::ReadCases("analyses/data/dialog_entries.tsv")) {
    const auto dialog = dialogs.at(row[0])();
    for (std::size_t i = 2; i < row.fields.size(); ++i) {
      const std::size_t equals = row[i].find('=');
      shell::ApplyControlSetting(*dialog, {dialog->Name(), row[i].substr(0, equals), row[i].substr(equals + 1)});
    }
    const bool accepted = row[1] == "accept";
    auto host = testing_support::HostOver({}, {});
    EXPECT_EQ(dialog->PressOk(host), accepted) << row.Where();
    EXPECT_EQ(testing_support::MessageTexts(host),
              accepted ? std::vector<std::string>{} : std::vector<std::string>{kInvalidNumericalData})
        << row.Where();
  }
}

TEST(AnalysisDialogTest, SigmaBoxesFollowTheirOptionButtons) {
  Estimation estimation;
  EXPECT_TRUE(estimation.Control("EstSigma").checked);
  EXPECT_FALSE(estimation.Control("sigmatxt").enabled);
  estimation.Click("Inputsigma");
  EXPECT_TRUE(estimation.Control("sigmatxt").enabled);
  estimation.Type("sigmatxt", "3.5");
  estimation.Click("EstSigma");  // back to estimating: the box is reset
  EXPECT_EQ(estimation.Control("sigmatxt").text, "1.0");
  EXPECT_FALSE(estimation.Control("sigmatxt").enabled);

  // The variance test has no sigma to give.
  EXPECT_FALSE(MeanHypoth(MeanHypoth::Tested::Variance).Control("Inputsigma").enabled);
  // A refused sigma is cleared from its box.
  MeanHypoth mean;
  mean.Click("Inputsigma");
  mean.Type("sigmatxt", "-2");
  mean.Type("hypotxt", "1");
  auto host = testing_support::HostOver({}, {});
  EXPECT_FALSE(mean.PressOk(host));
  EXPECT_EQ(mean.Control("sigmatxt").text, "");

  // Equal variances are a choice of the t test alone.
  EXPECT_TRUE(TwoHypoth(TwoHypoth::Tested::Means).Control("EqualVar").enabled);
  EXPECT_FALSE(TwoHypoth(TwoHypoth::Tested::Variances).Control("EqualVar").enabled);
  EXPECT_FALSE(TwoHypoth(TwoHypoth::Tested::PairedMeans).Control("EqualVar").enabled);
}

}  // namespace
}  // namespace orvik::analyses
