#include "shell/host.h"

#include "shell/command_failed.h"

namespace orvik::shell {

DialogOutcome Host::RunDialog(DialogModel& dialog) {
  if (replaying_ != nullptr) {
    RestoreControlStates(dialog, replaying_->settings);
    if (dialog.PressOk(*this)) {
      if (recording_) {
        const auto states = ControlStates(dialog);
        recording_->settings.insert(recording_->settings.end(), states.begin(), states.end());
      }
      return DialogOutcome::Accepted;
    }
    dialog.PressCancel(*this);
    return DialogOutcome::Cancelled;
  }
  const DialogOutcome outcome = ShowDialog(dialog);
  if (outcome == DialogOutcome::Accepted) {
    const auto states = ControlStates(dialog);
    if (recording_) recording_->settings.insert(recording_->settings.end(), states.begin(), states.end());
    else KeepOptions(states);  // confirmed outside a command: options for the next ones
  }
  return outcome;
}

void Host::ShowResultWindow(ResultWindow window) {
  if (window.ShowsNonFiniteNumber()) throw NonFiniteResult();
  if (recording_) window.run = std::make_shared<const CommandRun>(*recording_);
  OpenResultWindow(std::move(window));
}

worksheet::Worksheet* Host::ActiveWorksheet() {
  if (replay_sheet_) return &*replay_sheet_;
  return CurrentWorksheet();
}

void Host::BeginRun(std::string key) {
  CommandRun run;
  run.key = std::move(key);
  run.settings = options_before_command_;
  if (const worksheet::Worksheet* sheet = CurrentWorksheet()) {
    if (sheet != last_copy_of_ || !last_copy_ || last_copy_->Revision() != sheet->Revision()) {
      last_copy_ = std::make_shared<const worksheet::Worksheet>(*sheet);
      last_copy_of_ = sheet;
    }
    run.data = last_copy_;
    run.selection = sheet->Selection;
  }
  recording_ = std::move(run);
}

CommandRun Host::EndRun() {
  CommandRun run = recording_ ? std::move(*recording_) : CommandRun{};
  recording_.reset();
  if (run_listener_ && !run.key.empty()) run_listener_(run);
  return run;
}

void Host::KeepOptions(const std::vector<ControlSetting>& states) {
  if (states.empty()) return;
  const std::string& dialog = states.front().dialog;
  std::erase_if(options_before_command_, [&dialog](const ControlSetting& s) { return s.dialog == dialog; });
  options_before_command_.insert(options_before_command_.end(), states.begin(), states.end());
}

void Host::Replay(const CommandRun& run, const std::function<void(Host&)>& procedure) {
  Replay(run, procedure, options_before_command_);
}

void Host::Replay(const CommandRun& run, const std::function<void(Host&)>& procedure,
                  std::vector<ControlSetting> options) {
  // The new run reads the same data and answers its dialogs the same way;
  // the options set before commands are the ones given.
  CommandRun again;
  again.key = run.key;
  again.data = run.data;
  again.selection = run.selection;
  again.settings = std::move(options);
  if (run.data) {
    replay_sheet_.emplace(*run.data);
    replay_sheet_->Selection = run.selection;
  }
  recording_ = std::move(again);
  replaying_ = &run;
  const auto restore = [this] {
    replaying_ = nullptr;
    replay_sheet_.reset();
    EndRun();
  };
  try {
    procedure(*this);
  } catch (...) {
    restore();
    throw;
  }
  restore();
}

}  // namespace orvik::shell
