// platform/headless/ScriptedMessageBoxes.h: message boxes answered in advance.
#pragma once

#include <deque>
#include <functional>
#include <vector>

#include "platform/MessageBoxes.h"

namespace velkor {

/// Reports what a script did not foresee; a test hands in one that fails the test.
using ReportFailure = std::function<void(const std::string&)>;

/// Reports by ending the program.
void EndProgram(const std::string& failure);

/// Each message must be the next expected one. A message that nobody expected, and an expected one
/// that never came, are reported at once; without a report function they end the program.
class ScriptedMessageBoxes : public MessageBoxes {
 public:
  explicit ScriptedMessageBoxes(ReportFailure report = nullptr);
  ~ScriptedMessageBoxes() override;
  ScriptedMessageBoxes(const ScriptedMessageBoxes&) = delete;
  ScriptedMessageBoxes& operator=(const ScriptedMessageBoxes&) = delete;

  /// The next message's text contains `part` and gets this answer.
  void Expect(std::string part, MessageAnswer answer = MessageAnswer::Ok);

  /// Throws std::logic_error on an unexpected message, after reporting it.
  MessageAnswer Show(const Message& message) override;

  /// Everything that was shown, the unexpected included.
  const std::vector<Message>& Shown() const { return shown_; }

 private:
  struct Expected {
    std::string part;
    MessageAnswer answer;
  };

  ReportFailure report_;
  std::deque<Expected> expected_;
  std::vector<Message> shown_;
};

}  // namespace velkor
