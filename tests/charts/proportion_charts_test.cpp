#include "charts/proportion_charts.h"

#include <gtest/gtest.h>

#include <sstream>

#include "charts/control_form.h"
#include "charts/proportion_limits.h"
#include "charts/run_rules.h"
#include "support/case_table.h"
#include "support/sheet_host.h"

// The p and u charts' grids, limits, codes and labels on whole sheets are
// held by the golden cases (tests/golden/mnuP, tests/golden/mnuU), each
// checked against an independent computation; these tests cover the edges.
namespace orvik::charts {
namespace {

using testing_support::LogLines;
using testing_support::MessageTexts;
using testing_support::SheetHost;
using Lines = std::vector<std::string>;

std::vector<std::string> Split(const std::string& text, char separator) {
  std::vector<std::string> parts;
  std::stringstream in(text);
  for (std::string part; std::getline(in, part, separator);) parts.push_back(part);
  if (!text.empty() && text.back() == separator) parts.push_back("");
  return parts;
}

// Which blocks and dialog answers each chart refuses, with which message,
// and what it writes to the session log.
TEST(AttributeChartInputTest, RefusalsAndTheirOrder) {
  for (const auto& row : testing_support::ReadCases("charts/data/attribute_inputs.tsv")) {
    SCOPED_TRACE(row.Where());
    const std::string chart = row[0];
    testing_support::SheetRows cells;
    for (const auto& line : Split(row[2], ';')) cells.push_back(Split(line, ','));
    std::vector<cli::DialogSetting> settings;
    if (row[3] != "-")
      for (const auto& setting : Split(row[3], ',')) {
        const auto equals = setting.find('=');
        settings.push_back({"PSubForm", setting.substr(0, equals), setting.substr(equals + 1)});
      }
    auto host = SheetHost(cells, row[1], settings);
    chart == "p" ? PView(host) : UView(host);
    EXPECT_EQ(MessageTexts(host), row[4] == "-" ? Lines{} : Lines{row[4]});
    Lines log;
    if (row[5] != "none") log = {chart + " control chart generation is starting"};
    if (row[5] == "completed") log.push_back(chart + " control chart generation is completed");
    if (row[5] == "cancelled") log.push_back("Cancel " + chart + " control chart generation");
    EXPECT_EQ(LogLines(host), log);
    EXPECT_EQ(host.Windows().size(), row[5] == "completed" ? 1u : 0u);
  }
}

// A point lies in a 2-to-3-sigma zone by its own standardized value, not by
// the drawn lines, which the floor and cap move and which step with the
// sample sizes.
TEST(StandardizedMasksTest, ZonesFollowEachPointsSigma) {
  for (const auto& row : testing_support::ReadCases("charts/data/standardized_zones.tsv")) {
    SCOPED_TRACE(row.Where());
    std::vector<double> values, lcl, ucl, z;
    for (std::size_t i = 2; i < row.fields.size(); ++i) {
      const auto parts = Split(row[i], ':');
      ASSERT_EQ(parts.size(), 4u);
      values.push_back(std::stod(parts[0]));
      lcl.push_back(std::stod(parts[1]));
      ucl.push_back(std::stod(parts[2]));
      z.push_back(std::stod(parts[3]));
    }
    const auto masks = StandardizedOutOfControlMasks(values, 0.2, ucl, lcl, z);
    for (std::size_t i = 0; i < masks.size(); ++i)
      EXPECT_EQ((masks[i] & RuleBit(row[0][0])) != 0, row[1] == "fires") << "point " << i + 1;
  }
}

// sigma_z is the mean moving range of the z_i over d2 = 1.128: 1 for z
// that move by 1.128 from sample to sample, 0 for z that do not move; it
// needs two samples.
TEST(LaneySigmaZTest, MeanMovingRangeOverD2) {
  EXPECT_DOUBLE_EQ(LaneySigmaZ({0.0, 1.128, 0.0}), 1.0);
  EXPECT_DOUBLE_EQ(LaneySigmaZ({-1.128, 1.128, -1.128, 1.128}), 2.0);
  EXPECT_EQ(LaneySigmaZ({0.7, 0.7, 0.7}), 0.0);
  EXPECT_THROW(LaneySigmaZ({1.0}), ChartComputationError);
}

// Without a nonconforming unit p-bar is 0 and every sigma is 0: the limits
// close on the centre line, no point is out of control, and the p' chart's
// sigma_z is 0 rather than NaN. A single sample leaves p' no moving range,
// which ends the chart on its failure path.
TEST(PChartLimitsTest, DegenerateSamples) {
  const AttributeSamples none{{50, 40, 60}, {0, 0, 0}};
  for (const bool laney : {false, true}) {
    const AttributeChartLimits limits = PChartLimits(none, {.laney = laney});
    EXPECT_EQ(limits.centre, 0.0);
    EXPECT_EQ(limits.UCL, (std::vector<double>{0, 0, 0}));
    EXPECT_EQ(limits.standardized, (std::vector<double>{0, 0, 0}));
    EXPECT_EQ(limits.sigmaZ, laney ? 0.0 : 1.0);
  }
  EXPECT_THROW(PChartLimits({{50}, {3}}, {.laney = true}), ChartComputationError);
  auto one = SheetHost({{"50", "3"}}, "A1:B1", {{"PSubForm", "Laney", "1"}});
  EXPECT_THROW(PView(one), ChartFailed);
  EXPECT_EQ(MessageTexts(one), Lines{"Fail p control chart generation"});
  EXPECT_EQ(LogLines(one).back(), "Cancel p control chart generation");
}

}  // namespace
}  // namespace orvik::charts
