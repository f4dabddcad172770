// platform/windows/HelperLibrary.h: the library ZQCDO, which reads without the program's questions.
#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "platform/windows/Automation.h"

namespace velkor {

/// Its two objects, each of which may be absent; asked for once.
class HelperLibrary {
 public:
  /// @param open  outlives this
  HelperLibrary(DialogOwner& owner, std::chrono::milliseconds patience, const OpenObject& open)
      : open_(open), program_("ZQCDO", owner, patience) {}

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

  const OpenObject& open_;
  AutomationProgram program_;
  Helper item_{"ZQCDO.zqAppointmentItem", AutomationClass("zqAppointmentItem")};
  Helper user_{"ZQCDO.zqCurrentUser", AutomationClass("zqCurrentUser")};
};

}  // namespace velkor
