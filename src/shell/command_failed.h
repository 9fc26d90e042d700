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

}  // namespace orvik::shell
