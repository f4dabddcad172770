// categories/ColourStore.cpp: keeps a planner's category colours in a hidden appointment.
#include "categories/ColourStore.h"

#include <utility>

#include "categories/ColourRecords.h"
#include "model/ColourRecord.h"
#include "model/Guard.h"
#include "platform/Outlook.h"
#include "values/Text.h"

namespace velkor {
namespace {

constexpr std::string_view FetchingFailed = "Error fetching category colours ";
constexpr std::string_view SavingFailed = "Error saving category colours ";

void Create(OutlookFolder& folder, const std::string& subject, const std::string& body) {
  const auto item = folder.Items()->Add({});
  item->SetSubject(subject);
  item->SetStart(colour_record::HiddenInstant());
  item->SetEnd(colour_record::HiddenInstant());
  item->SetReminderSet(false);
  item->SetBody(body);
  item->Save();
}

}  // namespace

void ColourStore::FetchInto(FetchedColours& colours, std::string_view titleName) {
  const std::string subject = colour_record::SubjectOf(titleName);
  const auto folder = openFolder_();
  const FoundRecord record = ColourRecords(*folder, locale_).Find(titleName);
  if (record.IsWorthKeeping()) {
    ListedCategories listed = CategoriesOf(record.lines);
    colours.categories = std::move(listed.categories);
    if (listed.fault) throw Error(*listed.fault);
    if (!record.legacy) return;
    record.item->SetSubject(subject);
    record.item->Save();
    colours.done.push_back(ColourRecordChange::Migrated);
    return;
  }
  if (record.item) {
    record.item->Delete();
    colours.done.push_back(ColourRecordChange::Deleted);
  }
  // Known before it is written, so that a calendar which may only be read is planned in colours.
  colours.categories = DefaultCategories();
  Create(*folder, subject, ColourListText(colours.categories));
  colours.done.push_back(ColourRecordChange::Created);
}

FetchedColours ColourStore::Fetch(std::string_view titleName) {
  FetchedColours colours;
  colours.fault = Guard(messages_, FetchingFailed, [&] { FetchInto(colours, titleName); });
  return colours;
}

ColourStore::HeldCalendar ColourStore::Hold(std::string_view titleName) {
  HeldCalendar held;
  const auto folder = openFolder_();
  held.hold = folder->Hold();
  if (!held.hold) return held;
  const auto list = ColourRecords(*folder, locale_).FindList(titleName);
  if (list) held.record = CategoriesOf(*list);
  return held;
}

bool ColourStore::Save(std::string_view titleName, const std::vector<Category>& categories) {
  const auto failure = Guard(messages_, SavingFailed, [&] {
    const std::string subject = colour_record::SubjectOf(titleName);
    const std::string body = ColourListText(categories);
    const auto folder = openFolder_();
    const auto item = ColourRecords(*folder, locale_).FindItem(subject);
    if (!item) {
      Create(*folder, subject, body);
      return;
    }
    item->SetBody(body);
    item->Save();
  });
  return !failure;
}

std::vector<std::string> ColourStore::CollectAllLists() {
  std::string text;
  Guard(messages_, FetchingFailed, [&] {
    const auto folder = openFolder_();
    ColourRecords(*folder, locale_).AppendAllLines(text);
  });
  return Split(text, "\r\n");
}

}  // namespace velkor
