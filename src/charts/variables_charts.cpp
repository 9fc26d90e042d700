// The variables control charts: subgroups in rows (xbar-R, xbar, R, xbar-s,
// s) and individual values (x-MR, MR).
#include <string>

#include "charts/chart_input.h"
#include "charts/chart_limits.h"
#include "charts/control_charts.h"
#include "charts/control_form.h"
#include "shell/analysis_input.h"
#include "stats/compensated_sum.h"

namespace orvik::charts {

namespace {

constexpr const char* kSizeOne = "If n=1, please select x-MR control chart";
constexpr const char* kImproperXbarR = "Improper data for xbar-R control chart";
constexpr const char* kImproperXbarS = "Improper data for xbar-s control chart";
constexpr const char* kImproperS = "Selected data include improper data in columns or sample size must be more than two";
constexpr const char* kSampleSizeS = "Sample size must be more than two";
constexpr const char* kImproperMR = "Improper data for MR control chart";

// Reads the subgroups of the current selection and checks them: every cell
// numeric, more than one observation per subgroup and, for the s chart,
// at least three subgroups.
bool ReadSubgroupBlock(shell::Host& host, const char* improper_text, bool needs_three_subgroups, Subgroups& out) {
  auto groups = ReadSubgroups(*host.ActiveWorksheet(), host.CurrentSelection());
  if (!groups) {
    host.Refuse(improper_text);
    return false;
  }
  if (groups->size == 1) {
    host.Refuse(kSizeOne);
    return false;
  }
  if (needs_three_subgroups && groups->Count() < 3) {
    host.Refuse(kSampleSizeS);
    return false;
  }
  out = std::move(*groups);
  return true;
}

// Reads the individual values of the current selection, column after
// column; every cell must be numeric and at least two values must be there
// to form a moving range.
bool ReadIndividualValues(shell::Host& host, std::vector<double>& out) {
  if (!shell::CollectNumericCells(host, worksheet::CellPolicy::Refuse, kImproperMR)) return false;
  if (host.CurrentSelection().count < 2) {
    host.Refuse(kImproperMR);
    return false;
  }
  out = host.CurrentSelection().values;
  return true;
}

const shell::GivenLimits& Given(shell::Host& host) { return host.Settings().givenLimits; }

// The xbar chart's sigma lines follow A2 up to n = 25 and 2/sqrt(n) beyond,
// which is two thirds of the 3/sqrt(n) distance.
SigmaRule XbarRangeSigma(long n) { return n <= 25 ? kXbarRangeSigma : kTwoOfThreeSigma; }
SigmaRule XbarSSigma(long n) { return n <= 25 ? kTenSixesSigma : kTwoOfThreeSigma; }

ControlChart FinishedChart(std::string statistic, std::vector<double> values, const ControlLimits& limits,
                           double first_sample = 1.0) {
  ControlChart chart = MakeControlChart(std::move(statistic), std::move(values), limits, first_sample);
  FinishChart(chart);
  return chart;
}

// The MR chart of individual values: moving ranges from sample 2 on, limit
// labels to 6 places.
ControlChart MovingRangeChart(const std::vector<double>& ranges, const ControlLimits& limits) {
  ControlChart chart = MakeControlChart("MR", ranges, limits, 2.0);
  chart.seriesName = "Moving Range";
  chart.labelDecimals = 6;
  chart.valueDecimals = 12;
  FinishChart(chart);
  return chart;
}

}  // namespace

void XbarRView(shell::Host& host) {
  const std::string name = "xbar-R";
  Subgroups groups;
  if (!PrepareChartInput(host, name, true, [&] { return ReadSubgroupBlock(host, kImproperXbarR, false, groups); }))
    return;
  RunChartComputation(host, name, [&] {
    const SubgroupStatistics stats = ComputeSubgroupStatistics(groups);
    ControlLimits xbar_limits = XbarLimitsFromRange(stats.grandMean, stats.rBar, stats.sBar, stats.n);
    ControlLimits r_limits = RLimits(stats.rBar, stats.n);
    ApplyGivenLimits(Given(host), 0, XbarRangeSigma(stats.n), xbar_limits);
    ApplyGivenLimits(Given(host), 1, kTenSixesSigma, r_limits);
    host.ShowResultWindow(TwoChartWindow("xbar-R control chart", "mnuBarX-R",
                                         FinishedChart("xbar", stats.means, xbar_limits),
                                         FinishedChart("R", stats.ranges, r_limits), " [xbar & R Code] "));
  });
  host.Log().AppendSessionLine(CompletedLine(name));
}

void XbarView(shell::Host& host) {
  const std::string name = "xbar";
  Subgroups groups;
  if (!PrepareChartInput(host, name, false, [&] { return ReadSubgroupBlock(host, kImproperXbarR, false, groups); }))
    return;
  RunChartComputation(host, name, [&] {
    const SubgroupStatistics stats = ComputeSubgroupStatistics(groups);
    ControlLimits limits = XbarLimitsFromRange(stats.grandMean, stats.rBar, stats.sBar, stats.n);
    ApplyGivenLimits(Given(host), 0, XbarRangeSigma(stats.n), limits);
    host.ShowResultWindow(OneChartWindow("xbar control chart", "mnuBarX", FinishedChart("xbar", stats.means, limits)));
  });
  host.Log().AppendSessionLine(CompletedLine(name));
}

void RView(shell::Host& host) {
  const std::string name = "R";
  Subgroups groups;
  if (!PrepareChartInput(host, name, false, [&] { return ReadSubgroupBlock(host, kImproperXbarR, false, groups); }))
    return;
  RunChartComputation(host, name, [&] {
    const SubgroupStatistics stats = ComputeSubgroupStatistics(groups);
    ControlLimits limits = RLimits(stats.rBar, stats.n);
    ApplyGivenLimits(Given(host), 0, kTenSixesSigma, limits);
    host.ShowResultWindow(OneChartWindow("R control chart", "mnuR", FinishedChart("R", stats.ranges, limits)));
  });
  host.Log().AppendSessionLine(CompletedLine(name));
}

void XbarSView(shell::Host& host) {
  const std::string name = "xbar-s";
  Subgroups groups;
  if (!PrepareChartInput(host, name, true, [&] { return ReadSubgroupBlock(host, kImproperXbarS, false, groups); }))
    return;
  RunChartComputation(host, name, [&] {
    const SubgroupStatistics stats = ComputeSubgroupStatistics(groups);
    ControlLimits xbar_limits = XbarLimitsFromS(stats.grandMean, stats.sBar, stats.n);
    ControlLimits s_limits = SLimits(stats.sBar, stats.n);
    ApplyGivenLimits(Given(host), 0, XbarSSigma(stats.n), xbar_limits);
    ApplyGivenLimits(Given(host), 1, kTenSixesSigma, s_limits);
    host.ShowResultWindow(TwoChartWindow("xbar-s control chart", "mnuBarXS",
                                         FinishedChart("xbar", stats.means, xbar_limits),
                                         FinishedChart("s", stats.sds, s_limits), " [xbar & s Code] "));
  });
  host.Log().AppendSessionLine(CompletedLine(name));
}

void SView(shell::Host& host) {
  const std::string name = "s";
  Subgroups groups;
  if (!PrepareChartInput(host, name, false, [&] { return ReadSubgroupBlock(host, kImproperS, true, groups); }))
    return;
  RunChartComputation(host, name, [&] {
    const SubgroupStatistics stats = ComputeSubgroupStatistics(groups);
    ControlLimits limits = SLimits(stats.sBar, stats.n);
    ApplyGivenLimits(Given(host), 0, kTenSixesSigma, limits);
    host.ShowResultWindow(OneChartWindow("S control chart", "mnuS", FinishedChart("s", stats.sds, limits)));
  });
  host.Log().AppendSessionLine(CompletedLine(name));
}

void XMRView(shell::Host& host) {
  const std::string name = "x-MR";
  std::vector<double> values;
  if (!PrepareChartInput(host, name, true, [&] { return ReadIndividualValues(host, values); })) return;
  RunChartComputation(host, name, [&] {
    const std::vector<double> ranges = MovingRanges(values);
    const double mr_bar = MeanMovingRange(ranges);
    const double mean = stats::CompensatedTotal(values) / static_cast<double>(values.size());
    ControlLimits x_limits = IndividualsLimits(mean, mr_bar);
    ControlLimits mr_limits = MovingRangeLimits(mr_bar);
    ApplyGivenLimits(Given(host), 0, kTenSixesSigma, x_limits);
    ApplyGivenLimits(Given(host), 1, kMovingRangeSigma, mr_limits);
    host.ShowResultWindow(TwoChartWindow("x-MR control chart", "mnuX-Rs", FinishedChart("x", values, x_limits),
                                         MovingRangeChart(ranges, mr_limits), " [x & MR Code] "));
  });
  host.Log().AppendSessionLine(CompletedLine(name));
}

void MRView(shell::Host& host) {
  const std::string name = "MR";
  std::vector<double> values;
  if (!PrepareChartInput(host, name, false, [&] { return ReadIndividualValues(host, values); })) return;
  RunChartComputation(host, name, [&] {
    const std::vector<double> ranges = MovingRanges(values);
    ControlLimits limits = MovingRangeLimits(MeanMovingRange(ranges));
    ApplyGivenLimits(Given(host), 0, kMovingRangeSigma, limits);
    host.ShowResultWindow(OneChartWindow("MR control chart", "mnuMR", MovingRangeChart(ranges, limits)));
  });
  host.Log().AppendSessionLine(CompletedLine(name));
}

}  // namespace orvik::charts
