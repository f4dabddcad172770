// model/ItemArrivals.cpp: what a batch of item events does to the view.
#include "model/ItemArrivals.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "model/BackgroundRefresh.h"
#include "model/ColourRecord.h"
#include "model/EventCollection.h"
#include "model/EventFields.h"
#include "model/EventView.h"
#include "model/Guard.h"
#include "platform/Elements.h"
#include "span/CategoryFilter.h"
#include "values/FlagScope.h"

namespace velkor {
namespace {

constexpr std::string_view AddingFailed = "Error adding appointment ";

}  // namespace

struct ItemArrivals::Work {
  explicit Work(Batch all) : batch(std::move(all)), failure(batch.failure) {}

  Batch batch;
  /// Of the appointments; none where a refresh brings them.
  std::optional<ItemReading> reading;
  DisplaySpan span;
  std::optional<Error> failure;
  /// The user was told of a failure on the way.
  bool told = false;
};

ItemArrivals::ItemArrivals(const EventView& view, BackgroundRefresh& refresh,
                           const Platform& platform, Timer& tmrItems,
                           const std::string& appointmentForm,
                           std::function<OutlookFolder&()> folder)
    : view_(view),
      refresh_(refresh),
      platform_(platform),
      tmrItems_(tmrItems),
      appointmentForm_(appointmentForm),
      folder_(std::move(folder)) {}

void ItemArrivals::ItemRemove() {
  waiting_.needsRefresh = true;
  tmrItems_.SetEnabled(true);
}

void ItemArrivals::Missed() {
  work_.reset();
  waiting_.needsRefresh = waiting_.colourRecords = true;
  tmrItems_.SetEnabled(true);
}

void ItemArrivals::Forget() noexcept {
  waiting_ = {};
  work_.reset();
  tmrItems_.SetEnabled(false);
}

void ItemArrivals::Note(OutlookItem& item, bool replace) {
  tmrItems_.SetEnabled(true);
  if (waiting_.appointments.size() >= MostAppointments) {
    waiting_.needsRefresh = waiting_.colourRecords = true;
    return;
  }
  try {
    if (colour_record::IsSubject(item.Subject())) {
      waiting_.colourRecords = true;
      return;
    }
    // A meeting item has a message class of its own, so it comes in only where the property names
    // that class; otherwise its appointment raises events itself.
    if (item.MessageClass() != appointmentForm_) return;
    if (auto sought = SoughtBy(item)) {
      sought->replace = replace;
      Keep(std::move(*sought));
    }
  } catch (const Error& error) {
    waiting_.failure = error;
  }
}

/// The appointment that an added or changed item stands for; none for one that never enters the
/// view: a meeting item without an appointment, or a colour record.
std::optional<SoughtAppointment> ItemArrivals::SoughtBy(OutlookItem& item) {
  std::unique_ptr<OutlookItem> behind;
  OutlookItem* appointment = &item;
  const int itemClass = item.Class();
  if (itemClass != outlook::ClassAppointment) {
    if (outlook::IsMeetingClass(itemClass)) behind = item.GetAssociatedAppointment(false);
    appointment = behind.get();
  }
  if (appointment == nullptr) return std::nullopt;
  SoughtAppointment sought{appointment->EntryID(), appointment->Subject(),
                           appointment->IsRecurring()};
  if (colour_record::IsSubject(sought.subject)) return std::nullopt;
  if (!sought.recurring) {
    sought.start = appointment->Start();
    sought.end = appointment->End();
  }
  return sought;
}

void ItemArrivals::Keep(SoughtAppointment sought) {
  const auto [place, isNew] =
      waiting_.placeOf.try_emplace(sought.entryId, waiting_.appointments.size());
  if (isNew) {
    waiting_.appointments.push_back(std::move(sought));
    return;
  }
  SoughtAppointment& before = waiting_.appointments[place->second];
  sought.replace = sought.replace || before.replace;
  before = std::move(sought);
}

void ItemArrivals::Take() {
  if (taking_ || refresh_.Busy()) return;
  tmrItems_.SetEnabled(false);
  if (waiting_.IsEmpty() && !work_) return;
  const FlagScope taking(taking_);
  std::optional<Error> untold;
  refresh_.FollowChanges([&] {
    const bool told = Begin();
    const std::shared_ptr<Work> work = work_;
    return (work && Bring(*work, untold)) || told;
  });
  if (work_ || !waiting_.IsEmpty()) tmrItems_.SetEnabled(true);
  if (untold) TellError(platform_.messages, AddingFailed, *untold);
}

/// Takes up what waits, unless something is being brought in; colours at once.
/// @return whether the user was told of trouble
bool ItemArrivals::Begin() {
  bool told = false;
  if (std::exchange(waiting_.colourRecords, false)) told = !view_.reloadCategories();
  if (work_) return told;
  work_ = std::make_shared<Work>(std::exchange(waiting_, {}));
  work_->told = told;
  work_->span = view_.fields().span;
  const auto& sought = work_->batch.appointments;
  if (!sought.empty() && sought.size() < MostAppointments) {
    work_->reading.emplace(sought, work_->span, platform_.locale);
  }
  return told;
}

/// @param untold  takes what the user is to be told
/// @return whether the user was or is told of trouble
bool ItemArrivals::Bring(Work& work, std::optional<Error>& untold) {
  if (work.reading && ReadOn(work)) return false;
  // The folder was let go while it was read.
  if (work_.get() != &work) return false;
  work_.reset();
  const auto& sought = work.batch.appointments;
  // A refresh asks for no subject, and brings what could not be read by itself, what is hidden and
  // what came while another year was on show: there these events have no place.
  bool forces = work.batch.needsRefresh || work.failure || (!sought.empty() && !work.reading);
  bool follows = false;
  if (work.reading && view_.fields().span != work.span) {
    forces = true;
  } else if (work.reading) {
    forces = Show(work) || forces;
    // Occurrences that have a subject of their own were not found by that of the series.
    follows = std::any_of(sought.begin(), sought.end(), [](const SoughtAppointment& each) {
      return each.replace && each.recurring;
    });
  }
  if (forces || follows) refresh_.StartRefresh(forces);
  if (!work.told && !told_) untold = work.failure;
  told_ = work.failure.has_value();
  return work.told || work.failure;
}

/// @return false when all is read, or no more can be
bool ItemArrivals::ReadOn(Work& work) {
  try {
    return work.reading->ReadOn(folder_());
  } catch (const Error& error) {
    work.failure = error;
    return false;
  }
}

/// Puts what was read in place of what it replaces, which stays where not all could be read.
/// @return whether the filter or the lack of a category hides some of it, which the cache file
///         lacks until a refresh brings it
bool ItemArrivals::Show(Work& work) {
  std::unordered_set<std::string> replaced;
  for (const SoughtAppointment& sought : work.batch.appointments) {
    if (!work.failure && sought.replace) replaced.insert(sought.entryId);
  }
  const EventFields fields = view_.fields();
  std::vector<CalEvent>& events = work.reading->Events();
  for (CalEvent& event : events) fields.Derive(event);
  const std::size_t hidden = std::erase_if(events, [&](const CalEvent& event) {
    return event.CatIndex == -1 || view_.filter.IsFilteredOut(event.Categories);
  });
  if (!events.empty() || !replaced.empty()) {
    view_.change(
        [&](EventCollection& collection) { collection.Insert(std::move(events), replaced); });
    if (!work.failure) view_.rewriteCache();
  }
  return hidden > 0;
}

}  // namespace velkor
