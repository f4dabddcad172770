// platform/windows/outlook/AutomationOutlook.cpp: the application, its session and its user.
#include "platform/windows/outlook/AutomationOutlook.h"

#include "platform/windows/outlook/AutomationFolders.h"
#include "values/Error.h"

namespace velkor {

AutomationOutlook::AutomationOutlook(DialogOwner& owner, AutomationOutlookOptions options)
    : programId_(std::move(options.programId)),
      link_(owner, options.patience, std::move(options.open)),
      application_(link_.program, link_.application, nullptr) {}

Variant AutomationOutlook::Ask(std::string_view member, AutomationObject::Arguments arguments,
                               bool call) {
  const bool started = !application_;
  if (started) {
    application_ = {link_.program, link_.application, link_.open(link_.program, programId_)};
  }
  try {
    return call ? application_.Call(member, arguments) : application_.Get(member, arguments);
  } catch (const Error& error) {
    if (started || !IsDisconnected(error.Number())) throw;
  }
  application_ = {link_.program, link_.application, nullptr};
  link_.ForgetClasses();
  return Ask(member, arguments, call);
}

std::string AutomationOutlook::Version() {
  const Variant version = Ask("Version", {}, false);
  return application_.Converted("Version", version, &Variant::ToText);
}

AutomationObject AutomationOutlook::Session(std::string_view type) {
  return link_.NeedObject(link_.session, Ask("GetNamespace", {Variant(type)}, true),
                          link_.application, "GetNamespace");
}

std::unique_ptr<OutlookNamespace> AutomationOutlook::GetNamespace(std::string_view type) {
  return std::make_unique<AutomationNamespace>(link_, Session(type));
}

std::string AutomationOutlook::CurrentUserName() {
  if (const auto name = link_.helpers.CurrentUserName(); name && !name->empty()) return *name;
  const AutomationObject user = link_.NeedObject(link_.user, Session("MAPI").Get("CurrentUser"),
                                                 link_.session, "CurrentUser");
  return user.GetText("Name");
}

}  // namespace velkor
