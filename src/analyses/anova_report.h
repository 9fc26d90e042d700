#pragma once

#include <optional>
#include <string>
#include <vector>

#include "shell/chart_series.h"
#include "shell/result_table.h"

namespace orvik::analyses {

// The pieces the reports of regression and analysis of variance share.

// A statistic as shown (rounded to 6 places), or "*" where it has no value
// (a division by a zero error term).
std::string ShownStatistic(double value);
// A p-value as shown (six decimals), or "*".
std::string ShownPValue(double p);

// An empty plotted series of the given name and type.
shell::PlotSeries NamedSeries(std::string name, shell::SeriesType type);

// A white report grid of `width` columns without a heading row.
shell::ResultTable ReportGrid(std::size_t width);
// A heading row inside a report: `cells` in bold.
void AddHeading(shell::ResultTable& table, std::vector<std::string> cells);

// One line of an analysis-of-variance table; the mean square, F and p are
// left empty where not given (the total line).
struct AnovaLine {
  std::string source;
  long df = 0;
  double ss = 0.0;
  std::optional<double> ms;
  std::optional<double> f;
  std::optional<double> p;
};

// The heading `title`, the column heading "Source", "DF", "SS", "MS", "F",
// "p-value" and one row per line.
void AddAnovaTable(shell::ResultTable& table, const std::string& title, const std::vector<AnovaLine>& lines);

}  // namespace orvik::analyses
