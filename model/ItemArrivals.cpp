// model/ItemArrivals.cpp: what a batch of item events does to the view.
#include "model/ItemArrivals.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "model/AppointmentOf.h"
#include "model/BackgroundRefresh.h"
#include "model/ColourRecord.h"
#include "model/EventCollection.h"
#include "model/EventFields.h"
#include "model/EventView.h"
#include "model/Guard.h"
#include "platform/Elements.h"
#include "span/CategoryFilter.h"
#include "span/Globals.h"
#include "values/FlagScope.h"

namespace velkor {
namespace {

constexpr std::string_view AddingFailed = "Error adding appointment ";

CalEvent EventOf(OutlookItem& appointment, std::string entryId, const EventFields& fields) {
  CalEvent event;
  event.EventID = std::move(entryId);
  event.Subject = appointment.Subject();
  event.Categories = appointment.Categories();
  event.StartDate = appointment.Start();
  event.EndDate = appointment.End();
  if (!event.StartDate.IsValid() || !event.EndDate.IsValid()) {
    throw Error(errors::TypeMismatch, "\"" + event.Subject + "\" has a date that is none");
  }
  fields.Derive(event);
  return event;
}

}  // namespace

struct ItemArrivals::Gathered {
  /// Occurrences that the view shows.
  std::vector<CalEvent> events;
  /// One is not among them, since the filter or its lack of a category hides it.
  bool leftOut = false;
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

void ItemArrivals::Forget() noexcept {
  waiting_ = {};
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
std::optional<ItemArrivals::Sought> ItemArrivals::SoughtBy(OutlookItem& item) {
  std::unique_ptr<OutlookItem> behind;
  OutlookItem* appointment = &item;
  const int itemClass = item.Class();
  if (itemClass != outlook::ClassAppointment) {
    if (outlook::IsMeetingClass(itemClass)) behind = item.GetAssociatedAppointment(false);
    appointment = behind.get();
  }
  if (appointment == nullptr) return std::nullopt;
  Sought sought{appointment->EntryID(), appointment->Subject(), appointment->IsRecurring()};
  if (colour_record::IsSubject(sought.subject)) return std::nullopt;
  return sought;
}

void ItemArrivals::Keep(Sought sought) {
  const auto [place, isNew] =
      waiting_.placeOf.try_emplace(sought.entryId, waiting_.appointments.size());
  if (isNew) {
    waiting_.appointments.push_back(std::move(sought));
    return;
  }
  Sought& before = waiting_.appointments[place->second];
  sought.replace = sought.replace || before.replace;
  before = std::move(sought);
}

void ItemArrivals::Take() {
  if (taking_ || refresh_.Busy()) return;
  tmrItems_.SetEnabled(false);
  const Batch batch = std::exchange(waiting_, {});
  if (batch.IsEmpty()) return;
  const FlagScope taking(taking_);
  Outcome outcome;
  refresh_.FollowChanges([&] {
    outcome = Bring(batch);
    if (outcome.forces || outcome.follows) refresh_.StartRefresh(outcome.forces);
    return outcome.told || outcome.failure;
  });
  const bool tells = outcome.failure && !outcome.told && !told_;
  told_ = outcome.failure.has_value();
  if (tells) TellError(platform_.messages, AddingFailed, *outcome.failure);
}

ItemArrivals::Outcome ItemArrivals::Bring(const Batch& batch) {
  Outcome outcome;
  outcome.failure = batch.failure;
  if (batch.colourRecords) outcome.told = !view_.reloadCategories();
  outcome.forces = batch.needsRefresh;
  const bool isTooMany = batch.appointments.size() >= MostAppointments;
  if (!batch.appointments.empty() && !isTooMany) BringAppointments(batch, outcome);
  // It asks for no subject and brings what could not be read by itself.
  outcome.forces = outcome.forces || isTooMany || outcome.failure;
  return outcome;
}

void ItemArrivals::BringAppointments(const Batch& batch, Outcome& outcome) {
  const DisplaySpan span = view_.fields().span;
  Gathered gathered;
  try {
    Gather(batch, gathered);
  } catch (const Error& error) {
    outcome.failure = error;
  }
  // Messages that came in meanwhile showed another year: there these events have no place.
  if (view_.fields().span != span) {
    outcome.forces = true;
    return;
  }
  const bool isWhole = !outcome.failure;
  if (Show(batch, gathered, isWhole) && isWhole) view_.rewriteCache();
  // The cache file lacks what is hidden until a refresh brings it.
  outcome.forces = outcome.forces || gathered.leftOut;
  // Occurrences that have a subject of their own were not found by that of the series.
  outcome.follows =
      std::any_of(batch.appointments.begin(), batch.appointments.end(),
                  [](const Sought& sought) { return sought.replace && sought.recurring; });
}

/// The items of the span, each occurrence by itself; of one subject where a filter text can tell.
std::unique_ptr<OutlookItems> ItemArrivals::ItemsOf(const Batch& batch) {
  const std::vector<Sought>& all = batch.appointments;
  std::string filter = Globals::ViewRestriction(view_.fields().span, platform_.locale);
  const auto subject = Globals::FilterValue(all.front().subject);
  const bool isOneSubject = std::all_of(all.begin(), all.end(), [&](const Sought& sought) {
    return sought.subject == all.front().subject;
  });
  if (subject && isOneSubject) filter += " And [Subject]=" + *subject;
  auto items = folder_().Items()->Restrict(filter);
  items->Sort("[Start]");
  const bool isAnyRecurring =
      std::any_of(all.begin(), all.end(), [](const Sought& sought) { return sought.recurring; });
  if (isAnyRecurring) items->IncludeRecurrences(true);
  return items;
}

/// Collects the occurrences of the batch's appointments; those before an Error stay.
void ItemArrivals::Gather(const Batch& batch, Gathered& gathered) {
  const EventFields fields = view_.fields();
  const auto items = ItemsOf(batch);
  for (auto item = items->GetFirst(); item; item = items->GetNext()) {
    const auto appointment = AppointmentOf(std::move(item));
    if (!appointment) continue;
    std::string entryId = appointment->EntryID();
    if (!batch.placeOf.contains(entryId)) continue;
    CalEvent event = EventOf(*appointment, std::move(entryId), fields);
    if (event.CatIndex == -1 || view_.filter.IsFilteredOut(event.Categories)) {
      gathered.leftOut = true;
    } else {
      gathered.events.push_back(std::move(event));
    }
  }
}

/// @param isWhole  everything could be read: else nothing makes way for it
/// @return whether there was anything to show or to take out
bool ItemArrivals::Show(const Batch& batch, Gathered& gathered, bool isWhole) {
  std::unordered_set<std::string> replaced;
  for (const Sought& sought : batch.appointments) {
    if (isWhole && sought.replace) replaced.insert(sought.entryId);
  }
  if (gathered.events.empty() && replaced.empty()) return false;
  const EventFields fields = view_.fields();
  view_.change([&](EventCollection& collection) {
    // The categories may be others than when it was read.
    for (CalEvent& event : gathered.events) fields.Derive(event);
    collection.Insert(std::move(gathered.events), replaced);
  });
  return true;
}

}  // namespace velkor
