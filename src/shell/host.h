#pragma once

#include <concepts>
#include <functional>
#include <optional>

#include "shell/command_run.h"
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
  // dialog's own handlers write the settings and the cancel line. While a
  // run is replayed, the dialog is answered from the run's record instead.
  DialogOutcome RunDialog(DialogModel& dialog);
  // Opens a result window holding `window`, with the record of the run
  // that made it when a run is under way.
  // Throws NonFiniteResult, showing nothing, when the window holds a number
  // that is not finite.
  void ShowResultWindow(ResultWindow window);
  // Opens a design sheet (`DOEDoc`): a worksheet window holding `sheet`,
  // whose Design() tells its factors and response. The design commands
  // call it and name the sheet.
  void ShowDesignSheet(worksheet::Worksheet sheet) { OpenDesignSheet(std::move(sheet)); }
  // The number of the next design sheet made in this run of the program,
  // counting from 1; closed sheets' numbers are not reused.
  int NextDesignNumber() { return ++design_counter_; }
  // The worksheet the command reads: the active document window's (null
  // when none is open), or the recorded copy while a run is replayed.
  worksheet::Worksheet* ActiveWorksheet();

  // Starts the record of a run of command `key` over the active worksheet;
  // the dialogs confirmed until EndRun become its settings.
  void BeginRun(std::string key);
  // Ends the record and gives it back.
  CommandRun EndRun();
  // Runs `procedure` again over the worksheet copy and the dialog answers
  // of `run`. Dialogs that set options before a command are not asked
  // again: the new run's record starts with `options` (by default the
  // program's current ones, given limits just set), which the procedure
  // may read through Recording().
  void Replay(const CommandRun& run, const std::function<void(Host&)>& procedure);
  void Replay(const CommandRun& run, const std::function<void(Host&)>& procedure,
              std::vector<ControlSetting> options);
  // Whether a run is being replayed, and the record of the run under way.
  bool Replaying() const { return replaying_ != nullptr; }
  const CommandRun* Recording() const { return recording_ ? &*recording_ : nullptr; }
  // The states of the dialogs confirmed outside a command, each dialog's
  // last; the next runs record them first.
  const std::vector<ControlSetting>& OptionsBeforeCommand() const { return options_before_command_; }
  // Takes `states` (of one dialog) as that dialog's confirmed options.
  void KeepOptions(const std::vector<ControlSetting>& states);
  // Called with the record of every run that ends, replays included (the
  // window application's History pane).
  void SetRunListener(std::function<void(const CommandRun&)> listener) { run_listener_ = std::move(listener); }

  SessionLog& Log() { return log_; }
  ProgramSettings& Settings() { return settings_; }
  worksheet::DataSelection& CurrentSelection() { return selection_; }

  // Shorthands for the three kinds of message box.
  void Refuse(std::string text) { ShowMessage(RefusalBox(std::move(text))); }
  void Notify(std::string text) { ShowMessage(NoticeBox(std::move(text))); }
  bool Ask(std::string text) { return ShowMessage(QuestionBox(std::move(text))) == MessageAnswer::Ok; }

 protected:
  // What the front-end does for RunDialog, ShowResultWindow and
  // ActiveWorksheet outside a replay.
  virtual DialogOutcome ShowDialog(DialogModel& dialog) = 0;
  virtual void OpenResultWindow(ResultWindow window) = 0;
  virtual void OpenDesignSheet(worksheet::Worksheet sheet) = 0;
  virtual worksheet::Worksheet* CurrentWorksheet() = 0;

 private:
  SessionLog log_;
  ProgramSettings settings_;
  worksheet::DataSelection selection_;
  int design_counter_ = 0;
  // The run being recorded, if any, and the run being replayed, if any.
  std::optional<CommandRun> recording_;
  const CommandRun* replaying_ = nullptr;
  std::optional<worksheet::Worksheet> replay_sheet_;
  // The controls of the dialogs confirmed before commands, each one's last.
  std::vector<ControlSetting> options_before_command_;
  std::function<void(const CommandRun&)> run_listener_;
  // The last copy of a worksheet taken for a run, reused while that sheet
  // is unchanged, so runs over the same data share one copy.
  std::shared_ptr<const worksheet::Worksheet> last_copy_;
  const worksheet::Worksheet* last_copy_of_ = nullptr;
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
