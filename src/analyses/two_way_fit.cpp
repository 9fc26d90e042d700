#include "analyses/two_way_fit.h"

#include <cmath>

#include "analyses/centred_data.h"
#include "stats/compensated_sum.h"
#include "stats/f_distribution.h"

namespace orvik::analyses {

namespace {

void Complete(TwoWayTerm& term, double error_ms, long error_df) {
  term.ms = term.ss / static_cast<double>(term.df);
  term.f = term.ms / error_ms;
  term.p = std::isnan(term.f) ? term.f
                              : stats::GetDFFUpper(term.f, static_cast<double>(term.df), static_cast<double>(error_df));
}

}  // namespace

bool IsBalanced(const TwoWayCells& cells) {
  if (cells.empty() || cells.front().empty()) return false;
  const std::size_t r = cells.front().front().size();
  if (r == 0) return false;
  for (const auto& row : cells) {
    if (row.size() != cells.front().size()) return false;
    for (const auto& cell : row)
      if (cell.size() != r) return false;
  }
  return true;
}

TwoWayFit FitTwoWay(const TwoWayCells& cells) {
  TwoWayFit fit;
  const std::size_t a = cells.size();
  const std::size_t b = cells.front().size();
  const std::size_t r = cells.front().front().size();
  const double reference = cells.front().front().front();
  fit.replicates = static_cast<long>(r);
  fit.interaction = r >= 2;
  // Deviations and cell means.
  std::vector<std::vector<CentredData>> centred(a);
  std::vector<std::vector<double>> cell(a, std::vector<double>(b));
  stats::CompensatedSum grand_sum;
  for (std::size_t i = 0; i < a; ++i)
    for (std::size_t j = 0; j < b; ++j) {
      centred[i].push_back(Centre(cells[i][j], reference));
      cell[i][j] = Mean(centred[i][j].deviations);
      for (const double d : centred[i][j].deviations) grand_sum.Add(d);
    }
  const double n = static_cast<double>(a * b * r);
  const double grand = grand_sum.Value() / n;
  std::vector<double> row(a), column(b);
  for (std::size_t i = 0; i < a; ++i) {
    stats::CompensatedSum s;
    for (std::size_t j = 0; j < b; ++j) s.Add(cell[i][j]);
    row[i] = s.Value() / static_cast<double>(b);
  }
  for (std::size_t j = 0; j < b; ++j) {
    stats::CompensatedSum s;
    for (std::size_t i = 0; i < a; ++i) s.Add(cell[i][j]);
    column[j] = s.Value() / static_cast<double>(a);
  }
  stats::CompensatedSum ss_rows, ss_columns, ss_interaction, ss_within, ss_total;
  for (std::size_t i = 0; i < a; ++i) ss_rows.Add(static_cast<double>(b * r) * (row[i] - grand) * (row[i] - grand));
  for (std::size_t j = 0; j < b; ++j)
    ss_columns.Add(static_cast<double>(a * r) * (column[j] - grand) * (column[j] - grand));
  for (std::size_t i = 0; i < a; ++i)
    for (std::size_t j = 0; j < b; ++j) {
      const double effect = cell[i][j] - row[i] - column[j] + grand;
      ss_interaction.Add(static_cast<double>(r) * effect * effect);
      ss_within.Add(SquaredDeviations(centred[i][j].deviations, cell[i][j]));
      ss_total.Add(SquaredDeviations(centred[i][j].deviations, grand));
    }
  fit.rows.df = static_cast<long>(a) - 1;
  fit.rows.ss = ss_rows.Value();
  fit.columns.df = static_cast<long>(b) - 1;
  fit.columns.ss = ss_columns.Value();
  if (fit.interaction) {
    fit.rowsByColumns.df = fit.rows.df * fit.columns.df;
    fit.rowsByColumns.ss = ss_interaction.Value();
    fit.errorDf = static_cast<long>(a * b * (r - 1));
    fit.errorSS = ss_within.Value();
  } else {
    fit.errorDf = fit.rows.df * fit.columns.df;
    fit.errorSS = ss_interaction.Value();
  }
  fit.errorMS = fit.errorSS / static_cast<double>(fit.errorDf);
  Complete(fit.rows, fit.errorMS, fit.errorDf);
  Complete(fit.columns, fit.errorMS, fit.errorDf);
  if (fit.interaction) Complete(fit.rowsByColumns, fit.errorMS, fit.errorDf);
  fit.totalDf = static_cast<long>(n) - 1;
  fit.totalSS = ss_total.Value();
  fit.s = std::sqrt(fit.errorMS);
  const double model = fit.rows.ss + fit.columns.ss + (fit.interaction ? fit.rowsByColumns.ss : 0.0);
  fit.rSquared = model / (model + fit.errorSS);
  fit.adjustedRSquared = 1.0 - fit.errorMS / (fit.totalSS / static_cast<double>(fit.totalDf));
  for (const double m : row) fit.rowMeans.push_back(reference + m);
  for (const double m : column) fit.columnMeans.push_back(reference + m);
  for (const auto& cells_of_row : cell) {
    fit.cellMeans.emplace_back();
    for (const double m : cells_of_row) fit.cellMeans.back().push_back(reference + m);
  }
  return fit;
}

}  // namespace orvik::analyses
