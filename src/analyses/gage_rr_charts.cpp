// The six charts of a gauge study's report.

#include <cmath>

#include "analyses/anova_report.h"
#include "analyses/gage_rr_analysis.h"
#include "analyses/report_text.h"
#include "stats/range_distribution.h"

namespace orvik::analyses {

namespace {

shell::ChartSeries Chart(std::string name, std::string title, std::string x_title, std::string y_title) {
  shell::ChartSeries chart;
  chart.name = std::move(name);
  chart.title = std::move(title);
  chart.xTitle = std::move(x_title);
  chart.yTitle = std::move(y_title);
  return chart;
}

void AddLimit(shell::ChartSeries& chart, const std::string& name, double value) {
  chart.lines.push_back({shell::LineOrientation::Horizontal, value, name + "=" + StatisticText(value), {}, false});
}

// Grouped bars of the components' shares: %Contribution, %Study Var and,
// with a tolerance, %Tolerance of the gauge, repeatability,
// reproducibility and the parts.
shell::ChartSeries ComponentsChart(const GageVariances& v, const GageRRSettings& settings) {
  shell::ChartSeries chart = Chart("DataChartView", "Components of Variation", "", "Percent");
  chart.seriesLegend = true;  // the bars of each component stand side by side, named below
  chart.categories = {"Gage R&R", "Repeat", "Reprod", "Part-to-Part"};
  const std::vector<double> variances{v.Gage(), v.repeatability, v.Reproducibility(), v.part};
  shell::PlotSeries contribution = NamedSeries("% Contribution", shell::SeriesType::Bar);
  shell::PlotSeries study = NamedSeries("% Study Var", shell::SeriesType::Bar);
  shell::PlotSeries tolerance = NamedSeries("% Tolerance", shell::SeriesType::Bar);
  for (std::size_t i = 0; i < variances.size(); ++i) {
    const double x = static_cast<double>(i + 1);
    const double sd = std::sqrt(variances[i]);
    contribution.x.push_back(x);
    contribution.y.push_back(100.0 * variances[i] / v.Total());
    study.x.push_back(x);
    study.y.push_back(100.0 * sd / std::sqrt(v.Total()));
    if (settings.tolerance) {
      tolerance.x.push_back(x);
      tolerance.y.push_back(100.0 * settings.multiplier * sd / *settings.tolerance);
    }
  }
  chart.series.push_back(std::move(contribution));
  chart.series.push_back(std::move(study));
  if (settings.tolerance) chart.series.push_back(std::move(tolerance));
  return chart;
}

// A control chart of one statistic of every part by every appraiser, the
// appraisers one after the other, each its own series.
shell::ChartSeries ByAppraiserChart(std::string name, std::string title, std::string y_title, const GageStudy& study,
                                    const std::vector<std::vector<double>>& values) {
  shell::ChartSeries chart = Chart(std::move(name), std::move(title), "Appraiser", std::move(y_title));
  const std::size_t parts = study.parts.size();
  for (std::size_t j = 0; j < study.appraisers.size(); ++j) {
    shell::PlotSeries series = NamedSeries(study.appraisers[j], shell::SeriesType::Line);
    for (std::size_t i = 0; i < parts; ++i) {
      series.x.push_back(static_cast<double>(j * parts + i + 1));
      series.y.push_back(values[i][j]);
    }
    chart.series.push_back(std::move(series));
  }
  return chart;
}

// Every measurement over the levels of one factor, with the levels' means.
shell::ChartSeries MeasurementsChart(std::string name, const std::string& factor, const GageStudy& study,
                                     bool by_part, const std::vector<double>& means) {
  shell::ChartSeries chart = Chart(std::move(name), "Measurements by " + factor, factor, "Measurement");
  chart.categories = by_part ? study.parts : study.appraisers;
  shell::PlotSeries points = NamedSeries("Measurement", shell::SeriesType::Points);
  for (std::size_t i = 0; i < study.parts.size(); ++i)
    for (std::size_t j = 0; j < study.appraisers.size(); ++j)
      for (const double value : study.cells[i][j]) {
        points.x.push_back(static_cast<double>((by_part ? i : j) + 1));
        points.y.push_back(value);
      }
  shell::PlotSeries mean_line = NamedSeries("Mean", shell::SeriesType::Line);
  for (std::size_t k = 0; k < means.size(); ++k) {
    mean_line.x.push_back(static_cast<double>(k + 1));
    mean_line.y.push_back(means[k]);
  }
  chart.series.push_back(std::move(points));
  chart.series.push_back(std::move(mean_line));
  return chart;
}

}  // namespace

std::vector<shell::ChartSeries> GageCharts(const GageStudy& study, const GageVariances& variances,
                                           const GageRRSettings& settings) {
  // The cells' ranges and means, the appraisers' and the parts' averages.
  const GageXbarR cells = FitGageXbarR(study);
  const stats::RangeMoments range = stats::NormalRangeMoments(static_cast<int>(study.Trials()));
  const double spread = 3.0 * range.sd / range.mean;  // of a range, in units of R-bar
  double grand = 0.0;
  for (const double m : cells.appraiserAverages) grand += m / static_cast<double>(cells.appraiserAverages.size());

  std::vector<shell::ChartSeries> charts;
  charts.push_back(ComponentsChart(variances, settings));

  shell::ChartSeries r_chart = ByAppraiserChart("RChart", "R Chart by Appraiser", "Sample Range", study, cells.cellRanges);
  AddLimit(r_chart, "UCL", (1.0 + spread) * cells.rBar);
  AddLimit(r_chart, "R-bar", cells.rBar);
  AddLimit(r_chart, "LCL", std::max(0.0, 1.0 - spread) * cells.rBar);
  charts.push_back(std::move(r_chart));

  shell::ChartSeries x_chart = ByAppraiserChart("XbarChart", "Xbar Chart by Appraiser", "Sample Mean", study, cells.cellMeans);
  const double a2 = 3.0 / (range.mean * std::sqrt(static_cast<double>(study.Trials())));
  AddLimit(x_chart, "UCL", grand + a2 * cells.rBar);
  AddLimit(x_chart, "X-bar", grand);
  AddLimit(x_chart, "LCL", grand - a2 * cells.rBar);
  charts.push_back(std::move(x_chart));

  charts.push_back(MeasurementsChart("ByPart", "Part", study, true, cells.partAverages));
  charts.push_back(MeasurementsChart("ByAppraiser", "Appraiser", study, false, cells.appraiserAverages));

  shell::ChartSeries interaction = Chart("InteractionPlot", "Appraiser * Part Interaction", "Part", "Average");
  interaction.categories = study.parts;
  for (std::size_t j = 0; j < study.appraisers.size(); ++j) {
    shell::PlotSeries series = NamedSeries(study.appraisers[j], shell::SeriesType::Line);
    for (std::size_t i = 0; i < study.parts.size(); ++i) {
      series.x.push_back(static_cast<double>(i + 1));
      series.y.push_back(cells.cellMeans[i][j]);
    }
    interaction.series.push_back(std::move(series));
  }
  charts.push_back(std::move(interaction));
  return charts;
}

}  // namespace orvik::analyses
