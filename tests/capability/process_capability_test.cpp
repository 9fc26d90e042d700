#include "capability/process_capability.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "capability/cpk_form.h"
#include "support/sheet_host.h"

namespace orvik::capability {
namespace {

using testing_support::HostOver;
using testing_support::MessageTexts;

// Ten individual values; the expected figures below were worked out
// independently (decimal arithmetic, the complementary error function).
const std::vector<double> kTen = {10.2, 9.8, 10.1, 10.4, 9.9, 10.0, 10.3, 9.7, 10.1, 10.2};

CpkSettings TwoSided(double lsl, double usl) {
  CpkSettings study;
  study.confirmed = true;
  study.LSL = lsl;
  study.USL = usl;
  return study;
}

TEST(CapabilityC4Test, TableUpToTwentyFiveApproximationAbove) {
  EXPECT_EQ(CapabilityC4(2), 0.7979);
  EXPECT_EQ(CapabilityC4(10), 0.9727);
  EXPECT_EQ(CapabilityC4(25), 0.9896);
  EXPECT_DOUBLE_EQ(CapabilityC4(26), 100.0 / 101.0);
  EXPECT_DOUBLE_EQ(CapabilityC4(1000), 3996.0 / 3997.0);
}

TEST(ComputeCapabilityTest, TwoSidedStudyWithMovingRanges) {
  const CapabilityOutcome outcome = ComputeCapability(kTen, TwoSided(9, 11));
  ASSERT_TRUE(outcome.result.has_value()) << outcome.refusal;
  const CapabilityResult& r = *outcome.result;
  EXPECT_EQ(r.n, 10);
  EXPECT_EQ(r.mean, 10.07);
  EXPECT_EQ(r.variance, 0.049);
  EXPECT_EQ(r.sigmaLT, 0.2275721561);
  EXPECT_EQ(r.sigmaST, 0.29550827);
  EXPECT_EQ(r.Cp, 1.12800002);
  EXPECT_EQ(r.Cpu, 1.04904002);
  EXPECT_EQ(r.Cpl, 1.20696002);
  EXPECT_EQ(r.Cpk, r.Cpu);
  EXPECT_EQ(r.Pp, 1.4647369);
  EXPECT_EQ(r.Ppu, 1.36220531);
  EXPECT_EQ(r.Ppl, 1.56726848);
  EXPECT_EQ(r.Ppk, r.Ppu);
  EXPECT_EQ(r.observedPpm, 0);
  EXPECT_NEAR(r.potentialPpm, 23.17, 1e-9);
  EXPECT_EQ(r.longTermSigmaLevel, 4.08661594);
  EXPECT_EQ(r.shortTermSigmaLevel, 4.08661594 + 1.5);
}

TEST(ComputeCapabilityTest, SubgroupsCutInOrderWithAShorterLastGroup) {
  CpkSettings study = TwoSided(9, 11);
  study.UseSubgroups = true;
  study.SubgroupSize = 4;  // groups of 4, 4 and a last group of 2
  EXPECT_EQ(ComputeCapability(kTen, study).result->sigmaST, 0.21044412);
  study.SubgroupSize = 3;  // groups of 3, 3, 3; the last single value is left out
  EXPECT_EQ(ComputeCapability(kTen, study).result->sigmaST, 0.29272804);
}

TEST(ComputeCapabilityTest, OneSidedStudiesUseTheirSideOnly) {
  CpkSettings upper = TwoSided(0, 11);
  upper.UseLower = false;
  const CapabilityResult u = *ComputeCapability(kTen, upper).result;
  EXPECT_FALSE(u.Cp.has_value());
  EXPECT_FALSE(u.Cpl.has_value());
  EXPECT_EQ(u.Cpk, u.Cpu);
  EXPECT_EQ(u.Ppk, u.Ppu);
  EXPECT_EQ(u.longTermSigmaLevel, 4.08661594);

  CpkSettings lower = TwoSided(9, 0);
  lower.UseUpper = false;
  const CapabilityResult l = *ComputeCapability(kTen, lower).result;
  EXPECT_EQ(l.Cpk, l.Cpl);
  EXPECT_EQ(l.Ppk, l.Ppl);
  EXPECT_EQ(l.longTermSigmaLevel, 4.70180543);  // (10.07 - 9) / 0.2275721561
}

TEST(ComputeCapabilityTest, TwoSidedSigmaLevelIsMeasuredFromTheUpperLimitEvenWhenTheLowerIsNearer) {
  const CapabilityResult r = *ComputeCapability(kTen, TwoSided(9.5, 13)).result;
  EXPECT_LT(*r.Cpl, *r.Cpu);
  EXPECT_EQ(r.Cpk, r.Cpl);
  EXPECT_EQ(r.longTermSigmaLevel, 12.87503731);  // (13 - 10.07) / 0.2275721561
}

TEST(ComputeCapabilityTest, CountsOnlyValuesStrictlyBeyondALimit) {
  // 10.4 sits on the upper limit, 9.7 below the lower one.
  const CapabilityResult r = *ComputeCapability(kTen, TwoSided(9.8, 10.4)).result;
  EXPECT_EQ(r.observedPpm, 100000);
}

TEST(ComputeCapabilityTest, FarTailRatesKeepTheirDigits) {
  // Eight sigma to the upper limit: about 6.2e-16, far below a ppm; what
  // must not happen is a negative or noisy rate from 1 - CDF.
  const CapabilityResult r = *ComputeCapability(kTen, TwoSided(0, 10.07 + 8 * 0.2275721561)).result;
  EXPECT_EQ(r.potentialPpm, 0);
}

TEST(ComputeCapabilityTest, RefusalsInTheirOrder) {
  const struct {
    std::vector<double> values;
    std::string refusal;
  } cases[] = {
      {{}, "Please, Input valid data"},
      {{5, 5, 5}, "All data are same"},
      {{5, 6}, "All data are not enough to analysis"},
      {{1e-7, 2e-7, 3e-7}, "Improper data for process capability analysis"},  // variance rounds to 0
  };
  for (const auto& c : cases) {
    const CapabilityOutcome outcome = ComputeCapability(c.values, TwoSided(0, 1));
    EXPECT_FALSE(outcome.result.has_value());
    EXPECT_EQ(outcome.refusal, c.refusal);
  }
  CpkSettings study = TwoSided(0, 20);
  study.UseSubgroups = true;
  study.SubgroupSize = 2;  // every subgroup constant: no within spread
  EXPECT_EQ(ComputeCapability(std::vector<double>{1, 1, 5, 5, 9, 9}, study).refusal,
            "Improper data for process capability analysis");
}

TEST(CpkFormTest, OptionsEnableExactlyTheInputsOfTheirCase) {
  CpkForm form;
  EXPECT_TRUE(form.Control("TwoOpt").checked);
  EXPECT_TRUE(form.Control("Uppertxt").enabled && form.Control("Lowertxt").enabled);
  EXPECT_FALSE(form.Control("UpOpt").enabled || form.Control("LowOpt").enabled);
  form.Click("OneOpt");
  EXPECT_TRUE(form.Control("UpOpt").enabled && form.Control("LowOpt").enabled);
  EXPECT_TRUE(form.Control("Uppertxt").enabled);
  EXPECT_FALSE(form.Control("Lowertxt").enabled);
  form.Click("LowOpt");
  EXPECT_FALSE(form.Control("Uppertxt").enabled);
  EXPECT_TRUE(form.Control("Lowertxt").enabled);
  EXPECT_FALSE(form.Control("Subsize").enabled);
  form.Click("SubYes");
  EXPECT_TRUE(form.Control("Subsize").enabled && form.Control("UpDown").enabled);
  form.Click("UpDown");
  EXPECT_EQ(form.Control("Subsize").text, "3");
}

TEST(CpkFormTest, FocusLossFixesEmptyLimitsAndBadSubgroupSizes) {
  CpkForm form;
  form.Type("Uppertxt", "");
  EXPECT_EQ(form.Control("Uppertxt").text, "0");
  for (const char* text : {"1", "abc", "", "-4"}) {
    form.Type("Subsize", text);
    EXPECT_EQ(form.Control("Subsize").text, "2") << text;
  }
  form.Type("Subsize", "5");
  EXPECT_EQ(form.Control("Subsize").text, "5");
}

TEST(CpkFormTest, OkRefusesImproperInputAndStaysOpen) {
  const struct {
    std::vector<std::pair<std::string, std::string>> typed;
    std::vector<std::string> clicks;
    std::string message;
  } cases[] = {
      {{{"Uppertxt", ""}, {"Lowertxt", ""}}, {}, "Include improper data"},  // both become "0": LSL >= USL
      {{{"Uppertxt", "10"}, {"Lowertxt", "12"}}, {}, "Include improper data"},
      {{{"Uppertxt", "10 mm"}, {"Lowertxt", "2"}}, {}, "Include improper data"},
      {{{"Lowertxt", "x"}}, {"OneOpt", "LowOpt"}, "Include improper data"},
      {{{"Uppertxt", "10"}, {"Lowertxt", "2"}, {"Subsize", "2.5"}}, {"SubYes"}, "Include improper subgroup size"},
  };
  for (const auto& c : cases) {
    CpkForm form;
    for (const auto& click : c.clicks) form.Click(click);
    for (const auto& [control, text] : c.typed) form.Type(control, text);
    auto host = HostOver({}, {});
    EXPECT_FALSE(form.PressOk(host));
    EXPECT_EQ(MessageTexts(host), std::vector<std::string>{c.message});
  }
}

}  // namespace
}  // namespace orvik::capability
