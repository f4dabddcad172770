// calendar/EmbeddedOutlook.h: a calendar in memory that answers as Outlook's object model does.
#pragma once

#include <functional>
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
  /// Shows an item until its window is closed; Display calls it. Without one Display throws Error.
  std::function<void(OutlookItem&)> inspector = nullptr;
  /// Runs what it is given, one after the other, on the user-interface thread: how item events are
  /// delivered. Without one they come at once, after the change is complete.
  std::function<void(std::function<void()>)> post = nullptr;
  /// Local time, for the times of saving.
  std::function<Date()> clock = nullptr;
};

/// The application over one store. Store and locale outlive it. A text that is no filter, an
/// unknown identifier, an unknown kind of folder or namespace throws Error (CalendarFailed).
/// Without IncludeRecurrences a recurring item counts once, with its first occurrence's times.
/// An item object holds what is set on it until its Save, which puts just that into the item as it
/// stands in the folder by then; an item that is no longer there throws Error. Every save gives a
/// later time of modification, by a second at least. A Save without a change saves nothing.
class EmbeddedOutlook : public OutlookApplication {
 public:
  EmbeddedOutlook(CalendarStore& store, LocaleApi& locale, EmbeddedOutlookOptions options)
      : store_(store), locale_(locale), options_(std::move(options)) {}

  std::string Version() override { return options_.version; }
  std::string CurrentUserName() override { return options_.userName; }
  bool IsRunning() override { return true; }
  std::unique_ptr<OutlookNamespace> GetNamespace(std::string_view type) override;

 private:
  CalendarStore& store_;
  LocaleApi& locale_;
  EmbeddedOutlookOptions options_;
};

}  // namespace velkor
