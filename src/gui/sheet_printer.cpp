#include "gui/sheet_printer.h"

#include "gui/chart_view.h"

#include <QPainter>
#include <qcustomplot.h>

#include <algorithm>
#include <functional>

namespace orvik::gui {

namespace {

// The cells of a grid as the printer reads them: `rows` by `cols`, column
// headings, and each cell's text (1-based).
struct PrintedGrid {
  long rows = 0;
  long cols = 0;
  std::function<QString(long col)> heading;
  std::function<QString(long row, long col)> text;
};

// Prints `grid` as a ruled table with its headings and row numbers, as many
// pages as it needs: down the rows of a band of columns, then to the next
// band. `first` is false when the painter's page already holds something.
void PrintGrid(QPainter& painter, QPrinter& printer, const PrintedGrid& grid, bool first) {
  painter.setFont(QFont(QStringLiteral("Arial"), 9));
  const QRect page = painter.viewport();
  const int row_height = painter.fontMetrics().height() + 6;
  const int col_width = painter.fontMetrics().horizontalAdvance(QStringLiteral("0000000000.00"));
  const int number_width = painter.fontMetrics().horizontalAdvance(QStringLiteral("0000000"));
  const long cols_per_page = std::max(1, (page.width() - number_width) / col_width);
  const long rows_per_page = std::max(1, page.height() / row_height - 1);
  const long rows = std::max(1L, grid.rows);
  const long cols = std::max(1L, grid.cols);
  for (long col0 = 1; col0 <= cols; col0 += cols_per_page) {
    for (long row0 = 1; row0 <= rows; row0 += rows_per_page) {
      if (!first) printer.newPage();
      first = false;
      const long col_end = std::min(cols, col0 + cols_per_page - 1);
      const long row_end = std::min(rows, row0 + rows_per_page - 1);
      for (long c = col0; c <= col_end; ++c) {
        const QRect cell(number_width + int(c - col0) * col_width, 0, col_width, row_height);
        painter.fillRect(cell, QColor(220, 230, 245));
        painter.drawRect(cell);
        painter.drawText(cell, Qt::AlignCenter, grid.heading(c));
      }
      for (long r = row0; r <= row_end; ++r) {
        const int y = int(r - row0 + 1) * row_height;
        const QRect number(0, y, number_width, row_height);
        painter.fillRect(number, QColor(220, 230, 245));
        painter.drawRect(number);
        painter.drawText(number, Qt::AlignCenter, QString::number(r));
        for (long c = col0; c <= col_end; ++c) {
          const QRect cell(number_width + int(c - col0) * col_width, y, col_width, row_height);
          painter.drawRect(cell);
          painter.drawText(cell.adjusted(3, 0, -3, 0), Qt::AlignVCenter | Qt::AlignLeft, grid.text(r, c));
        }
      }
    }
  }
}

// The charts stacked, scaled to fill the painter's page.
void PaintChartsOnPage(QCPPainter& painter, const std::vector<ChartView*>& charts) {
  const QRect page = painter.viewport();
  const QSize size = StackedSize(charts);
  // The charts fill the page, their pixel-sized text scaled with them.
  const double scale = std::min(page.width() / double(size.width()), page.height() / double(size.height()));
  painter.save();
  painter.setMode(QCPPainter::pmVectorized);
  painter.setMode(QCPPainter::pmNoCaching);
  painter.scale(scale, scale);
  PaintCharts(painter, charts);
  painter.restore();
}

}  // namespace

void PrintWorksheet(QPrinter& printer, const worksheet::Worksheet& sheet) {
  QPainter painter(&printer);
  if (!painter.isActive()) return;
  PrintedGrid grid{sheet.DataRowCnt(), sheet.DataColCnt(),
                   [&sheet](long c) { return QString::fromStdString(sheet.ColumnHeader(c)); },
                   [&sheet](long r, long c) {
                     const std::string_view text = sheet.Text(r, c);
                     return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
                   }};
  PrintGrid(painter, printer, grid, true);
}

void PrintCharts(QPrinter& printer, const std::vector<ChartView*>& charts) {
  QCPPainter painter(&printer);
  if (!painter.isActive() || charts.empty()) return;
  PaintChartsOnPage(painter, charts);
}

void PrintResultWindow(QPrinter& printer, const std::vector<ChartView*>& charts, const shell::ResultTable* table) {
  QCPPainter painter(&printer);
  if (!painter.isActive()) return;
  if (!charts.empty()) PaintChartsOnPage(painter, charts);
  if (!table || table->RowCount() == 0) return;
  // The grid's rows; a heading row, when there is one, heads the columns.
  std::size_t cols = table->columns.size();
  for (std::size_t r = 0; r < table->RowCount(); ++r) cols = std::max(cols, table->Row(r).size());
  const auto cell = [](const std::vector<std::string>& row, long c) {
    return static_cast<std::size_t>(c) <= row.size() ? QString::fromStdString(row[static_cast<std::size_t>(c - 1)])
                                                     : QString();
  };
  PrintedGrid grid{static_cast<long>(table->RowCount()), static_cast<long>(cols),
                   [table, &cell](long c) { return cell(table->columns, c); },
                   [table, &cell](long r, long c) { return cell(table->Row(static_cast<std::size_t>(r - 1)), c); }};
  PrintGrid(painter, printer, grid, charts.empty());
}

}  // namespace orvik::gui
