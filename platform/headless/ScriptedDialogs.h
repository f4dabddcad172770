// platform/headless/ScriptedDialogs.h: common dialogs, input boxes and progress that a script
// answers.
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/CommonDialogs.h"
#include "platform/MessageBoxes.h"
#include "platform/Progress.h"

namespace velkor {

/// Each dialog takes the next answer of its kind; without one it is cancelled.
class ScriptedDialogs : public CommonDialogs {
 public:
  std::deque<std::string> fileNames;
  std::deque<std::optional<Colour>> colours;
  /// What was asked for, in its order.
  std::vector<FileDialog> shown;
  /// The colours that pickers began with.
  std::vector<Colour> began;
  /// Runs while any dialog is open: what arrives meanwhile.
  std::function<void()> whileOpen;

  std::string ShowOpen(const FileDialog& dialog) override { return Show(dialog); }
  std::string ShowSave(const FileDialog& dialog) override { return Show(dialog); }
  std::optional<Colour> ShowColour(Colour current) override {
    began.push_back(current);
    if (whileOpen) whileOpen();
    return Next(colours).value_or(std::nullopt);
  }

 private:
  template <typename Answer>
  static std::optional<Answer> Next(std::deque<Answer>& answers) {
    if (answers.empty()) return std::nullopt;
    std::optional<Answer> answer(std::move(answers.front()));
    answers.pop_front();
    return answer;
  }
  std::string Show(const FileDialog& dialog) {
    shown.push_back(dialog);
    if (whileOpen) whileOpen();
    return Next(fileNames).value_or(std::string());
  }
};

/// Each takes the next line; without one it is cancelled.
class ScriptedInputBoxes : public InputBoxes {
 public:
  struct Asked {
    std::string prompt;
    std::string title;
  };
  std::deque<std::string> lines;
  std::vector<Asked> asked;

  std::string Ask(const std::string& prompt, const std::string& title) override {
    asked.push_back({prompt, title});
    if (lines.empty()) return {};
    std::string line = std::move(lines.front());
    lines.pop_front();
    return line;
  }
};

class ScriptedProgress : public ProgressReports {
 public:
  struct Step {
    int done;
    int total;
    std::string text;

    friend bool operator==(const Step&, const Step&) = default;
  };
  std::vector<Step> steps;
  /// Answers a step; none lets every operation run on.
  std::function<bool(const Step&)> onStep;
  /// Reports on show.
  int open = 0;

  std::unique_ptr<ProgressReport> Begin(std::string_view /*title*/) override {
    return std::make_unique<Report>(*this);
  }

 private:
  class Report : public ProgressReport {
   public:
    explicit Report(ScriptedProgress& owner) : owner_(owner) { ++owner_.open; }
    ~Report() override { --owner_.open; }
    Report(const Report&) = delete;
    Report& operator=(const Report&) = delete;
    bool Step(int done, int total, std::string_view text) override {
      owner_.steps.push_back({done, total, std::string(text)});
      return !owner_.onStep || owner_.onStep(owner_.steps.back());
    }

   private:
    ScriptedProgress& owner_;
  };
};

}  // namespace velkor
