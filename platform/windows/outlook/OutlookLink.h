// platform/windows/outlook/OutlookLink.h: what all objects of one calendar program share.
#pragma once

#include <map>
#include <string_view>

#include "platform/windows/outlook/HelperLibrary.h"
#include "platform/windows/outlook/ItemEvents.h"

namespace velkor {

/// Outlives the objects.
class OutlookLink {
 public:
  OutlookLink(DialogOwner& owner, std::chrono::milliseconds patience, OpenObject openObject)
      : open(std::move(openObject)),
        program("Outlook", owner, patience),
        helpers(program, open),
        events(*this) {}

  /// The class of items of one OlObjectClass.
  AutomationClass& ItemClass(int number);
  /// Every class is looked up again: the program was started anew.
  void ForgetClasses();

  AutomationObject Object(AutomationClass& kind, const Variant& value) {
    return {program, kind, value.ToObject()};
  }
  /// Throws Error where `member` of `owner` answered with no object.
  AutomationObject NeedObject(AutomationClass& kind, const Variant& value,
                              const AutomationClass& owner, std::string_view member);

  OpenObject open;
  AutomationProgram program;
  AutomationClass application{"Application"};
  AutomationClass session{"NameSpace"};
  AutomationClass user{"CurrentUser"};
  AutomationClass folders{"Folders"};
  AutomationClass folder{"MAPIFolder"};
  AutomationClass items{"Items"};
  /// Knows the member that tells the items' classes apart, which all of them share.
  AutomationClass item{"Item"};
  HelperLibrary helpers;
  ItemEventQueue events;

 private:
  std::map<int, AutomationClass> itemClasses_;
};

/// Whether an Error's number says that there is no such folder or item.
bool IsNotFound(long number);

}  // namespace velkor
