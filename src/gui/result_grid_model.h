#pragma once

#include <QAbstractTableModel>

#include "shell/result_table.h"

namespace orvik::gui {

// The grid `DataView` of a result window as a Qt model over the window's
// own result record: it holds no cells, and each cell's text is made when
// the view asks for it, so a grid of a million rows opens at once.
class ResultGridModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  // `table` must outlive the model (the result window owns both).
  explicit ResultGridModel(const shell::ResultTable& table, QObject* parent = nullptr);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  const shell::ResultTable& table_;
  int columns_ = 0;
};

}  // namespace orvik::gui
