#include "shell/message_box.h"

namespace orvik::shell {

const char* IconName(MessageIcon icon) {
  switch (icon) {
    case MessageIcon::Exclamation: return "exclamation";
    case MessageIcon::Question: return "question";
    case MessageIcon::Information: return "information";
  }
  return "exclamation";
}

const char* ButtonsName(MessageButtons buttons) {
  return buttons == MessageButtons::OkCancel ? "okcancel" : "ok";
}

}  // namespace orvik::shell
