#include "charts/cusum_chart.h"

#include <algorithm>
#include <cmath>

#include "stats/decimal_numbers.h"

namespace orvik::charts {

using stats::FormatNumber;
using stats::Round;

namespace {

constexpr const char* kImproperCusum = "Improper data for CUSUM control chart";

class CUSUMForm : public TimeWeightedForm {
 public:
  using Parameters = CusumParameters;

  CUSUMForm() : TimeWeightedForm("CUSUMForm", "CUSUM Control Chart", "CUSUM") {
    AddTextBox("Ktxt", "0.5").caption = "k (reference value, in sigma)";
    AddTextBox("Htxt", "5").caption = "h (decision interval, in sigma)";
    AddCheckBox("FIR").caption = "Fast initial response (FIR)";
    AddButtons();
  }

  const CusumParameters& Result() const { return result_; }

 protected:
  bool OnOk(shell::Host& host) override {
    CusumParameters read;
    if (!ReadProcess(host, read.process)) return false;
    const auto k = ReadNumber(host, "Ktxt", [](double v) { return v >= 0; });
    if (!k) return false;
    const auto h = ReadNumber(host, "Htxt", [](double v) { return v > 0; });
    if (!h) return false;
    read.k = *k;
    read.h = *h;
    read.fastInitialResponse = Control("FIR").checked;
    result_ = read;
    return true;
  }

 private:
  CusumParameters result_;
};

// A sum of the chart: C+ as it is, C- drawn below the axis as -C- (a zero
// sum stays 0, not -0).
shell::PlotSeries SumSeries(const char* name, const std::vector<double>& sums, bool below, double h,
                            const shell::NumberSeries& x) {
  shell::PlotSeries series;
  series.name = name;
  series.type = shell::SeriesType::Line;
  series.x = x;
  std::vector<double> y(sums.size());
  for (std::size_t i = 0; i < sums.size(); ++i) {
    y[i] = below && sums[i] != 0.0 ? -sums[i] : sums[i];
    if (sums[i] > h) series.marked.push_back(static_cast<long>(i + 1));
  }
  series.y = std::move(y);
  return series;
}

shell::ResultWindow CusumWindow(const TimeWeightedData& data, const CusumSums& sums, double h) {
  shell::ResultWindow window = shell::MakeControlForm(kCusumWindowTitle, false);
  window.commandKey = "mnuCUSUM";
  const std::size_t count = data.points.size();

  shell::ChartSeries& chart = window.Chart("ChartOne");
  chart.title = "CUSUM";
  chart.xTitle = "Sample";
  chart.yTitle = "CUSUM";
  std::vector<double> numbers(count);
  for (std::size_t i = 0; i < count; ++i) numbers[i] = static_cast<double>(i + 1);
  const shell::NumberSeries x(std::move(numbers));
  chart.series.push_back(SumSeries("C+", sums.upper, false, h, x));
  chart.series.push_back(SumSeries("C-", sums.lower, true, h, x));
  const auto line = [&chart](double value, const char* prefix, shell::Rgb color) {
    shell::ChartLine limit;
    limit.value = value;
    limit.label = LimitLabel(prefix, value, 8);
    limit.color = color;
    chart.lines.push_back(std::move(limit));
  };
  line(h, "UCL= ", shell::kRed);
  line(0.0, "CL= ", shell::kBlue);
  line(0.0 - h, "LCL= ", shell::kRed);

  std::vector<CodeMask> codes(count, 0);
  for (std::size_t i = 0; i < count; ++i)
    if (sums.upper[i] > h || sums.lower[i] > h) codes[i] = kOutOfLimits;
  shell::ResultTable table;
  table.columns = {data.PointHeading(), "C+", "C-", "H", "N+", "N-", "Out-of-control Code"};
  const shell::NumberDisplay shortest = shell::NumberDisplay::Shortest();
  std::vector<shell::GridColumn> block;
  block.push_back(shell::GridColumn::Numbers(data.points, shortest));
  block.push_back(shell::GridColumn::Numbers(chart.series[0].y, shortest));
  block.push_back(shell::GridColumn::Numbers(sums.lower, shortest));
  block.push_back(shell::GridColumn::Repeated(FormatNumber(h), count));
  block.push_back(shell::GridColumn::Numbers(sums.upperRun, shortest));
  block.push_back(shell::GridColumn::Numbers(sums.lowerRun, shortest));
  block.push_back(CodeColumn(codes, count));
  table.AddColumns(std::move(block));
  AppendLegend(table, kOneChartLegendHeading, table.columns.size());
  window.table = std::move(table);
  return window;
}

}  // namespace

std::unique_ptr<shell::DialogModel> MakeCUSUMForm() { return std::make_unique<CUSUMForm>(); }

CusumSums TabularCusum(const std::vector<double>& points, double target, double allowance, double start) {
  CusumSums sums;
  const std::size_t count = points.size();
  sums.upper.resize(count);
  sums.lower.resize(count);
  sums.upperRun.resize(count);
  sums.lowerRun.resize(count);
  const double upper_reference = target + allowance;
  const double lower_reference = target - allowance;
  double upper = start, lower = start, upper_run = 0.0, lower_run = 0.0;
  for (std::size_t i = 0; i < count; ++i) {
    upper = Round(std::max(0.0, points[i] - upper_reference + upper), 8);
    lower = Round(std::max(0.0, lower_reference - points[i] + lower), 8);
    upper_run = upper == 0.0 ? 0.0 : upper_run + 1.0;
    lower_run = lower == 0.0 ? 0.0 : lower_run + 1.0;
    sums.upper[i] = upper;
    sums.lower[i] = lower;
    sums.upperRun[i] = upper_run;
    sums.lowerRun[i] = lower_run;
  }
  return sums;
}

void CUSUMView(shell::Host& host) {
  const std::string name = "CUSUM";
  TimeWeightedData data;
  if (!ReadTimeWeightedData(host, kImproperCusum, data)) return;
  host.Log().AppendSessionLine(StartingLine(name));
  CUSUMForm dialog;
  const auto parameters = shell::AskParameters(host, dialog);
  if (!parameters) return;
  RunChartComputation(host, name, [&] {
    const ProcessLevel level = ResolveProcess(parameters->process, data);
    // k and h are in units of the standard deviation of a plotted point.
    const double unit = level.sigma / std::sqrt(static_cast<double>(data.n));
    const double h = Round(parameters->h * unit, 8);
    const CusumSums sums =
        TabularCusum(data.points, level.target, parameters->k * unit, parameters->fastInitialResponse ? h / 2.0 : 0.0);
    host.ShowResultWindow(CusumWindow(data, sums, h));
  });
  host.Log().AppendSessionLine(CompletedLine(name));
}

}  // namespace orvik::charts
