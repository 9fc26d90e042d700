#include "charts/ewma_chart.h"

#include <cmath>

#include "stats/decimal_numbers.h"

namespace orvik::charts {

using stats::Round;

namespace {

constexpr const char* kImproperEwma = "Improper data for EWMA control chart";

class EWMAForm : public TimeWeightedForm {
 public:
  using Parameters = EwmaParameters;

  EWMAForm() : TimeWeightedForm("EWMAForm", "EWMA Control Chart", "EWMA") {
    AddTextBox("Lambdatxt", "0.2").caption = "Lambda (weight of each new point)";
    AddTextBox("Ltxt", "3").caption = "L (width of the limits, in sigma)";
    AddButtons();
  }

  const EwmaParameters& Result() const { return result_; }

 protected:
  bool OnOk(shell::Host& host) override {
    EwmaParameters read;
    if (!ReadProcess(host, read.process)) return false;
    const auto lambda = ReadNumber(host, "Lambdatxt", [](double v) { return v > 0 && v <= 1; });
    if (!lambda) return false;
    const auto width = ReadNumber(host, "Ltxt", [](double v) { return v > 0; });
    if (!width) return false;
    read.lambda = *lambda;
    read.width = *width;
    result_ = read;
    return true;
  }

 private:
  EwmaParameters result_;
};

}  // namespace

std::unique_ptr<shell::DialogModel> MakeEWMAForm() { return std::make_unique<EWMAForm>(); }

std::vector<double> EwmaStatistics(const std::vector<double>& points, double target, double lambda) {
  std::vector<double> z(points.size());
  double level = target;
  for (std::size_t i = 0; i < points.size(); ++i) {
    level = lambda * points[i] + (1.0 - lambda) * level;
    z[i] = Round(level, 8);
  }
  return z;
}

void EwmaLimits(double target, double point_sigma, double lambda, double width, std::size_t count,
                std::vector<double>& ucl, std::vector<double>& lcl) {
  ucl.resize(count);
  lcl.resize(count);
  const double steady = lambda / (2.0 - lambda);
  // 1 - (1 - lambda)^(2i) as -expm1(2i log(1 - lambda)), which keeps its
  // digits for a small lambda at the first points; lambda = 1 gives
  // log(0) = -infinity and the factor 1.
  const double log_decay = std::log1p(-lambda);
  for (std::size_t i = 0; i < count; ++i) {
    const double filled = -std::expm1(2.0 * static_cast<double>(i + 1) * log_decay);
    const double half_width = width * point_sigma * std::sqrt(steady * filled);
    ucl[i] = Round(target + half_width, 8);
    lcl[i] = Round(target - half_width, 8);
  }
}

void EWMAView(shell::Host& host) {
  const std::string name = "EWMA";
  TimeWeightedData data;
  if (!ReadTimeWeightedData(host, kImproperEwma, data)) return;
  host.Log().AppendSessionLine(StartingLine(name));
  EWMAForm dialog;
  const auto parameters = shell::AskParameters(host, dialog);
  if (!parameters) return;
  RunChartComputation(host, name, [&] {
    const ProcessLevel level = ResolveProcess(parameters->process, data);
    PointLimitChart chart;
    chart.statistic = "EWMA";
    chart.pointHeading = data.PointHeading();
    chart.cl = Round(level.target, 8);
    chart.values = EwmaStatistics(data.points, level.target, parameters->lambda);
    std::vector<double> ucl, lcl;
    EwmaLimits(level.target, level.sigma / std::sqrt(static_cast<double>(data.n)), parameters->lambda,
               parameters->width, data.points.size(), ucl, lcl);
    chart.ucl = std::move(ucl);
    chart.lcl = std::move(lcl);
    chart.points = std::move(data.points);
    MarkBeyondLimits(chart);
    host.ShowResultWindow(PointLimitWindow("EWMA control chart", "mnuEWMA", chart, RangeChart(data, level.sigma)));
  });
  host.Log().AppendSessionLine(CompletedLine(name));
}

}  // namespace orvik::charts
