#include "analyses/test_report.h"

#include "analyses/p_values.h"
#include "analyses/report_text.h"
#include "analyses/sample_summary.h"
#include "stats/decimal_numbers.h"

namespace orvik::analyses {

Hypotheses MakeHypotheses(const std::string& left, const HypothesisOperators& operators, const std::string& right,
                          Alternative alternative) {
  const char* h1 = operators.twoSided;
  if (alternative == Alternative::Greater) h1 = operators.greater;
  if (alternative == Alternative::Less) h1 = operators.less;
  return {left + operators.equal + right, left + h1 + right};
}

shell::ResultTable TestTable(const TestReport& report) {
  shell::ResultTable table;
  table.columns = {"", ""};
  table.background = shell::kWhite;
  table.AddRow({"1. Hypothesis", ""}, HeadingRowStyle());
  table.AddRow({"H0", report.hypotheses.h0});
  table.AddRow({"H1", report.hypotheses.h1});
  table.AddRow({report.statisticHeading, ""}, HeadingRowStyle());
  table.AddRow({report.statisticLabel + StatisticText(report.statistic.value), report.statisticNote});
  table.AddRow({"3. Test result", ""}, HeadingRowStyle());
  table.AddRow({"p-value", SixDecimals(report.statistic.pValue)});
  table.AddRow({"significance level", stats::FormatNumber(report.alphaPercent) + "%"});
  table.AddRow({report.resultLabel, Decision(report.statistic.pValue, report.alphaPercent / 100.0)});
  return table;
}

}  // namespace orvik::analyses
