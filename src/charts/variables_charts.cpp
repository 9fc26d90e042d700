// The variables control charts: subgroups in rows (xbar-R, xbar, R, xbar-s,
// s) and individual values (x-MR, MR).
#include <string>

#include "charts/chart_input.h"
#include "charts/chart_limits.h"
#include "charts/chart_stages.h"
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

// The mean of values first..first + count - 1.
double MeanOf(const std::vector<double>& values, std::size_t first, std::size_t count) {
  return stats::CompensatedMean(std::span<const double>(values).subspan(first, count));
}

// The limits of subgroups first..first + count - 1: `limits` from their
// grand mean, R-bar and s-bar, then the user's given set `index` with its
// sigma rule.
template <class Limits>
StageLimits SubgroupLimits(shell::Host& host, const SubgroupStatistics& stats, int index, SigmaRule rule,
                           Limits limits) {
  return [&host, &stats, index, rule, limits](std::size_t first, std::size_t count) {
    ControlLimits l = limits(MeanOf(stats.means, first, count), MeanOf(stats.ranges, first, count),
                             MeanOf(stats.sds, first, count));
    ApplyGivenLimits(Given(host), index, rule, l);
    return l;
  };
}

// The individual values of the x chart's points first..first + count - 1.
StageLimits IndividualLimits(shell::Host& host, const std::vector<double>& values) {
  return [&host, &values](std::size_t first, std::size_t count) {
    const std::vector<double> stage(values.begin() + static_cast<long>(first),
                                    values.begin() + static_cast<long>(first + count));
    const double mean = stats::CompensatedTotal(stage) / static_cast<double>(stage.size());
    ControlLimits l = IndividualsLimits(mean, MeanMovingRange(MovingRanges(stage)));
    ApplyGivenLimits(Given(host), 0, kTenSixesSigma, l);
    return l;
  };
}

// The MR chart's points first..first + count - 1 are the ranges of the
// values first + 1..first + count; their limits come from the ranges within
// the stage of those values (for the first stage, from value 1 on).
StageLimits RangeLimits(shell::Host& host, const std::vector<double>& values, int index) {
  return [&host, &values, index](std::size_t first, std::size_t count) {
    const std::size_t begin = first == 0 ? 0 : first + 1;
    const std::vector<double> stage(values.begin() + static_cast<long>(begin),
                                    values.begin() + static_cast<long>(first + count + 1));
    ControlLimits l = MovingRangeLimits(MeanMovingRange(MovingRanges(stage)));
    ApplyGivenLimits(Given(host), index, kMovingRangeSigma, l);
    return l;
  };
}

// The MR chart of individual values: moving ranges from sample 2 on, limit
// labels to 6 places.
ControlChart MovingRangeChart(shell::Host& host, const std::vector<double>& values, int index) {
  std::vector<double> ranges = MovingRanges(values);
  const ChartOptions options = ChartOptionsOf(host, ranges.size(), 1);
  ControlChart chart = RuledChart("MR", std::move(ranges), RangeLimits(host, values, index), options, 2.0);
  // A range across a stage boundary measures the change between the
  // stages, not the process: it is drawn but carries no code.
  const std::vector<std::string> labels = ChartOptionsOf(host, values.size()).stageLabels;
  for (std::size_t j = 0; j + 1 < labels.size(); ++j)
    if (labels[j] != labels[j + 1]) chart.codes[j] = 0;
  chart.seriesName = "Moving Range";
  chart.labelDecimals = 6;
  chart.valueDecimals = 12;
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
    const long n = stats.n;
    const ChartOptions options = ChartOptionsOf(host, stats.means.size());
    const auto xbar = SubgroupLimits(host, stats, 0, XbarRangeSigma(n), [n](double mean, double r_bar, double s_bar) {
      return XbarLimitsFromRange(mean, r_bar, s_bar, n);
    });
    const auto r = SubgroupLimits(host, stats, 1, kTenSixesSigma, [n](double, double r_bar, double) { return RLimits(r_bar, n); });
    host.ShowResultWindow(TwoChartWindow("xbar-R control chart", "mnuBarX-R",
                                         RuledChart("xbar", stats.means, xbar, options),
                                         RuledChart("R", stats.ranges, r, options), " [xbar & R Code] "));
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
    const long n = stats.n;
    const auto xbar = SubgroupLimits(host, stats, 0, XbarRangeSigma(n), [n](double mean, double r_bar, double s_bar) {
      return XbarLimitsFromRange(mean, r_bar, s_bar, n);
    });
    host.ShowResultWindow(OneChartWindow("xbar control chart", "mnuBarX",
                                         RuledChart("xbar", stats.means, xbar, ChartOptionsOf(host, stats.means.size()))));
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
    const long n = stats.n;
    const auto r = SubgroupLimits(host, stats, 0, kTenSixesSigma, [n](double, double r_bar, double) { return RLimits(r_bar, n); });
    host.ShowResultWindow(OneChartWindow("R control chart", "mnuR",
                                         RuledChart("R", stats.ranges, r, ChartOptionsOf(host, stats.ranges.size()))));
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
    const long n = stats.n;
    const ChartOptions options = ChartOptionsOf(host, stats.means.size());
    const auto xbar = SubgroupLimits(host, stats, 0, XbarSSigma(n), [n](double mean, double, double s_bar) {
      return XbarLimitsFromS(mean, s_bar, n);
    });
    const auto s = SubgroupLimits(host, stats, 1, kTenSixesSigma, [n](double, double, double s_bar) { return SLimits(s_bar, n); });
    host.ShowResultWindow(TwoChartWindow("xbar-s control chart", "mnuBarXS",
                                         RuledChart("xbar", stats.means, xbar, options),
                                         RuledChart("s", stats.sds, s, options), " [xbar & s Code] "));
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
    const long n = stats.n;
    const auto s = SubgroupLimits(host, stats, 0, kTenSixesSigma, [n](double, double, double s_bar) { return SLimits(s_bar, n); });
    host.ShowResultWindow(OneChartWindow("S control chart", "mnuS",
                                         RuledChart("s", stats.sds, s, ChartOptionsOf(host, stats.sds.size()))));
  });
  host.Log().AppendSessionLine(CompletedLine(name));
}

void XMRView(shell::Host& host) {
  const std::string name = "x-MR";
  std::vector<double> values;
  if (!PrepareChartInput(host, name, true, [&] { return ReadIndividualValues(host, values); })) return;
  RunChartComputation(host, name, [&] {
    ControlChart x = RuledChart("x", values, IndividualLimits(host, values), ChartOptionsOf(host, values.size()));
    host.ShowResultWindow(
        TwoChartWindow("x-MR control chart", "mnuX-Rs", x, MovingRangeChart(host, values, 1), " [x & MR Code] "));
  });
  host.Log().AppendSessionLine(CompletedLine(name));
}

void MRView(shell::Host& host) {
  const std::string name = "MR";
  std::vector<double> values;
  if (!PrepareChartInput(host, name, false, [&] { return ReadIndividualValues(host, values); })) return;
  RunChartComputation(host, name, [&] {
    host.ShowResultWindow(OneChartWindow("MR control chart", "mnuMR", MovingRangeChart(host, values, 0)));
  });
  host.Log().AppendSessionLine(CompletedLine(name));
}

}  // namespace orvik::charts
