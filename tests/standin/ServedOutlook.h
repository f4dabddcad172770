// tests/standin/ServedOutlook.h: a calendar program's objects, as clients call them by name; part
// of the calendar program for tests, never shipped.
#pragma once

#include <functional>
#include <memory>

#include "platform/Outlook.h"
#include "tests/standin/ServedObject.h"

namespace velkor {

/// Gives out what an application has; outlives all that it gave.
class ServedOutlook {
 public:
  /// @param outlook  outlives this
  ServedOutlook(ServedProgram& program, OutlookApplication& outlook)
      : program_(program), outlook_(outlook), space_(outlook.GetNamespace("MAPI")) {}

  /// An object is about to be given to a client.
  std::function<void(ServedObject& object)> onGive;

  ComPtr<ServedObject> Application();
  /// The helper classes zqCurrentUser and zqAppointmentItem.
  ComPtr<ServedObject> CurrentUser();
  ComPtr<ServedObject> AppointmentItem();

 private:
  ComPtr<ServedObject> Make(const char* className) { return MakeServed(program_, className); }
  Variant Give(const ComPtr<ServedObject>& object) const;
  ComPtr<ServedObject> Namespace();
  ComPtr<ServedObject> Folder(std::shared_ptr<OutlookFolder> folder);
  ComPtr<ServedObject> Items(std::unique_ptr<OutlookItems> made, const std::string& storeId);
  /// Folders of the session or of a folder, by their names.
  template <typename Parent>
  ComPtr<ServedObject> Folders(std::shared_ptr<Parent> parent);
  Variant Item(std::unique_ptr<OutlookItem> made);

  ServedProgram& program_;
  OutlookApplication& outlook_;
  std::shared_ptr<OutlookNamespace> space_;
};

}  // namespace velkor
