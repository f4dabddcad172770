// platform/windows/outlook/HelperLibrary.cpp: a body text and a user's name through ZQCDO.
#include "platform/windows/outlook/HelperLibrary.h"

#include "values/Error.h"

namespace velkor {

/// No object where it is not installed, or not for programs of this kind.
AutomationObject HelperLibrary::Open(Helper& helper) {
  AutomationObject object(program_, helper.kind, nullptr);
  if (helper.absent) return object;
  try {
    return {program_, helper.kind, open_(program_, helper.programId)};
  } catch (const Error&) {
    helper.absent = true;
    return object;
  }
}

std::optional<std::string> HelperLibrary::Body(IDispatch* item) {
  const AutomationObject helper = Open(item_);
  if (!helper) return std::nullopt;
  helper.PutReference("item", item);
  return helper.GetText("Body");
}

std::optional<std::string> HelperLibrary::CurrentUserName() {
  const AutomationObject helper = Open(user_);
  if (!helper) return std::nullopt;
  std::optional<std::string> name;
  try {
    name = helper.GetText("Name");
  } catch (const Error&) {
    // The session knows the name too.
  }
  try {
    helper.Call("Cleanup");
  } catch (const Error&) {
    // The name was read.
  }
  return name;
}

}  // namespace velkor
