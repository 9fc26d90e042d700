#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace orvik::shell {

inline constexpr const char* kWelcomeLine = "Welcome to Orvik 2.0";

// The session log: the running record of this run of the program, one line
// per analysis start, completion or cancel and per worksheet made or removed.
// Append-only; lines are separated by CR LF and the text starts with the
// welcome line, never with a blank line. It is not saved with a project.
class SessionLog {
 public:
  // Appends CR LF and `line` to the text.
  void AppendSessionLine(std::string_view line);

  const std::string& Text() const { return text_; }

  // Called after each append with the new line (the session pane follows
  // the log through it).
  void SetAppendListener(std::function<void(std::string_view line)> listener) {
    listener_ = std::move(listener);
  }

 private:
  std::string text_ = kWelcomeLine;
  std::function<void(std::string_view)> listener_;
};

}  // namespace orvik::shell
