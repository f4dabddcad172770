// model/CalendarAccess.cpp: the calendar folder on show, and what its item events do to the view.
#include "model/CalendarAccess.h"

#include <optional>
#include <utility>
#include <vector>

#include "model/AppointmentOf.h"
#include "model/ColourRecord.h"
#include "model/EventCollection.h"
#include "model/EventFields.h"
#include "model/EventView.h"
#include "model/Guard.h"
#include "model/Planner.h"
#include "platform/System.h"
#include "support/values/Error.h"
#include "support/values/Text.h"
#include "view/span/CategoryFilter.h"
#include "view/span/Globals.h"

namespace velkor {
namespace {

constexpr std::string_view AddingFailed = "Error adding appointment ";

/// What of an appointment finds it again among the items of its folder.
struct Sought {
  std::string entryId;
  std::string subject;
  bool recurring = false;
};

/// The appointment that an added or changed item stands for; none for one that never enters the
/// view: a meeting item without an appointment, or a colour record.
std::optional<Sought> SoughtBy(OutlookItem& item) {
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

/// The items of the span with an appointment's subject, its occurrences each by itself.
std::unique_ptr<OutlookItems> ItemsOf(const Sought& sought, OutlookFolder& folder,
                                      const DisplaySpan& span, LocaleApi& locale) {
  auto items = folder.Items()->Restrict(Globals::ViewRestriction(span, locale) +
                                        " And [Subject]='" + sought.subject + "'");
  items->Sort("[Start]");
  if (sought.recurring) items->IncludeRecurrences(true);
  return items;
}

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

struct CalendarAccess::Gathered {
  std::optional<Sought> sought;
  /// Its occurrences that the view shows.
  std::vector<CalEvent> events;
  /// One is not among them, since the filter or its lack of a category hides it.
  bool leftOut = false;
};

CalendarAccess::CalendarAccess(EventView& view, Planner& planner, const Platform& platform,
                               const std::string& appointmentForm)
    : view_(view), planner_(planner), platform_(platform), appointmentForm_(appointmentForm) {}

CalendarAccess::~CalendarAccess() {
  Release();
}

void CalendarAccess::Open() {
  session_ = platform_.outlook.GetNamespace("MAPI");
  if (!session_) throw Error(errors::CalendarFailed, "There is no session");
}

std::unique_ptr<OutlookFolder> CalendarAccess::FindFolder(std::string_view folder) {
  if (folder.empty() || folder == "Calendar") {
    return session_->GetDefaultFolder(outlook::FolderCalendar);
  }
  std::unique_ptr<OutlookFolder> found;
  const bool whole = ForEachPiece(folder, "\\", [&](std::string_view name) {
    found = found ? found->Folder(name) : session_->Folder(name);
    return found != nullptr;
  });
  if (!whole) return nullptr;
  if (found->DefaultItemType() != outlook::ItemTypeAppointment) {
    return session_->GetDefaultFolder(outlook::FolderCalendar);
  }
  return found;
}

bool CalendarAccess::ResolveFolder(std::string_view folder) {
  ReleaseFolder();
  try {
    const auto found = FindFolder(folder);
    if (!found) return false;
    entryId_ = found->EntryID();
    storeId_ = found->StoreID();
    folder_ = session_->GetFolderFromID(entryId_, storeId_);
  } catch (const Error&) {
    // To the caller a folder that is refused is as little a folder as one that is not there.
    folder_.reset();
  }
  if (!folder_) {
    ReleaseFolder();
    return false;
  }
  m_olItems = folder_->Items();
  m_olItems->Connect(this);
  return true;
}

std::unique_ptr<OutlookFolder> CalendarAccess::ReopenFolder() {
  const auto session = platform_.outlook.GetNamespace("MAPI");
  auto folder = session ? session->GetFolderFromID(entryId_, storeId_) : nullptr;
  if (!folder) throw Error(errors::CalendarFailed, "The calendar folder is not there any more");
  return folder;
}

void CalendarAccess::CheckFolder() const {
  if (!folder_) throw Error(errors::CalendarFailed, "There is no calendar folder");
}

std::unique_ptr<OutlookItem> CalendarAccess::Item(std::string_view entryId) {
  CheckFolder();
  auto item = session_->GetItemFromID(entryId, storeId_);
  if (!item) throw Error(errors::CalendarFailed, "The appointment is not there any more");
  return item;
}

std::unique_ptr<OutlookItem> CalendarAccess::NewItem(std::string_view messageClass) {
  CheckFolder();
  return folder_->Items()->Add(messageClass);
}

const std::string& CalendarAccess::CurrentUserName() {
  if (!userName_) {
    try {
      userName_ = platform_.outlook.CurrentUserName();
    } catch (const Error&) {
      // Who was refused once would be asked for every year, and refuse again.
      userName_ = platform_.environment.Variable("USERNAME");
    }
  }
  return *userName_;
}

void CalendarAccess::ReleaseFolder() noexcept {
  try {
    if (m_olItems) m_olItems->Connect(nullptr);
  } catch (const Error&) {
    // What is let go need not agree.
  }
  m_olItems.reset();
  folder_.reset();
  entryId_.clear();
  storeId_.clear();
}

void CalendarAccess::Release() noexcept {
  ReleaseFolder();
  session_.reset();
}

void CalendarAccess::ItemAdd(OutlookItem& item) {
  TakeItem(item, false);
}

void CalendarAccess::ItemChange(OutlookItem& item) {
  TakeItem(item, true);
}

void CalendarAccess::ItemRemove() {
  planner_.StartRefresh(true);
}

void CalendarAccess::TakeItem(OutlookItem& item, bool replace) {
  Gathered gathered;
  const DisplaySpan span = view_.Fields().span;
  bool isColourRecord = false;
  const auto failure = Guard(platform_.messages, AddingFailed, [&] {
    isColourRecord = colour_record::IsSubject(item.Subject());
    if (isColourRecord) return;
    // A meeting item has a message class of its own, so it comes in only where the property names
    // that class; otherwise its appointment raises events itself.
    if (item.MessageClass() != appointmentForm_) return;
    gathered.sought = SoughtBy(item);
    if (gathered.sought) Gather(gathered);
  });
  if (isColourRecord) return view_.ReloadCategories();
  if (!gathered.sought) return;
  // The message let another year in: there these events have no place.
  if (view_.Fields().span != span) {
    planner_.StartRefresh(true);
    return;
  }
  Show(gathered, replace && !failure);
  if (failure) {
    // A refresh asks for no subject: it brings what the filter text could not name.
    planner_.StartRefresh(true);
  } else {
    view_.RewriteCache();
    // The cache file lacks what is hidden until a refresh brings it.
    if (gathered.leftOut) planner_.StartRefresh(true);
  }
}

/// Collects the occurrences of an appointment; those before an Error stay.
void CalendarAccess::Gather(Gathered& gathered) {
  const EventFields fields = view_.Fields();
  const auto items = ItemsOf(*gathered.sought, *folder_, fields.span, platform_.locale);
  for (auto item = items->GetFirst(); item; item = items->GetNext()) {
    const auto appointment = AppointmentOf(std::move(item));
    if (!appointment) continue;
    std::string entryId = appointment->EntryID();
    if (entryId != gathered.sought->entryId) continue;
    CalEvent event = EventOf(*appointment, std::move(entryId), fields);
    if (event.CatIndex == -1 || view_.Filter().IsFilteredOut(event.Categories)) {
      gathered.leftOut = true;
    } else {
      gathered.events.push_back(std::move(event));
    }
  }
}

/// What could not be read again is not taken out, and what was read is kept.
void CalendarAccess::Show(Gathered& gathered, bool replace) {
  if (!replace && gathered.events.empty()) return;
  const EventFields fields = view_.Fields();
  view_.ChangeEvents([&](EventCollection& collection) {
    if (replace) collection.RemoveAppointment(gathered.sought->entryId);
    for (CalEvent& event : gathered.events) {
      // The categories may be others than when it was read.
      fields.Derive(event);
      collection.Add(std::move(event));
    }
  });
}

}  // namespace velkor
