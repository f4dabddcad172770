// hosts/windows/TryOut/DialogAnswers.h: answers the dialogs that a script expects, while the
// script's own thread sits in them.
#pragma once

#include <deque>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "hosts/windows/TryOut/DialogSteps.h"

namespace velkor {

/// Works on a thread of its own, from the first expectation to the last, one after the other.
/// A dialog that nobody expected is told as a failure and closed after a while, so that a script
/// never hangs in one.
class DialogAnswers {
 public:
  /// As a title: any dialog, and the menu that popped up.
  static constexpr std::string_view AnyDialog = "";
  static constexpr std::string_view PopupMenu = "menu";

  DialogAnswers();
  ~DialogAnswers() = default;
  DialogAnswers(const DialogAnswers&) = delete;
  DialogAnswers& operator=(const DialogAnswers&) = delete;

  /// The next dialog with this title is answered by these steps (see ParseDialogSteps). Throws
  /// Error for a step that is none.
  /// @param milliseconds  how long to wait for it, once those before it are done
  void Expect(std::string title, std::string_view steps, int milliseconds);
  /// Whether every dialog came and was answered, or was given up.
  bool IsDone() const;
  /// "Title: texts" of each dialog that was met, in that order.
  std::vector<std::string> Met() const;
  /// What went wrong since the last call.
  std::vector<std::string> TakeFailures();

 private:
  struct Expectation {
    std::string title;
    std::vector<DialogStep> steps;
    int milliseconds = 0;
  };

  void Work(const std::stop_token& stop);
  void Meet(const Expectation& expected, const std::stop_token& stop);
  void CloseUnexpected();
  void Note(HWND dialog);
  void Fail(std::string failure);

  mutable std::mutex mutex_;
  std::deque<Expectation> expected_;
  std::vector<std::string> met_;
  std::vector<std::string> failures_;
  HWND stray_ = nullptr;
  ULONGLONG straySince_ = 0;
  std::jthread thread_;
};

}  // namespace velkor
