// model/ItemReading.h: reads the occurrences of appointments that were added or changed, a few
// items at a time.
#pragma once

#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

#include "model/CalEvent.h"
#include "platform/Outlook.h"
#include "span/DisplaySpan.h"
#include "values/Date.h"

namespace velkor {

class LocaleApi;

/// An appointment that was added or changed, as its occurrences are found again.
struct SoughtAppointment {
  std::string entryId;
  std::string subject;
  bool recurring = false;
  /// Its events in the view make way.
  bool replace = false;
  /// Of one that does not recur.
  Date start{};
  Date end{};
};

/// All of one subject are fetched once: those that recur from the whole span, others from their own
/// days, so that no more of a calendar is read than what has changed in it.
class ItemReading {
 public:
  /// @param sought  those whose occurrences within the span are wanted
  ItemReading(const std::vector<SoughtAppointment>& sought, const DisplaySpan& span,
              LocaleApi& locale);

  /// Reads some more, so little that messages need not wait for long. Throws Error; what was read
  /// before stays.
  /// @return false at the end
  bool ReadOn(OutlookFolder& folder);
  /// What was read until now, without derived fields.
  std::vector<CalEvent>& Events() { return events_; }

 private:
  struct Fetch {
    std::string filter;
    bool recurring = false;
    /// Of the first day and the last one that it covers.
    Date first;
    Date last;
  };

  void Take(std::unique_ptr<OutlookItem> item);

  std::unordered_set<std::string> wanted_;
  /// Still to come.
  std::vector<Fetch> fetches_;
  /// Of the fetch that is under way, which has given its first item.
  std::unique_ptr<OutlookItems> items_;
  std::vector<CalEvent> events_;
};

}  // namespace velkor
