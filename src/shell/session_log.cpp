#include "shell/session_log.h"

namespace orvik::shell {

void SessionLog::AppendSessionLine(std::string_view line) {
  text_.append("\r\n");
  text_.append(line);
  if (listener_) listener_(line);
}

}  // namespace orvik::shell
