// model/AppointmentCommands.cpp: opens, deletes and creates appointments from the view.
#include "model/AppointmentCommands.h"

#include <optional>
#include <utility>

#include "model/AppointmentOf.h"
#include "model/BackgroundRefresh.h"
#include "model/CalendarAccess.h"
#include "model/EventCollection.h"
#include "model/EventView.h"
#include "model/Guard.h"
#include "platform/MessageBoxes.h"

namespace velkor {
namespace {

constexpr std::string_view NotLocated = "Unable to locate event, please refresh and try again.";
constexpr std::string_view NoAppointment = "Nothing for ai";

/// Another value after every change of an item; none for an item that is gone. The count itself
/// and not Date's order tells: two changes may fall into one second.
std::optional<double> MarkerOf(OutlookItem& item) {
  try {
    return item.LastModificationTime().Days();
  } catch (const Error&) {
    return std::nullopt;
  }
}

/// Whether the appointment that an item stands for is a recurring one.
bool StandsForSeries(OutlookItem& item) {
  if (item.Class() == outlook::ClassAppointment) return item.IsRecurring();
  if (!outlook::IsMeetingClass(item.Class())) return false;
  const auto appointment = item.GetAssociatedAppointment(false);
  return appointment && appointment->IsRecurring();
}

/// A new item has its identifier once it is saved; one that was deleted again may have none.
bool IsSaved(OutlookItem& item) {
  try {
    return !item.EntryID().empty();
  } catch (const Error&) {
    return false;
  }
}

bool CoversWholeDays(Date start, Date end) {
  return start < end && start == start.Midnight() && end == end.Midnight();
}

}  // namespace

AppointmentCommands::AppointmentCommands(const EventView& view, BackgroundRefresh& refresh,
                                         CalendarAccess& calendar, const Platform& platform,
                                         const std::string& appointmentForm)
    : view_(view),
      refresh_(refresh),
      calendar_(calendar),
      platform_(platform),
      appointmentForm_(appointmentForm) {}

std::unique_ptr<OutlookItem> AppointmentCommands::Locate(std::string_view key) {
  const auto index = view_.events.Find(key, platform_.locale);
  if (index) {
    try {
      return calendar_.Item(view_.events[*index].EventID);
    } catch (const Error&) {
      // Deleted or moved meanwhile, or out of reach: told below.
    }
  }
  Tell(platform_.messages, NotLocated);
  return nullptr;
}

std::unique_ptr<OutlookItem> AppointmentCommands::Appointment(std::unique_ptr<OutlookItem> item) {
  const int itemClass = item->Class();
  auto appointment = AppointmentOf(std::move(item));
  if (!appointment) {
    Tell(platform_.messages, outlook::IsMeetingClass(itemClass) ? NoAppointment : NotLocated);
  }
  return appointment;
}

void AppointmentCommands::Edit(std::string_view key) {
  if (key.empty()) return;
  Guard(platform_.messages, "Error opening appointment ", [&] {
    auto item = Locate(key);
    if (!item) return;
    const auto appointment = Appointment(std::move(item));
    if (!appointment) return;
    const std::optional<double> before = MarkerOf(*appointment);
    appointment->Display(true);
    // An appointment that was deleted in its inspector has no marker any more.
    if (MarkerOf(*appointment) == before) return;
    view_.reload();
    refresh_.StartRefresh(true);
  });
}

bool AppointmentCommands::ConfirmsDelete(OutlookItem& item) {
  std::string question = "Delete this appointment " + item.Subject() + "?";
  if (StandsForSeries(item)) question += " All its occurrences will be deleted.";
  const MessageAnswer answer = platform_.messages.Show({.text = std::move(question),
                                                        .title = {},
                                                        .buttons = MessageButtons::YesNo,
                                                        .icon = MessageIcon::Question,
                                                        .defaultButton = 2});
  return answer == MessageAnswer::Yes;
}

void AppointmentCommands::Delete(std::string_view key) {
  if (key.empty()) return;
  // The caller's text may change while the question is asked: the pointer moves on.
  const std::string selected(key);
  Guard(platform_.messages, "Error deleting appointment ", [&] {
    auto item = Locate(selected);
    if (!item || !ConfirmsDelete(*item)) return;
    // The events' identifier is the item's; that of a meeting item's appointment is another.
    const std::string eventId = item->EntryID();
    const auto appointment = Appointment(std::move(item));
    if (!appointment) return;
    const bool recurring = appointment->IsRecurring();
    // First in the calendar, which may refuse: view and cache file then stay as they are.
    appointment->Delete();
    view_.change([&](EventCollection& events) {
      if (recurring) {
        events.RemoveAppointment(eventId);
      } else {
        events.Remove(selected, platform_.locale);
      }
    });
    view_.rewriteCache();
  });
}

bool AppointmentCommands::New(Date start, Date end) {
  bool made = false;
  Guard(platform_.messages, "Error creating appointment ", [&] {
    if (!start.IsValid() || !end.IsValid()) {
      throw Error(errors::Overflow, "The appointment would end after the year 9999");
    }
    const auto item = calendar_.NewItem(appointmentForm_);
    item->SetStart(start);
    item->SetEnd(end);
    if (CoversWholeDays(start, end)) item->SetAllDayEvent(true);
    item->Display(true);
    made = IsSaved(*item);
  });
  return made;
}

}  // namespace velkor
