// categories/ColourRecords.cpp: finds the hidden appointments that hold category colours.
#include "categories/ColourRecords.h"

#include <utility>

#include "categories/ColourList.h"
#include "model/ColourRecord.h"
#include "platform/LocaleApi.h"
#include "span/Globals.h"
#include "values/Text.h"

namespace velkor {
namespace {

// Lines that a list needs to be kept, the header among them.
constexpr std::size_t LeastLines = 2;
constexpr std::size_t LeastLegacyLines = 3;

// The hidden instant lies between these two days.
std::string Since(LocaleApi& locale) {
  return "[Start]>='" + locale.ShortDate(Date::FromYmd(2010, 12, 31)) + "'";
}
std::string Until(LocaleApi& locale) {
  return "[End]<'" + locale.ShortDate(Date::FromYmd(2011, 1, 2)) + "'";
}

}  // namespace

bool FoundRecord::IsWorthKeeping() const {
  return item && lines.size() >= (legacy ? LeastLegacyLines : LeastLines);
}

std::unique_ptr<OutlookItem> ColourRecords::FindItem(std::string_view subject) {
  const auto items = folder_.Items();
  if (const auto value = Globals::FilterValue(subject)) {
    return items->Find(Since(locale_) + " AND [Subject]=" + *value);
  }
  // No filter can name it, so each is looked at; as a filter does, without regard to letter case.
  for (auto item = items->Find(Since(locale_)); item; item = items->FindNext()) {
    if (CompareText(item->Subject(), subject) == 0) return item;
  }
  return nullptr;
}

FoundRecord ColourRecords::Find(std::string_view titleName) {
  FoundRecord record;
  record.item = FindItem(colour_record::SubjectOf(titleName));
  if (!record.item) {
    record.item = FindItem(colour_record::LegacySubject);
    record.legacy = record.item != nullptr;
  }
  if (record.item) record.lines = SplitColourList(record.item->Body());
  return record;
}

std::optional<std::vector<std::string>> ColourRecords::FindList(std::string_view titleName) {
  FoundRecord record = Find(titleName);
  if (!record.IsWorthKeeping()) return std::nullopt;
  return std::move(record.lines);
}

void ColourRecords::AppendAllLines(std::string& text) {
  const auto items = folder_.Items();
  for (auto item = items->Find(Since(locale_) + " AND " + Until(locale_)); item;
       item = items->FindNext()) {
    if (item->Subject().find(colour_record::SubjectPrefix) == std::string::npos) continue;
    const std::string body = item->Body();
    const std::string_view list = TrimColourList(body);
    const std::size_t headerEnd = list.find("\r\n");
    if (headerEnd != std::string_view::npos) text.append(list.substr(headerEnd));
  }
}

}  // namespace velkor
