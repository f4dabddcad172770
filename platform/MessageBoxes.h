// platform/MessageBoxes.h: message boxes and input boxes.
#pragma once

#include <string>

namespace velkor {

enum class MessageButtons { Ok, OkCancel, RetryCancel, YesNo, YesNoCancel };
enum class MessageIcon { None, Stop, Question, Exclamation, Information };
enum class MessageAnswer { Ok, Cancel, Abort, Retry, Ignore, Yes, No };

/// One message; an empty title lets the face put the product's name.
struct Message {
  std::string text;
  std::string title;
  MessageButtons buttons = MessageButtons::Ok;
  MessageIcon icon = MessageIcon::None;
  /// Counted from 1.
  int defaultButton = 1;
};

class MessageBoxes {
 public:
  virtual ~MessageBoxes() = default;
  /// Shows a message and waits for its answer.
  virtual MessageAnswer Show(const Message& message) = 0;
};

class InputBoxes {
 public:
  virtual ~InputBoxes() = default;
  /// Asks for a line of text and waits for it; empty when the user cancels.
  virtual std::string Ask(const std::string& prompt, const std::string& title) = 0;
};

}  // namespace velkor
