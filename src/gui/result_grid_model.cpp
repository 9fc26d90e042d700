#include "gui/result_grid_model.h"

#include <QBrush>
#include <QFont>

namespace orvik::gui {

namespace {

QColor ToColor(shell::Rgb rgb) {
  return QColor((rgb.value >> 16) & 0xFF, (rgb.value >> 8) & 0xFF, rgb.value & 0xFF);
}

}  // namespace

ResultGridModel::ResultGridModel(const shell::ResultTable& table, QObject* parent)
    : QAbstractTableModel(parent), table_(table), columns_(static_cast<int>(table.Width())) {}

int ResultGridModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(table_.RowCount());
}

int ResultGridModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : columns_; }

QVariant ResultGridModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const auto row = static_cast<std::size_t>(index.row());
  switch (role) {
    case Qt::DisplayRole: {
      // A cell past the end of a short row (a legend line) shows nothing.
      const auto column = static_cast<std::size_t>(index.column());
      if (column >= table_.RowWidth(row)) return {};
      return QString::fromStdString(table_.Cell(row, column));
    }
    case Qt::ForegroundRole: {
      const shell::RowStyle& style = table_.StyleOfRow(row);
      return style.foreground ? QVariant(QBrush(ToColor(*style.foreground))) : QVariant();
    }
    case Qt::BackgroundRole: {
      const shell::RowStyle& style = table_.StyleOfRow(row);
      return style.background ? QVariant(QBrush(ToColor(*style.background))) : QVariant();
    }
    case Qt::FontRole: {
      if (!table_.StyleOfRow(row).bold) return {};
      QFont font;
      font.setBold(true);
      return font;
    }
    default: return {};
  }
}

QVariant ResultGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole) return {};
  if (orientation == Qt::Vertical) return section + 1;
  const auto column = static_cast<std::size_t>(section);
  return column < table_.columns.size() ? QString::fromStdString(table_.columns[column]) : QString();
}

}  // namespace orvik::gui
