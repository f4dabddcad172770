// refresh/RefreshYear.cpp: reads a year of a calendar folder and replaces its cache file.
#include "refresh/RefreshYear.h"

#include <memory>
#include <utility>

#include "model/CacheRecord.h"
#include "model/ColourRecord.h"
#include "platform/Outlook.h"
#include "platform/System.h"
#include "support/modFileIO.h"
#include "support/values/Error.h"
#include "view/span/Globals.h"

namespace velkor {
namespace {

constexpr std::size_t BlockSize = 1 << 16;

/// The appointment that an item stands for; null for one that stands for none.
std::unique_ptr<OutlookItem> AppointmentOf(std::unique_ptr<OutlookItem> item) {
  switch (item->Class()) {
    case outlook::ClassAppointment:
      return item;
    case outlook::ClassMeetingRequest:
      return item->GetAssociatedAppointment(false);
    default:
      return nullptr;
  }
}

/// The items of the span, each occurrence by itself, in order of start.
std::unique_ptr<OutlookItems> OpenItems(const RefreshRequest& request, OutlookNamespace& session,
                                        LocaleApi& locale) {
  const auto folder = session.GetFolderFromID(request.folderId, request.storeId);
  if (!folder) throw Error(errors::CalendarFailed, "The calendar folder is not there any more");
  auto items = folder->Items()->Restrict(Globals::ViewRestriction(request.span, locale));
  items->Sort("[Start]");
  items->IncludeRecurrences(true);
  return items;
}

/// @return false when `proceed` asked to stop
bool WriteItems(OutlookItems& items, OutputFile& work, LocaleApi& locale,
                const std::function<bool()>& proceed, std::size_t& count) {
  std::string block;
  for (auto item = items.GetFirst(); item; item = items.GetNext()) {
    const auto appointment = AppointmentOf(std::move(item));
    if (!appointment) continue;
    const std::string subject = appointment->Subject();
    if (colour_record::IsSubject(subject)) continue;
    AppendCacheRecord(block, appointment->EntryID(), subject, appointment->Categories(),
                      appointment->Start(), appointment->End(), locale);
    ++count;
    if (block.size() < BlockSize) continue;
    if (proceed && !proceed()) return false;
    work.Write(block);
    block.clear();
  }
  work.Write(block);
  return !proceed || proceed();
}

}  // namespace

RefreshAnswer RefreshYear(const RefreshRequest& request, OutlookApplication& outlook, Files& files,
                          LocaleApi& locale, const std::function<bool()>& proceed) {
  RefreshAnswer answer;
  const auto fail = [&](SynchResult result, const Error& error) {
    answer.result = result;
    answer.error = error.Number();
    answer.description = error.Description();
    return answer;
  };

  std::unique_ptr<OutlookNamespace> session;
  try {
    session = outlook.GetNamespace("MAPI");
  } catch (const Error& error) {
    return fail(SynchResult::LogonFailed, error);
  }
  if (!session) {
    return fail(SynchResult::LogonFailed, Error(errors::CalendarFailed, "There is no session"));
  }

  const auto work = modFileIO::OpenForWriting(files, request.paths.workFile);
  if (!work) {
    answer.result = SynchResult::WorkFileNotOpened;
    return answer;
  }
  try {
    const auto items = OpenItems(request, *session, locale);
    if (!WriteItems(*items, *work, locale, proceed, answer.count)) return answer;
    answer.result = work->MoveOver(request.paths.cacheFile) ? SynchResult::CacheWritten
                                                            : SynchResult::CacheNotReplaced;
  } catch (const Error& error) {
    return fail(SynchResult::FetchingFailed, error);
  }
  return answer;
}

}  // namespace velkor
