// model/ItemArrivals.h: takes what the folder's item events tell, together and one after the other.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "model/ItemReading.h"
#include "platform/Outlook.h"
#include "platform/Platform.h"
#include "values/Error.h"

namespace velkor {

class BackgroundRefresh;
class Timer;
struct EventView;

/// Notes what others change in the calendar and, when tmrItems ticks, brings all of it into the
/// view: one reading of the calendar for each subject, one layout, one rewrite of the cache file,
/// one message at most. What takes long to read is read over several ticks. Nothing is brought in
/// while that goes on, or while a refresh is started or cancelled.
class ItemArrivals : public OutlookItemEvents {
 public:
  /// Of more appointments none is read by itself: a refresh brings them all.
  static constexpr std::size_t MostAppointments = 200;

  /// All of them outlive this. `appointmentForm` is the control's property: the message class that
  /// an item must have, letter for letter, to reach the view. `folder` gives the folder on show
  /// while there is one.
  ItemArrivals(const EventView& view, BackgroundRefresh& refresh, const Platform& platform,
               Timer& tmrItems, const std::string& appointmentForm,
               std::function<OutlookFolder&()> folder);

  void ItemAdd(OutlookItem& item) override { Note(item, false); }
  void ItemChange(OutlookItem& item) override { Note(item, true); }
  void ItemRemove() override;

  /// A tick of tmrItems: takes what waits, or leaves it, or the rest of it, for the next tick.
  void Take();
  /// Nothing was told for a while: anything may have changed.
  void Missed();
  /// What waited is being brought in.
  bool IsTaking() const { return taking_; }
  /// Drops what waits: the folder is let go.
  void Forget() noexcept;

 private:
  /// What waits.
  struct Batch {
    std::vector<SoughtAppointment> appointments;
    std::unordered_map<std::string, std::size_t> placeOf;
    /// Removed, missed, or more than are read one by one.
    bool needsRefresh = false;
    bool colourRecords = false;
    std::optional<Error> failure;

    bool IsEmpty() const {
      return appointments.empty() && !needsRefresh && !colourRecords && !failure;
    }
  };
  /// A batch that is being brought in, over several ticks where it takes long.
  struct Work;

  void Note(OutlookItem& item, bool replace);
  void Keep(SoughtAppointment sought);
  static std::optional<SoughtAppointment> SoughtBy(OutlookItem& item);
  bool Begin();
  bool Bring(Work& work, std::optional<Error>& untold);
  bool ReadOn(Work& work);
  bool Show(Work& work);

  const EventView& view_;
  BackgroundRefresh& refresh_;
  const Platform& platform_;
  Timer& tmrItems_;
  const std::string& appointmentForm_;
  std::function<OutlookFolder&()> folder_;
  Batch waiting_;
  /// Shared, as what is called for it may drop it.
  std::shared_ptr<Work> work_;
  bool taking_ = false;
  /// The last batch failed, which the user was told.
  bool told_ = false;
};

}  // namespace velkor
