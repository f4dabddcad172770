// calendar/EmbeddedOutlook.h: a calendar in memory that answers as Outlook's object model does.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "calendar/CalendarStore.h"
#include "platform/LocaleApi.h"
#include "platform/Outlook.h"

namespace velkor {

struct EmbeddedOutlookOptions {
  std::string userName;
  /// The user's list separator; category names are joined by it and one blank.
  std::string listSeparator = ",";
  std::string version = "11.0";
};

/// The application over one store. Store and locale outlive it. A text that is no filter, an
/// unknown identifier, an unknown kind of folder or namespace throws Error (CalendarFailed).
/// Without IncludeRecurrences a recurring item counts once, with its first occurrence's times.
class EmbeddedOutlook : public OutlookApplication {
 public:
  EmbeddedOutlook(CalendarStore& store, LocaleApi& locale, EmbeddedOutlookOptions options)
      : store_(store), locale_(locale), options_(std::move(options)) {}

  std::string Version() override { return options_.version; }
  std::string CurrentUserName() override { return options_.userName; }
  std::unique_ptr<OutlookNamespace> GetNamespace(std::string_view type) override;

 private:
  CalendarStore& store_;
  LocaleApi& locale_;
  EmbeddedOutlookOptions options_;
};

}  // namespace velkor
