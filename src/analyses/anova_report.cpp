#include "analyses/anova_report.h"

#include <cmath>

#include "analyses/report_text.h"
#include "analyses/sample_summary.h"

namespace orvik::analyses {

std::string ShownStatistic(double value) { return std::isfinite(value) ? StatisticText(value) : "*"; }

std::string ShownPValue(double p) { return std::isfinite(p) ? SixDecimals(p) : "*"; }

shell::PlotSeries NamedSeries(std::string name, shell::SeriesType type) {
  shell::PlotSeries series;
  series.name = std::move(name);
  series.type = type;
  return series;
}

shell::ResultTable ReportGrid(std::size_t width) {
  shell::ResultTable table;
  table.columns.assign(width, "");
  table.background = shell::kWhite;
  return table;
}

void AddHeading(shell::ResultTable& table, std::vector<std::string> cells) {
  table.AddRow(std::move(cells), HeadingRowStyle());
}

void AddAnovaTable(shell::ResultTable& table, const std::string& title, const std::vector<AnovaLine>& lines) {
  AddHeading(table, {title});
  AddHeading(table, {"Source", "DF", "SS", "MS", "F", "p-value"});
  for (const auto& line : lines) {
    const auto optional = [](const std::optional<double>& v, bool p) {
      if (!v) return std::string();
      return p ? ShownPValue(*v) : ShownStatistic(*v);
    };
    table.AddRow({line.source, std::to_string(line.df), ShownStatistic(line.ss), optional(line.ms, false),
                  optional(line.f, false), optional(line.p, true)});
  }
}

}  // namespace orvik::analyses
