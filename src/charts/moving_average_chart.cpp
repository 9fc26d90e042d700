#include "charts/moving_average_chart.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "stats/compensated_sum.h"
#include "stats/decimal_numbers.h"

namespace orvik::charts {

using stats::Round;

namespace {

constexpr const char* kImproperMa = "Improper data for MA control chart";

class MAForm : public TimeWeightedForm {
 public:
  using Parameters = MovingAverageParameters;

  explicit MAForm(long points = std::numeric_limits<long>::max()) : TimeWeightedForm("MAForm", "MA Control Chart", "MA"),
                                                                    points_(points) {
    AddTextBox("Spantxt", "3").caption = "Span w (points averaged)";
    AddButtons();
  }

  const MovingAverageParameters& Result() const { return result_; }

 protected:
  bool OnOk(shell::Host& host) override {
    MovingAverageParameters read;
    if (!ReadProcess(host, read.process)) return false;
    // A span counts points: a whole number, at least 2 and no more than the
    // chart has.
    const auto span = ReadNumber(host, "Spantxt", [this](double v) {
      return v >= 2 && v == std::floor(v) && v <= static_cast<double>(points_);
    });
    if (!span) return false;
    read.span = static_cast<long>(*span);
    result_ = read;
    return true;
  }

 private:
  long points_;
  MovingAverageParameters result_;
};

}  // namespace

std::unique_ptr<shell::DialogModel> MakeMAForm() { return std::make_unique<MAForm>(); }

std::vector<double> MovingAverages(const std::vector<double>& points, long span) {
  std::vector<double> averages(points.size());
  const auto width = static_cast<std::size_t>(std::max(span, 1L));
  stats::CompensatedSum window;
  for (std::size_t i = 0; i < points.size(); ++i) {
    window.Add(points[i]);
    if (i >= width) window.Add(-points[i - width]);
    averages[i] = Round(window.Value() / static_cast<double>(std::min(i + 1, width)), 8);
  }
  return averages;
}

void MovingAverageLimits(double target, double point_sigma, long span, std::size_t count, std::vector<double>& ucl,
                         std::vector<double>& lcl) {
  ucl.resize(count);
  lcl.resize(count);
  const auto width = static_cast<std::size_t>(std::max(span, 1L));
  for (std::size_t i = 0; i < count; ++i) {
    const double half_width = 3.0 * point_sigma / std::sqrt(static_cast<double>(std::min(i + 1, width)));
    ucl[i] = Round(target + half_width, 8);
    lcl[i] = Round(target - half_width, 8);
  }
}

void MAView(shell::Host& host) {
  const std::string name = "MA";
  TimeWeightedData data;
  if (!ReadTimeWeightedData(host, kImproperMa, data)) return;
  host.Log().AppendSessionLine(StartingLine(name));
  MAForm dialog(static_cast<long>(data.points.size()));
  const auto parameters = shell::AskParameters(host, dialog);
  if (!parameters) return;
  RunChartComputation(host, name, [&] {
    const ProcessLevel level = ResolveProcess(parameters->process, data);
    PointLimitChart chart;
    chart.statistic = "MA";
    chart.pointHeading = data.PointHeading();
    chart.cl = Round(level.target, 8);
    chart.values = MovingAverages(data.points, parameters->span);
    std::vector<double> ucl, lcl;
    MovingAverageLimits(level.target, level.sigma / std::sqrt(static_cast<double>(data.n)), parameters->span,
                        data.points.size(), ucl, lcl);
    chart.ucl = std::move(ucl);
    chart.lcl = std::move(lcl);
    chart.points = std::move(data.points);
    MarkBeyondLimits(chart);
    host.ShowResultWindow(PointLimitWindow("MA control chart", "mnuMA", chart, RangeChart(data, level.sigma)));
  });
  host.Log().AppendSessionLine(CompletedLine(name));
}

}  // namespace orvik::charts
