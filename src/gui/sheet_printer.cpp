#include "gui/sheet_printer.h"

#include "gui/chart_view.h"

#include <QPainter>
#include <qcustomplot.h>

namespace orvik::gui {

void PrintWorksheet(QPrinter& printer, const worksheet::Worksheet& sheet) {
  QPainter painter(&printer);
  if (!painter.isActive()) return;
  painter.setFont(QFont(QStringLiteral("Arial"), 9));
  const QRect page = painter.viewport();
  const int row_height = painter.fontMetrics().height() + 6;
  const int col_width = painter.fontMetrics().horizontalAdvance(QStringLiteral("0000000000.00"));
  const int number_width = painter.fontMetrics().horizontalAdvance(QStringLiteral("0000000"));
  const long cols_per_page = std::max(1, (page.width() - number_width) / col_width);
  const long rows_per_page = std::max(1, page.height() / row_height - 1);
  const long rows = std::max(1L, sheet.DataRowCnt());
  const long cols = std::max(1L, sheet.DataColCnt());
  bool first = true;
  // Pages go down the rows of a band of columns, then to the next band.
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
        painter.drawText(cell, Qt::AlignCenter, QString::fromStdString(sheet.ColumnHeader(c)));
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
          const std::string_view text = sheet.Text(r, c);
          painter.drawText(cell.adjusted(3, 0, -3, 0), Qt::AlignVCenter | Qt::AlignLeft,
                           QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
        }
      }
    }
  }
}

void PrintCharts(QPrinter& printer, const std::vector<ChartView*>& charts) {
  QCPPainter painter(&printer);
  if (!painter.isActive() || charts.empty()) return;
  const QRect page = painter.viewport();
  const QSize size = StackedSize(charts);
  // The charts fill the page, their pixel-sized text scaled with them.
  const double scale = std::min(page.width() / double(size.width()), page.height() / double(size.height()));
  painter.setMode(QCPPainter::pmVectorized);
  painter.setMode(QCPPainter::pmNoCaching);
  painter.scale(scale, scale);
  PaintCharts(painter, charts);
}

}  // namespace orvik::gui
