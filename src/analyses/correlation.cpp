#include "analyses/correlation.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

#include "analyses/anova_report.h"
#include "analyses/centred_data.h"
#include "analyses/column_choice.h"
#include "analyses/sample_input.h"
#include "shell/analysis_input.h"
#include "stats/compensated_sum.h"
#include "stats/t_distribution.h"

namespace orvik::analyses {

namespace {

const SessionLines kLines{"Correlation coefficient analysis", "Cancel correlation coefficient"};
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// The pairs of rows where both hold a number.
std::pair<std::vector<double>, std::vector<double>> Complete(std::span<const double> x, std::span<const double> y) {
  std::pair<std::vector<double>, std::vector<double>> pairs;
  for (std::size_t i = 0; i < x.size() && i < y.size(); ++i) {
    if (std::isnan(x[i]) || std::isnan(y[i])) continue;
    pairs.first.push_back(x[i]);
    pairs.second.push_back(y[i]);
  }
  return pairs;
}

PairCorrelation OfComplete(const std::vector<double>& x, const std::vector<double>& y) {
  PairCorrelation c;
  c.n = static_cast<long>(x.size());
  if (c.n < 3) return {kNaN, kNaN, c.n};
  const CentredData cx = Centre(x);
  const CentredData cy = Centre(y);
  const double mx = Mean(cx.deviations);
  const double my = Mean(cy.deviations);
  stats::CompensatedSum sxx, syy, sxy;
  for (std::size_t i = 0; i < x.size(); ++i) {
    const double dx = cx.deviations[i] - mx;
    const double dy = cy.deviations[i] - my;
    sxx.Add(dx * dx);
    syy.Add(dy * dy);
    sxy.Add(dx * dy);
  }
  if (!(sxx.Value() > 0.0 && syy.Value() > 0.0)) return {kNaN, kNaN, c.n};
  c.r = std::clamp(sxy.Value() / std::sqrt(sxx.Value() * syy.Value()), -1.0, 1.0);
  if (std::fabs(c.r) == 1.0) {
    c.p = 0.0;
  } else {
    const double df = static_cast<double>(c.n - 2);
    const double t = c.r * std::sqrt(df / ((1.0 - c.r) * (1.0 + c.r)));
    c.p = 2.0 * stats::GetDFTUpper(std::fabs(t), df);
  }
  return c;
}

// Ranks 1..n with ties given their average rank.
std::vector<double> Ranks(const std::vector<double>& v) {
  std::vector<std::size_t> order(v.size());
  std::iota(order.begin(), order.end(), 0);
  std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return v[a] < v[b]; });
  std::vector<double> ranks(v.size());
  for (std::size_t i = 0; i < order.size();) {
    std::size_t j = i;
    while (j + 1 < order.size() && v[order[j + 1]] == v[order[i]]) ++j;
    const double average = 0.5 * static_cast<double>(i + j) + 1.0;
    for (std::size_t k = i; k <= j; ++k) ranks[order[k]] = average;
    i = j + 1;
  }
  return ranks;
}

void AddMatrix(shell::ResultTable& table, const std::string& title, const std::vector<std::string>& names,
               const std::vector<std::vector<std::string>>& cells) {
  AddHeading(table, {title});
  std::vector<std::string> heading{""};
  heading.insert(heading.end(), names.begin(), names.end());
  AddHeading(table, heading);
  for (std::size_t i = 0; i < names.size(); ++i) {
    std::vector<std::string> row{names[i]};
    row.insert(row.end(), cells[i].begin(), cells[i].end());
    table.AddRow(row);
  }
}

void AddCoefficientBlocks(shell::ResultTable& table, const std::vector<std::string>& names,
                          const std::vector<std::vector<double>>& columns, bool spearman, int& section) {
  const std::size_t k = columns.size();
  std::vector<std::vector<std::string>> r(k, std::vector<std::string>(k)), p = r, n = r;
  for (std::size_t i = 0; i < k; ++i) {
    for (std::size_t j = 0; j < k; ++j) {
      const PairCorrelation c = spearman ? Spearman(columns[i], columns[j]) : Pearson(columns[i], columns[j]);
      r[i][j] = i == j ? "1" : ShownStatistic(c.r);
      p[i][j] = i == j ? "" : ShownPValue(c.p);
      n[i][j] = std::to_string(c.n);
    }
  }
  const std::string what = spearman ? "Spearman rank correlation (rho)" : "Pearson correlation coefficient (r)";
  AddMatrix(table, std::to_string(section++) + ". " + what, names, r);
  AddMatrix(table, std::to_string(section++) + ". p-value" + (spearman ? " (Spearman)" : ""), names, p);
  if (!spearman) AddMatrix(table, std::to_string(section++) + ". N (pairwise complete)", names, n);
}

}  // namespace

PairCorrelation Pearson(std::span<const double> x, std::span<const double> y) {
  const auto [a, b] = Complete(x, y);
  return OfComplete(a, b);
}

PairCorrelation Spearman(std::span<const double> x, std::span<const double> y) {
  const auto [a, b] = Complete(x, y);
  return OfComplete(Ranks(a), Ranks(b));
}

Correlation::Correlation() : AnalysisDialog("Correlation", "Correlation coefficient", kLines.cancel) {
  AddCheckBox("Spearman", false).caption = "Spearman's rank correlation";
  AddOkCancel();
}

bool Correlation::OnOk(shell::Host& /*host*/) {
  result_.spearman = Control("Spearman").checked;
  return true;
}

std::unique_ptr<shell::DialogModel> MakeCorrelation() { return std::make_unique<Correlation>(); }

void CorrelationView(shell::Host& host) {
  if (!shell::ResolveDataBlock(host)) return;
  const worksheet::Worksheet* sheet = host.ActiveWorksheet();
  if (sheet == nullptr) return;
  const auto block = ColumnsOfBlock(*sheet, host.CurrentSelection());
  if (block.size() < 2) return host.Refuse(worksheet::messages::kSelectTwoColumns);
  std::vector<std::string> names;
  std::vector<std::vector<double>> columns;
  for (const auto& column : block) {
    columns.push_back(ColumnCells(*sheet, host.CurrentSelection(), column.column));
    names.push_back(column.name);
    std::vector<double> numbers;
    for (const double v : columns.back())
      if (!std::isnan(v)) numbers.push_back(v);
    if (numbers.size() < 3) return host.Refuse(worksheet::messages::kNotEnoughData);
    if (std::all_of(numbers.begin(), numbers.end(), [&](double v) { return v == numbers.front(); }))
      return host.Refuse(worksheet::messages::kAllDataSame);
  }
  host.Log().AppendSessionLine(kLines.Starting());
  Correlation dialog;
  const auto settings = shell::AskParameters(host, dialog);
  if (!settings) return;
  shell::ResultWindow window = shell::MakeDataChart("Correlation coefficient");
  window.charts.clear();  // a grid of matrices, no chart
  shell::ResultTable table = ReportGrid(names.size() + 1);
  int section = 1;
  AddCoefficientBlocks(table, names, columns, false, section);
  if (settings->spearman) AddCoefficientBlocks(table, names, columns, true, section);
  window.table = std::move(table);
  // Numbers beyond a double (values near 1e308) end in the failure path.
  shell::ShowResultOrFail(host, std::move(window), worksheet::messages::kInputValidData, kLines.cancel);
  host.Log().AppendSessionLine(kLines.Completed());
}

}  // namespace orvik::analyses
