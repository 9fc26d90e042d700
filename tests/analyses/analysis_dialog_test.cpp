#include "analyses/analysis_dialog.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "analyses/estimation_dialogs.h"
#include "analyses/hypothesis_dialogs.h"
#include "support/sheet_host.h"

namespace orvik::analyses {
namespace {

using Make = std::function<std::unique_ptr<AnalysisDialog>()>;
template <typename D, typename... Args>
Make Of(Args... args) {
  return [=] { return std::make_unique<D>(args...); };
}

// OK on the typed values of the estimation and test dialogs: every refusal
// is the one numerical-data message and keeps the dialog open.
TEST(AnalysisDialogTest, OkAcceptsOnlyValidNumbers) {
  const Make variance = Of<MeanHypoth>(MeanHypoth::Tested::Variance);
  const struct {
    const char* dialog;
    Make make;
    std::vector<std::pair<std::string, std::string>> typed;
    bool accepted;
  } cases[] = {
      {"sigma", Of<Estimation>(), {{"Inputsigma", "1"}, {"sigmatxt", "2"}}, true},
      {"sigma", Of<Estimation>(), {{"Inputsigma", "1"}, {"sigmatxt", ""}}, false},
      {"sigma", Of<Estimation>(), {{"Inputsigma", "1"}, {"sigmatxt", "-1"}}, false},
      {"sigma", Of<Estimation>(), {{"Inputsigma", "1"}, {"sigmatxt", "abc"}}, false},
      {"counts", Of<Proportions>(), {{"defecttxt", "10"}, {"sampletxt", "10"}}, true},
      {"counts", Of<Proportions>(), {{"defecttxt", "0"}, {"sampletxt", "1"}}, true},
      {"counts", Of<Proportions>(), {{"defecttxt", "11"}, {"sampletxt", "10"}}, false},
      {"counts", Of<Proportions>(), {{"defecttxt", "1.5"}, {"sampletxt", "10"}}, false},
      {"counts", Of<Proportions>(), {{"defecttxt", "0"}, {"sampletxt", "0"}}, false},
      {"counts", Of<Proportions>(), {{"defecttxt", "-1"}, {"sampletxt", "10"}}, false},
      {"counts", Of<Proportions>(), {{"defecttxt", ""}, {"sampletxt", "10"}}, false},
      {"counts", Of<Proportions>(), {{"defecttxt", "1"}, {"sampletxt", "2e15"}}, false},
      {"mean", Of<MeanHypoth>(), {{"hypotxt", "-1"}, {"alphatxt", "99.9"}}, true},
      {"mean", Of<MeanHypoth>(), {{"hypotxt", ""}}, false},
      {"mean", Of<MeanHypoth>(), {{"hypotxt", "1"}, {"alphatxt", "0"}}, false},
      {"mean", Of<MeanHypoth>(), {{"hypotxt", "1"}, {"alphatxt", "100"}}, false},
      {"mean", Of<MeanHypoth>(), {{"hypotxt", "1"}, {"alphatxt", "x"}}, false},
      {"variance", variance, {{"hypotxt", "0.5"}}, true},
      {"variance", variance, {{"hypotxt", "-1"}}, false},
      {"p0", Of<HypothProportion>(), {{"defecttxt", "8"}, {"sampletxt", "100"}, {"proportiontxt", "0.999"}}, true},
      {"p0", Of<HypothProportion>(), {{"defecttxt", "8"}, {"sampletxt", "100"}, {"proportiontxt", "0"}}, false},
      {"p0", Of<HypothProportion>(), {{"defecttxt", "8"}, {"sampletxt", "100"}, {"proportiontxt", "1.2"}}, false},
      {"p0", Of<HypothProportion>(), {{"defecttxt", "8"}, {"sampletxt", "100"}, {"proportiontxt", ""}}, false},
  };
  for (const auto& c : cases) {
    const auto dialog = c.make();
    std::string typed;
    for (const auto& [control, value] : c.typed) {
      cli::ApplyDialogSetting(*dialog, {dialog->Name(), control, value});
      typed += " " + control + "=" + value;
    }
    auto host = testing_support::HostOver({}, {});
    EXPECT_EQ(dialog->PressOk(host), c.accepted) << c.dialog << typed;
    EXPECT_EQ(testing_support::MessageTexts(host),
              c.accepted ? std::vector<std::string>{} : std::vector<std::string>{kInvalidNumericalData})
        << c.dialog << typed;
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
