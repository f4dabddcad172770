// model/ItemArrivals.h: takes what the folder's item events tell, together and one after the other.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/Outlook.h"
#include "platform/Platform.h"
#include "values/Error.h"

namespace velkor {

class BackgroundRefresh;
class Timer;
struct CalEvent;
struct EventView;

/// Notes what others change in the calendar and, when tmrItems ticks, brings all of it into the
/// view: one reading of the calendar, one layout, one rewrite of the cache file, one message at
/// most. Nothing is brought in while that goes on, or while a refresh is started or cancelled.
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

  /// A tick of tmrItems: takes what waits, or leaves it for the next tick.
  void Take();
  /// Drops what waits: the folder is let go.
  void Forget() noexcept;

 private:
  /// An appointment that was added or changed, as its occurrences are found again.
  struct Sought {
    std::string entryId;
    std::string subject;
    bool recurring = false;
    /// Its events in the view make way.
    bool replace = false;
  };
  /// What waits.
  struct Batch {
    std::vector<Sought> appointments;
    std::unordered_map<std::string, std::size_t> placeOf;
    /// Removed, or more than are read one by one.
    bool needsRefresh = false;
    bool colourRecords = false;
    std::optional<Error> failure;

    bool IsEmpty() const {
      return appointments.empty() && !needsRefresh && !colourRecords && !failure;
    }
  };
  struct Gathered;
  /// What is left to do once a batch is in the view.
  struct Outcome {
    std::optional<Error> failure;
    /// The user was told of a failure on the way.
    bool told = false;
    bool forces = false;
    bool follows = false;
  };

  void Note(OutlookItem& item, bool replace);
  void Keep(Sought sought);
  static std::optional<Sought> SoughtBy(OutlookItem& item);
  Outcome Bring(const Batch& batch);
  void BringAppointments(const Batch& batch, Outcome& outcome);
  std::unique_ptr<OutlookItems> ItemsOf(const Batch& batch);
  void Gather(const Batch& batch, Gathered& gathered);
  bool Show(const Batch& batch, Gathered& gathered, bool isWhole);

  const EventView& view_;
  BackgroundRefresh& refresh_;
  const Platform& platform_;
  Timer& tmrItems_;
  const std::string& appointmentForm_;
  std::function<OutlookFolder&()> folder_;
  Batch waiting_;
  bool taking_ = false;
  /// The last batch failed, which the user was told.
  bool told_ = false;
};

}  // namespace velkor
