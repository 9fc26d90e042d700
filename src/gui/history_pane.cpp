#include "gui/history_pane.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QMessageBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>
#include <fstream>

#include "commands/command_registry.h"
#include "formats/delimited_text.h"

namespace orvik::gui {

HistoryPane::HistoryPane(QString folder, QWidget* parent)
    : QDockWidget(QStringLiteral("History"), parent), folder_(std::move(folder)) {
  setObjectName(QStringLiteral("HistoryDoc"));
  setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable | QDockWidget::DockWidgetClosable);
  auto* body = new QWidget(this);
  view_ = new QPlainTextEdit(body);
  view_->setObjectName(QStringLiteral("HistoryView"));
  view_->setReadOnly(true);
  view_->setLineWrapMode(QPlainTextEdit::NoWrap);
  auto* copy = new QPushButton(QStringLiteral("Copy"), body);
  copy->setObjectName(QStringLiteral("HistoryCopy"));
  copy->setToolTip(QStringLiteral("Copy the selected lines, or all of them"));
  connect(copy, &QPushButton::clicked, this, [this] {
    if (!view_->textCursor().hasSelection()) view_->selectAll();
    view_->copy();
  });
  auto* save = new QPushButton(QStringLiteral("Save..."), body);
  save->setObjectName(QStringLiteral("HistorySave"));
  save->setToolTip(QStringLiteral("Save the lines as a history file for orvik-cli replay"));
  connect(save, &QPushButton::clicked, this, [this] {
    const QString path = QFileDialog::getSaveFileName(this, QStringLiteral("Save History"), QString(),
                                                      QStringLiteral("History files (*.txt);;All files (*)"));
    if (!path.isEmpty() && !SaveTo(path))
      QMessageBox::warning(this, QStringLiteral("Save History"), QStringLiteral("The history could not be saved."));
  });
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(copy);
  buttons->addWidget(save);
  auto* layout = new QVBoxLayout(body);
  layout->setContentsMargins(2, 2, 2, 2);
  layout->addWidget(view_);
  layout->addLayout(buttons);
  setWidget(body);
}

QString HistoryPane::SheetFileOf(const shell::CommandRun& run) {
  if (!run.data) return {};
  const auto known = files_.find(run.data.get());
  if (known != files_.end()) return known->second;
  QDir().mkpath(folder_);
  const QString path =
      QDir(folder_).filePath(QStringLiteral("sheet-%1.csv").arg(static_cast<qulonglong>(files_.size() + 1), 4, 10, QLatin1Char('0')));
  std::ofstream out(path.toStdString(), std::ios::binary);
  // A design sheet keeps its headings as row 1, from which orvik-cli
  // recognises the design again.
  formats::WriteDelimitedText(out, *run.data, formats::DelimitedOptions{',', run.data->Design().has_value()});
  if (!out) return {};
  // The copy stays alive with its file, so its address names only it.
  kept_[run.data.get()] = run.data;
  files_[run.data.get()] = path;
  return path;
}

void HistoryPane::AddRun(const shell::CommandRun& run) {
  shell::CommandRun shown = run;
  shown.settings = shell::WithoutDefaults(run.settings, [](const std::string& dialog) {
    const shell::DialogDeclaration* declared = commands::FindDialog(dialog);
    return declared ? declared->make() : nullptr;
  });
  view_->appendPlainText(QString::fromStdString(shell::RunLine(shown, SheetFileOf(run).toStdString())));
}

QStringList HistoryPane::Lines() const {
  QStringList lines = view_->toPlainText().split(QLatin1Char('\n'));
  lines.removeAll(QString());
  return lines;
}

bool HistoryPane::SaveTo(const QString& path) const {
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) return false;
  for (const QString& line : Lines()) file.write((line + QLatin1Char('\n')).toUtf8());
  return file.error() == QFile::NoError;
}

}  // namespace orvik::gui
