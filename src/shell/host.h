#pragma once

#include <concepts>
#include <optional>

#include "shell/dialog_model.h"
#include "shell/message_box.h"
#include "shell/program_settings.h"
#include "shell/result_window.h"
#include "shell/session_log.h"
#include "worksheet/data_selection.h"
#include "worksheet/worksheet.h"

namespace orvik::shell {

enum class DialogOutcome { Accepted, Cancelled };

// The one way an analysis talks to the user. The window application shows
// real message boxes, dialogs and result windows; orvik-cli records them and
// answers as its command line says. The host also holds what lives for the
// whole run: the session log, the program-wide settings and the current
// data selection.
class Host {
 public:
  virtual ~Host() = default;

  // Shows a modal message box and returns the button pressed.
  virtual MessageAnswer ShowMessage(const MessageBox& box) = 0;
  // Shows `dialog` modally until its OK is accepted or it is cancelled. The
  // dialog's own handlers write the settings and the cancel line.
  virtual DialogOutcome RunDialog(DialogModel& dialog) = 0;
  // Opens a result window holding `window`.
  virtual void ShowResultWindow(ResultWindow window) = 0;
  // The worksheet of the active document window; null when none is open.
  virtual worksheet::Worksheet* ActiveWorksheet() = 0;

  SessionLog& Log() { return log_; }
  ProgramSettings& Settings() { return settings_; }
  worksheet::DataSelection& CurrentSelection() { return selection_; }

  // Shorthands for the three kinds of message box.
  void Refuse(std::string text) { ShowMessage(RefusalBox(std::move(text))); }
  void Notify(std::string text) { ShowMessage(NoticeBox(std::move(text))); }
  bool Ask(std::string text) { return ShowMessage(QuestionBox(std::move(text))) == MessageAnswer::Ok; }

 private:
  SessionLog log_;
  ProgramSettings settings_;
  worksheet::DataSelection selection_;
};

// A dialog whose OK yields a typed record of parameters: `Parameters` is the
// record's type and Result() the record of the last accepted OK.
template <class D>
concept ParameterDialog = std::derived_from<D, DialogModel> && requires(const D& dialog) {
  typename D::Parameters;
  { dialog.Result() } -> std::convertible_to<const typename D::Parameters&>;
};

// Shows `dialog`. On OK its record becomes the program's last confirmed
// parameters of that type and is returned for the command to use; after
// cancel nothing is returned and the stored record is left as it was.
template <ParameterDialog D>
std::optional<typename D::Parameters> AskParameters(Host& host, D& dialog) {
  if (host.RunDialog(dialog) != DialogOutcome::Accepted) return std::nullopt;
  auto& last = host.Settings().Last<typename D::Parameters>();
  last = dialog.Result();
  return last;
}

}  // namespace orvik::shell
