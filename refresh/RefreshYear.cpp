// refresh/RefreshYear.cpp: reads a year of a calendar folder and replaces its cache file.
#include "refresh/RefreshYear.h"

#include <memory>
#include <utility>

#include "model/AppointmentOf.h"
#include "model/CacheRecord.h"
#include "model/ColourRecord.h"
#include "platform/CacheUtility.h"
#include "platform/Outlook.h"
#include "platform/System.h"
#include "span/Globals.h"
#include "support/modFileIO.h"
#include "values/Error.h"

namespace velkor {
namespace {

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

void Fail(RefreshAnswer& answer, SynchResult result, const Error& error) {
  answer.result = result;
  answer.error = error.Number();
  answer.description = error.Description();
}

/// @return false when `proceed` asked to stop or writing failed, which `answer` then says
bool WriteItems(OutlookItems& items, OutputFile& work, LocaleApi& locale,
                const std::function<bool()>& proceed, RefreshAnswer& answer) {
  std::string record;
  for (auto item = items.GetFirst(); item; item = items.GetNext()) {
    if (proceed && !proceed()) return false;
    const auto appointment = AppointmentOf(std::move(item));
    if (!appointment) continue;
    const std::string subject = appointment->Subject();
    if (colour_record::IsSubject(subject)) continue;
    record.clear();
    AppendCacheRecord(record, appointment->EntryID(), subject, appointment->Categories(),
                      appointment->Start(), appointment->End(), locale);
    try {
      work.Write(record);
    } catch (const Error& error) {
      Fail(answer, SynchResult::WritingFailed, error);
      return false;
    }
    ++answer.count;
  }
  return !proceed || proceed();
}

/// Fills the work file and puts it in the cache file's place.
void WriteYear(const RefreshRequest& request, OutlookNamespace& session, OutputFile& work,
               LocaleApi& locale, const std::function<bool()>& proceed,
               const std::function<void()>& open, RefreshAnswer& answer) {
  try {
    if (open) open();
    if (proceed && !proceed()) return;
    const auto items = OpenItems(request, session, locale);
    if (!WriteItems(*items, work, locale, proceed, answer)) return;
  } catch (const Error& error) {
    Fail(answer, SynchResult::FetchingFailed, error);
    return;
  }
  try {
    answer.result = work.MoveOver(request.paths.cacheFile) ? SynchResult::CacheWritten
                                                           : SynchResult::CacheNotReplaced;
  } catch (const Error& error) {
    Fail(answer, SynchResult::WritingFailed, error);
  }
}

}  // namespace

RefreshRequest RequestOf(const RefreshInputs& inputs) {
  return {{inputs.viewYear, inputs.firstMonth},
          {inputs.cacheFile, inputs.workFile},
          inputs.folderId,
          inputs.storeId};
}

RefreshAnswer RefreshYear(const RefreshRequest& request, OutlookApplication& outlook, Files& files,
                          LocaleApi& locale, const std::function<bool()>& proceed,
                          const std::function<void()>& open) {
  RefreshAnswer answer;
  std::unique_ptr<OutlookNamespace> session;
  try {
    session = outlook.GetNamespace("MAPI");
    if (!session) throw Error(errors::CalendarFailed, "There is no session");
  } catch (const Error& error) {
    Fail(answer, SynchResult::LogonFailed, error);
    return answer;
  }

  const auto work = modFileIO::OpenForWriting(files, request.paths.workFile);
  if (!work) {
    answer.result = SynchResult::WorkFileNotOpened;
    return answer;
  }
  WriteYear(request, *session, *work, locale, proceed, open, answer);
  // While it is still held, so that no other writer's file is meant.
  if (answer.result != SynchResult::CacheWritten) files.Delete(request.paths.workFile);
  return answer;
}

}  // namespace velkor
