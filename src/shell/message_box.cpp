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
  switch (buttons) {
    case MessageButtons::Ok: return "ok";
    case MessageButtons::OkCancel: return "okcancel";
    case MessageButtons::SaveDiscardCancel: return "savediscardcancel";
  }
  return "ok";
}

}  // namespace orvik::shell
