#pragma once

#include <string>

namespace orvik::shell {

enum class MessageIcon { Exclamation, Question, Information };
// SaveDiscardCancel is the question before unsaved work would be dropped;
// its Save button answers Ok.
enum class MessageButtons { Ok, OkCancel, SaveDiscardCancel };
enum class MessageAnswer { Ok, Cancel, Discard };

// One modal message box as the user sees it.
struct MessageBox {
  std::string title;
  std::string text;
  MessageIcon icon = MessageIcon::Exclamation;
  MessageButtons buttons = MessageButtons::Ok;

  friend bool operator==(const MessageBox&, const MessageBox&) = default;
};

// A refusal of bad input: title "Confirmation Data", exclamation icon, OK.
inline MessageBox RefusalBox(std::string text) {
  return {"Confirmation Data", std::move(text), MessageIcon::Exclamation, MessageButtons::Ok};
}

// A notice that lets the command go on: title "Information", OK.
inline MessageBox NoticeBox(std::string text) {
  return {"Information", std::move(text), MessageIcon::Information, MessageButtons::Ok};
}

// A question (closing, exiting): title "Confirmation", question icon, OK and Cancel.
inline MessageBox QuestionBox(std::string text) {
  return {"Confirmation", std::move(text), MessageIcon::Question, MessageButtons::OkCancel};
}

const char* IconName(MessageIcon icon);        // "exclamation", "question", "information"
const char* ButtonsName(MessageButtons buttons);  // "ok", "okcancel", "savediscardcancel"

}  // namespace orvik::shell
