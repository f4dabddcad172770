// platform/windows/outlook/AutomationOutlook.h: Outlook, or what answers in its place, by
// automation.
#pragma once

#include <chrono>
#include <memory>

#include "platform/Outlook.h"
#include "platform/windows/outlook/OutlookLink.h"

namespace velkor {

struct AutomationOutlookOptions {
  std::string programId = "Outlook.Application";
  /// How long a call that the program rejects is made again.
  std::chrono::milliseconds patience = std::chrono::seconds(5);
  /// Joins a running program, else starts one. Also makes the objects of ZQCDO.
  OpenObject open = JoinOrCreate;
};

/// Started when first needed, and again when the session is asked for after the program was closed.
/// Everything is called by name, so that any version serves. Item events arrive while messages are
/// processed, not in the middle of a call. On the thread that initialised COM; makes no object
/// that outlives it.
class AutomationOutlook : public OutlookApplication {
 public:
  explicit AutomationOutlook(DialogOwner& owner, AutomationOutlookOptions options = {});

  std::string Version() override;
  std::string CurrentUserName() override;
  bool IsRunning() override { return link_.program.IsListed(programId_); }
  std::unique_ptr<OutlookNamespace> GetNamespace(std::string_view type) override;

 private:
  /// What a member of the application answers; of one that was started anew if need be.
  Variant Ask(std::string_view member, AutomationObject::Arguments arguments, bool call);
  AutomationObject Session(std::string_view type);

  std::string programId_;
  OutlookLink link_;
  AutomationObject application_;
};

}  // namespace velkor
