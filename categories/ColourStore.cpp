// categories/ColourStore.cpp: finds the hidden appointment that holds a planner's category colours.
#include "categories/ColourStore.h"

#include "categories/ColourList.h"
#include "model/ColourRecord.h"
#include "platform/LocaleApi.h"

namespace velkor {
namespace {

// Lines that a list needs to be kept, the header among them.
constexpr std::size_t LeastLines = 2;
constexpr std::size_t LeastLegacyLines = 3;

}  // namespace

std::unique_ptr<OutlookItem> ColourStore::FindRecord(std::string_view subject) {
  // The hidden instant lies after the last day of 2010.
  const std::string since = locale_.ShortDate(Date::FromYmd(2010, 12, 31));
  return folder_.Items()->Find("[Start]>='" + since + "' AND [Subject]='" + std::string(subject) +
                               "'");
}

std::optional<std::vector<std::string>> ColourStore::FindList(std::string_view titleName) {
  auto record = FindRecord(colour_record::SubjectOf(titleName));
  std::size_t least = LeastLines;
  if (!record) {
    record = FindRecord(colour_record::LegacySubject);
    least = LeastLegacyLines;
  }
  if (!record) return std::nullopt;
  std::vector<std::string> lines = SplitColourList(record->Body());
  if (lines.size() < least) return std::nullopt;
  return lines;
}

}  // namespace velkor
