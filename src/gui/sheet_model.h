#pragma once

#include <QAbstractTableModel>
#include <functional>

#include "worksheet/sheet_edits.h"

namespace orvik::gui {

// The grid's view of one core worksheet. It stores no cell: every read goes
// to the worksheet, every write is handed to the window (which makes it an
// undoable edit), and the editor's change notifications become the model's
// signals. Row and column counts are cached so that the view always sees the
// counts that match the signals it was sent.
class SheetModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  // Rows shown at most; sheets larger than this are still read whole by the
  // analyses, only the grid stops here.
  static constexpr long kMaxShownRows = 10'000'000;

  // `write` makes the edit the user typed into a cell (row, col counted from 1).
  SheetModel(worksheet::SheetEditor& editor, std::function<void(long, long, const QString&)> write,
             QObject* parent = nullptr);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  void OnChange(const worksheet::SheetChange& change);
  void SyncSize();

  worksheet::SheetEditor& editor_;
  std::function<void(long, long, const QString&)> write_;
  int rows_ = 0;
  int cols_ = 0;
};

}  // namespace orvik::gui
