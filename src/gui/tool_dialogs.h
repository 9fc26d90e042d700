#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QRadioButton>
#include <functional>
#include <vector>

#include "gui/chart_view.h"
#include "worksheet/sheet_edits.h"

namespace orvik::gui {

class WorksheetWindow;

// The find-and-replace window `FindWorkSheet`. It stays open beside the
// sheets and always acts on the active worksheet, which it asks for.
class FindWorkSheet : public QDialog {
  Q_OBJECT

 public:
  enum class Mode { Find, Replace };

  FindWorkSheet(std::function<WorksheetWindow*()> active_sheet, QWidget* parent = nullptr);

  void SetMode(Mode mode);
  worksheet::FindOptions Options() const;
  QLineEdit* FindText() const { return find_; }
  QLineEdit* ReplaceText() const { return replace_; }

  // The buttons' commands; each reports in the window's status line.
  bool FindNext();
  void ReplaceOne();
  void ReplaceAll();
  QString Status() const;

 private:
  std::function<WorksheetWindow*()> active_sheet_;
  QLineEdit* find_ = nullptr;
  QLineEdit* replace_ = nullptr;
  QCheckBox* match_case_ = nullptr;
  QCheckBox* whole_cell_ = nullptr;
  QWidget* replace_row_ = nullptr;
  QList<QWidget*> replace_buttons_;
  class QLabel* status_ = nullptr;
};

// Asks for up to three sort keys (columns of the block, each with its
// order). Where the columns beside the block hold data in its rows, it asks
// first, as spreadsheets do, whether to sort those whole rows (the default)
// or the selected cells alone.
class SortDialog : public QDialog {
  Q_OBJECT

 public:
  static constexpr int kLevels = 3;

  SortDialog(const worksheet::Worksheet& sheet, const worksheet::CellBlock& block, QWidget* parent = nullptr);
  worksheet::CellBlock Block() const;
  std::vector<worksheet::SortKey> Keys() const;
  QRadioButton* WholeRows() const { return whole_rows_; }
  QComboBox* KeyBox(int level) const { return keys_[level]; }
  QComboBox* OrderBox(int level) const { return orders_[level]; }

 private:
  void FillKeys();

  const worksheet::Worksheet& sheet_;
  worksheet::CellBlock block_;
  worksheet::CellBlock region_;
  QRadioButton* whole_rows_ = nullptr;
  QComboBox* keys_[kLevels] = {};
  QComboBox* orders_[kLevels] = {};
};

// The chart property dialog `ChartProperty`: titles, line colour, line and
// point style and grid lines of one chart.
class ChartProperty : public QDialog {
  Q_OBJECT

 public:
  explicit ChartProperty(ChartView& chart, QWidget* parent = nullptr);
  // Applies the dialog's settings to the chart (OK does this).
  void Apply();

  QLineEdit* TitleEdit() const { return title_; }
  QCheckBox* GridLines() const { return grid_; }

 private:
  ChartView& chart_;
  QLineEdit* title_ = nullptr;
  QLineEdit* x_title_ = nullptr;
  QLineEdit* y_title_ = nullptr;
  QComboBox* line_style_ = nullptr;
  QComboBox* point_style_ = nullptr;
  QCheckBox* grid_ = nullptr;
  QColor color_;
};

// The calendar dialog `Carlendar`.
QDialog* MakeCarlendar(QWidget* parent);
// The `Information` window: the program's name and version.
QDialog* MakeInformation(QWidget* parent);

}  // namespace orvik::gui
