#pragma once

#include <stdexcept>

namespace orvik::shell {

// Thrown by a command that has failed at run time after it has already told
// the user (its own failure message box) and written its cancel line to the
// session log. Front-ends end such a command quietly: the window application
// shows no further message, orvik-cli reports the run as failed.
class CommandFailed : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Thrown by Host::ShowResultWindow instead of showing a window that holds a
// number that is not finite: a value overflowed where the analysis could
// not compute around it. Nothing has been told yet; the analysis catches it
// and takes its run-time failure path (its message box and cancel line).
class NonFiniteResult : public std::overflow_error {
 public:
  NonFiniteResult() : std::overflow_error("a result is not a finite number") {}
};

}  // namespace orvik::shell
