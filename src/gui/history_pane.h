#pragma once

#include <QDockWidget>
#include <QPlainTextEdit>
#include <QString>
#include <map>
#include <memory>

#include "shell/command_run.h"

namespace orvik::gui {

// The History pane beside the session pane: every command run in the
// window application, with its parameters, as the orvik-cli line that runs
// it again headlessly. The worksheet each line reads is written once to a
// comma-separated file in the history folder, so a line keeps working after
// the worksheet is edited or closed. The lines can be copied or saved as a
// history file, which `orvik-cli replay FILE` runs line by line.
class HistoryPane : public QDockWidget {
  Q_OBJECT

 public:
  // `folder` receives the worksheet files; it is made when first needed.
  explicit HistoryPane(QString folder, QWidget* parent = nullptr);

  // Adds the line of `run`; dialog settings equal to a fresh dialog's are
  // left out, as orvik-cli starts every dialog fresh.
  void AddRun(const shell::CommandRun& run);
  QStringList Lines() const;
  // Writes the lines to `path`, one command a line; false when it cannot.
  bool SaveTo(const QString& path) const;
  QPlainTextEdit* View() const { return view_; }

 private:
  QString SheetFileOf(const shell::CommandRun& run);

  QString folder_;
  QPlainTextEdit* view_ = nullptr;
  // The file written for each worksheet copy, so runs over the same data
  // share one file.
  std::map<const worksheet::Worksheet*, QString> files_;
  std::map<const worksheet::Worksheet*, std::shared_ptr<const worksheet::Worksheet>> kept_;
};

}  // namespace orvik::gui
