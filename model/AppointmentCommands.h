// model/AppointmentCommands.h: opens, deletes and creates appointments from the view.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/Platform.h"
#include "values/Date.h"

namespace velkor {

class BackgroundRefresh;
class CalendarAccess;
class OutlookItem;
struct EventView;

/// The commands of the grid's context menu that concern one appointment. Each ends in a message
/// when it fails; none throws Error.
class AppointmentCommands {
 public:
  /// All of them outlive this. `appointmentForm` is the control's property: the message class of a
  /// new appointment.
  AppointmentCommands(const EventView& view, BackgroundRefresh& refresh, CalendarAccess& calendar,
                      const Platform& platform, const std::string& appointmentForm);

  /// Shows an event's appointment in the calendar program's inspector until that is closed; when
  /// it was changed meanwhile, loads the events again and starts a forced refresh.
  /// @param key  of an event in the collection; empty does nothing
  void Edit(std::string_view key);

  /// Asks, then deletes an event's appointment with all its occurrences, and takes them out of the
  /// view and the cache file.
  /// @param key  of an event in the collection; empty does nothing
  void Delete(std::string_view key);

  /// Shows a new appointment in the inspector until that is closed: an all-day one when it begins
  /// and ends at midnight. Saved there, it comes into the view as every other added item does.
  /// @param end  exclusive
  /// @return whether it was saved
  bool New(Date start, Date end);

 private:
  /// The calendar's item behind an event; null, and told, when either is gone.
  std::unique_ptr<OutlookItem> Locate(std::string_view key);
  /// The appointment that an item stands for; null, and told, when it stands for none.
  std::unique_ptr<OutlookItem> Appointment(std::unique_ptr<OutlookItem> item);
  bool ConfirmsDelete(OutlookItem& item);

  const EventView& view_;
  BackgroundRefresh& refresh_;
  CalendarAccess& calendar_;
  const Platform platform_;
  const std::string& appointmentForm_;
};

}  // namespace velkor
