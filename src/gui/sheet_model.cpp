#include "gui/sheet_model.h"

#include <QBrush>
#include <QColor>
#include <QFont>
#include <algorithm>

#include "worksheet/cell_number.h"

namespace orvik::gui {

namespace {

int ShownRows(const worksheet::Worksheet& sheet) {
  return static_cast<int>(std::min(sheet.MaxRows(), SheetModel::kMaxShownRows));
}

QColor ToColor(std::uint32_t rgb) { return QColor((rgb >> 16) & 0xFF, (rgb >> 8) & 0xFF, rgb & 0xFF); }

}  // namespace

SheetModel::SheetModel(worksheet::SheetEditor& editor, std::function<void(long, long, const QString&)> write,
                       QObject* parent)
    : QAbstractTableModel(parent), editor_(editor), write_(std::move(write)) {
  rows_ = ShownRows(editor_.Sheet());
  cols_ = static_cast<int>(editor_.Sheet().MaxCols());
  editor_.SetListener([this](const worksheet::SheetChange& change) { OnChange(change); });
}

int SheetModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : rows_; }

int SheetModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : cols_; }

QVariant SheetModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const long row = index.row() + 1;
  const long col = index.column() + 1;
  const worksheet::Worksheet& sheet = editor_.Sheet();
  switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole: {
      const std::string_view text = sheet.Text(row, col);
      return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    }
    default: break;
  }
  if (editor_.Formats().Runs().empty() && role != Qt::TextAlignmentRole) return {};
  const worksheet::CellFormat format = editor_.Formats().At(row, col);
  switch (role) {
    case Qt::FontRole: {
      if (!format.bold && !format.italic && !format.underline) return {};
      QFont font;
      font.setBold(format.bold);
      font.setItalic(format.italic);
      font.setUnderline(format.underline);
      return font;
    }
    case Qt::TextAlignmentRole: {
      switch (format.alignment) {
        case worksheet::Alignment::Left: return int(Qt::AlignLeft | Qt::AlignVCenter);
        case worksheet::Alignment::Center: return int(Qt::AlignCenter);
        case worksheet::Alignment::Right: return int(Qt::AlignRight | Qt::AlignVCenter);
        case worksheet::Alignment::Default: break;
      }
      // Numbers stand to the right and texts to the left, as in any spreadsheet.
      const bool numeric = worksheet::ParseCellNumber(sheet.Text(row, col)).has_value();
      return int((numeric ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    }
    case Qt::ForegroundRole:
      if (format.foreground) return QBrush(ToColor(*format.foreground));
      return {};
    case Qt::BackgroundRole:
      if (format.background) return QBrush(ToColor(*format.background));
      return {};
    default: return {};
  }
}

bool SheetModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (!index.isValid() || role != Qt::EditRole) return false;
  write_(index.row() + 1, index.column() + 1, value.toString());
  return true;
}

QVariant SheetModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole) return QAbstractTableModel::headerData(section, orientation, role);
  if (orientation == Qt::Vertical) return section + 1;
  return QString::fromStdString(editor_.Sheet().ColumnHeader(section + 1));
}

Qt::ItemFlags SheetModel::flags(const QModelIndex& index) const {
  return QAbstractTableModel::flags(index) | Qt::ItemIsEditable;
}

void SheetModel::SyncSize() {
  // Typing or pasting past the grid's end grows the sheet; the new rows and
  // columns appear at the end.
  const int rows = ShownRows(editor_.Sheet());
  const int cols = static_cast<int>(editor_.Sheet().MaxCols());
  if (rows > rows_) {
    beginInsertRows({}, rows_, rows - 1);
    rows_ = rows;
    endInsertRows();
  }
  if (cols > cols_) {
    beginInsertColumns({}, cols_, cols - 1);
    cols_ = cols;
    endInsertColumns();
  }
}

void SheetModel::OnChange(const worksheet::SheetChange& change) {
  using Kind = worksheet::SheetChange::Kind;
  const bool before = change.phase == worksheet::SheetChange::Phase::Before;
  const auto& b = change.block;
  switch (change.kind) {
    case Kind::Cells:
    case Kind::Formats: {
      SyncSize();
      const int top = static_cast<int>(std::min<long>(b.top, rows_)) - 1;
      const int bottom = static_cast<int>(std::min<long>(b.bottom, rows_)) - 1;
      const int left = static_cast<int>(std::min<long>(b.left, cols_)) - 1;
      const int right = static_cast<int>(std::min<long>(b.right, cols_)) - 1;
      if (top >= 0 && left >= 0) emit dataChanged(index(top, left), index(bottom, right));
      break;
    }
    case Kind::RowsInserted:
      if (before) {
        const int first = static_cast<int>(std::min<long>(b.top - 1, rows_));
        beginInsertRows({}, first, first + static_cast<int>(b.bottom - b.top));
      } else {
        rows_ += static_cast<int>(b.bottom - b.top + 1);
        endInsertRows();
        SyncSize();
      }
      break;
    case Kind::RowsRemoved:
      if (before) {
        beginRemoveRows({}, static_cast<int>(b.top - 1), static_cast<int>(b.bottom - 1));
      } else {
        rows_ -= static_cast<int>(b.bottom - b.top + 1);
        endRemoveRows();
        SyncSize();  // a grid keeps at least one row
      }
      break;
    case Kind::ColumnsInserted:
      if (before) {
        const int first = static_cast<int>(std::min<long>(b.left - 1, cols_));
        beginInsertColumns({}, first, first + static_cast<int>(b.right - b.left));
      } else {
        cols_ += static_cast<int>(b.right - b.left + 1);
        endInsertColumns();
      }
      break;
    case Kind::ColumnsRemoved:
      if (before) {
        beginRemoveColumns({}, static_cast<int>(b.left - 1), static_cast<int>(b.right - 1));
      } else {
        cols_ -= static_cast<int>(b.right - b.left + 1);
        endRemoveColumns();
        SyncSize();
      }
      break;
    case Kind::Headers:
      emit headerDataChanged(Qt::Horizontal, static_cast<int>(b.left - 1), static_cast<int>(b.right - 1));
      break;
  }
}

}  // namespace orvik::gui
