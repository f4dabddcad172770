// platform/headless/ScriptedForms.h: forms that a script drives.
#pragma once

#include <deque>
#include <functional>
#include <string>
#include <utility>

#include "platform/Forms.h"
#include "platform/headless/ScriptedMessageBoxes.h"

namespace velkor {

/// Each form must be the next expected one; its steps run, then it is closed. A form that nobody
/// expected, and an expected one that never came, are reported at once; without a report function
/// they end the program.
class ScriptedForms : public Forms {
 public:
  using Steps = std::function<void(Form&)>;

  explicit ScriptedForms(ReportFailure report = nullptr);
  ~ScriptedForms() override;
  ScriptedForms(const ScriptedForms&) = delete;
  ScriptedForms& operator=(const ScriptedForms&) = delete;

  void Expect(std::string name, Steps steps) {
    expected_.push_back({std::move(name), std::move(steps)});
  }

  /// Throws std::logic_error on an unexpected form, after reporting it.
  void ShowModal(Form& form) override;

 private:
  struct Expected {
    std::string name;
    Steps steps;
  };

  ReportFailure report_;
  std::deque<Expected> expected_;
};

}  // namespace velkor
