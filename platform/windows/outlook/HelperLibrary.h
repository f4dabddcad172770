// platform/windows/outlook/HelperLibrary.h: the library ZQCDO, which reads without the program's
// questions.
#pragma once

#include <optional>
#include <string>

#include "platform/windows/com/Automation.h"

namespace velkor {

/// Its two objects, each of which may be absent; asked for once.
class HelperLibrary {
 public:
  /// Both outlive this.
  /// @param program  whose items it reads, so that its calls are that program's
  HelperLibrary(AutomationProgram& program, const OpenObject& open)
      : program_(program), open_(open) {}

  /// The plain text of an item; none where the object is not installed. Throws Error as a call
  /// does.
  std::optional<std::string> Body(IDispatch* item);
  /// None where the object is not installed or fails.
  std::optional<std::string> CurrentUserName();

 private:
  struct Helper {
    std::string programId;
    AutomationClass kind;
    bool absent = false;
  };

  AutomationObject Open(Helper& helper);

  AutomationProgram& program_;
  const OpenObject& open_;
  Helper item_{"ZQCDO.zqAppointmentItem", AutomationClass("zqAppointmentItem")};
  Helper user_{"ZQCDO.zqCurrentUser", AutomationClass("zqCurrentUser")};
};

}  // namespace velkor
