#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QRadioButton>
#include <QSpinBox>
#include <functional>
#include <vector>

#include "gui/chart_property.h"
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

// Asks for the width, height and resolution of a picture, starting from
// `initial`; width and height keep their proportion unless the box is
// cleared.
class PictureSizeDialog : public QDialog {
  Q_OBJECT

 public:
  explicit PictureSizeDialog(const PictureSize& initial, QWidget* parent = nullptr);
  PictureSize Size() const;

 private:
  QSpinBox* width_ = nullptr;
  QSpinBox* height_ = nullptr;
  QSpinBox* dpi_ = nullptr;
  QCheckBox* keep_ = nullptr;
  double ratio_ = 1.0;
};

// The calendar dialog `Carlendar`.
QDialog* MakeCarlendar(QWidget* parent);
// The `Information` window: the program's name, version and build, and the
// libraries it uses with their licences.
QDialog* MakeInformation(QWidget* parent);
// The help window: the user guide that ships inside the program.
QDialog* MakeHelpContents(QWidget* parent);

}  // namespace orvik::gui
