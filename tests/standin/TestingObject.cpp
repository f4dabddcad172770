// tests/standin/TestingObject.cpp: counts, faults and content for tests.
#include "tests/standin/TestingObject.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <type_traits>
#include <utility>
#include <vector>

#include "values/Error.h"
#include "values/Text.h"

namespace velkor {
namespace {

CalendarItem Appointment(const Call& call) {
  CalendarItem item;
  item.fields.subject = call[0].ToText();
  item.start = call[1].ToDate();
  item.end = call[2].ToDate();
  if (!item.start.IsValid() || !item.end.IsValid() || item.end < item.start) {
    throw Error(errors::InvalidProcedureCall, "An appointment ends after its start.");
  }
  return item;
}

std::string ToText(Date date) {
  const DateFields fields = date.Fields();
  std::array<char, 40> text = {};
  std::snprintf(text.data(), text.size(), "%04d-%02d-%02d %02d:%02d", fields.year, fields.month,
                fields.day, fields.hour, fields.minute);
  return text.data();
}

/// The number-th appointment of a year: spread over its days, from an hour to four days long.
CalendarItem Varied(int year, int number) {
  static const std::vector<std::vector<std::string>> Categories = {
      {"Unused 01"}, {}, {"Unused 02"}, {"Unused 03", "Unused 07"}, {"Other"}, {"Unused 14"},
      {"Not listed"}};
  CalendarItem item;
  item.fields.subject = "Appointment " + std::to_string(number + 1);
  item.fields.categories = Categories[static_cast<std::size_t>(number) % Categories.size()];
  item.fields.location = "Room " + std::to_string(number % 12 + 1);
  item.fields.allDay = number % 9 == 0;
  const Date day = Date::FromYmd(year, 1, 1 + number * 53 % 365);
  const int days = item.fields.allDay ? 1 + number % 4 : number % 11 == 5 ? 1 : 0;
  const std::int64_t hour = item.fields.allDay ? 0 : 7 + number % 10;
  item.start = Date::FromSeconds(day.Seconds() + hour * 3600);
  item.end = Date::FromSeconds(item.start.Seconds() + days * SecondsPerDay +
                               (item.fields.allDay ? 0 : 3600));
  return item;
}

class TestingObject : public ServedObject<> {
 public:
  explicit TestingObject(StandInSession& session) : ServedObject(session, Kind()) {}

 private:
  static const WatchedClass& Kind();

  Variant ProcessId(const Call&) {
    return Variant(static_cast<std::int32_t>(::GetCurrentProcessId()));
  }
  Variant Invokes(const Call&) { return Variant(Shared().watch.Calls()); }
  Variant Lookups(const Call&) { return Variant(Shared().watch.Lookups()); }
  Variant MemberCounts(const Call&) { return Variant(Shared().watch.MemberCounts()); }
  /// Tells the watch what argument 0 says.
  template <auto Function>
  Variant Tell(const Call& call) {
    CallWatch& watch = Shared().watch;
    if constexpr (std::is_invocable_v<decltype(Function), CallWatch&, std::int32_t>) {
      (watch.*Function)(call[0].ToInt());
    } else if constexpr (std::is_invocable_v<decltype(Function), CallWatch&, std::string>) {
      (watch.*Function)(call[0].ToText());
    } else {
      (watch.*Function)();
    }
    return {};
  }
  Variant RefuseLogon(const Call& call) {
    // MAPI_E_FAILONEPROVIDER.
    Shared().watch.Fail("GetNamespace",
                        call[0].ToBool() ? static_cast<std::int32_t>(0x8004011D) : 0);
    return {};
  }
  Variant FailMember(const Call& call) {
    Shared().watch.Fail(call[0].ToText(), call[1].ToInt());
    return {};
  }
  /// Milliseconds without a call after which the process ends; three minutes at first.
  Variant EndWhenIdleFor(const Call& call) {
    Shared().loop.EndWhenIdleFor(static_cast<ULONGLONG>(call[0].ToInt()));
    return {};
  }

  /// Subject, start, end, number of weeks and, if given, categories; answers with the EntryID.
  Variant AddRecurring(const Call& call) {
    CalendarItem item = Appointment(call);
    const std::int32_t weeks = call[3].ToInt();
    if (call.Has(4)) {
      for (const std::string& name : Split(call[4].ToText(), ",")) {
        item.fields.categories.emplace_back(Trim(name));
      }
    }
    item.recurring = true;
    for (std::int32_t week = 0; week < weeks; ++week) {
      item.occurrences.push_back({item.start.AddDays(7 * week), item.end.AddDays(7 * week)});
    }
    return Variant(Save(std::move(item)));
  }
  /// Subject, start, end: a meeting request and its appointment; answers with its EntryID.
  Variant AddMeeting(const Call& call) {
    CalendarItem appointment = Appointment(call);
    CalendarItem meeting = appointment;
    meeting.itemClass = outlook::ClassMeetingRequest;
    meeting.messageClass = "IPM.Schedule.Meeting.Request";
    meeting.appointment = Shared().calendar.Find(Save(std::move(appointment)));
    return Variant(Save(std::move(meeting)));
  }
  /// Year and number: appointments of many kinds, without events.
  Variant AddMany(const Call& call) {
    const std::int32_t year = call[0].ToInt();
    const std::int32_t count = call[1].ToInt();
    for (std::int32_t i = 0; i < count; ++i) {
      CalendarItem item = Varied(year, i);
      item.entryId = "MANY-" + std::to_string(Shared().calendar.AllItems().size() + 1) + "-" +
                     std::to_string(Shared().calendar.Revision());
      item.lastModified = Shared().clock.Now();
      Shared().calendar.Add(std::move(item));
    }
    return {};
  }
  /// A line "subject|start|end|categories|allday" for each item.
  Variant ListItems(const Call&) {
    std::string text;
    for (const auto& item : Shared().calendar.AllItems()) {
      std::string categories;
      for (const std::string& name : item->fields.categories) {
        categories += (categories.empty() ? "" : ", ") + name;
      }
      text += item->fields.subject + "|" + ToText(item->start) + "|" + ToText(item->end) + "|" +
              categories + "|" + (item->fields.allDay ? "1" : "0") + "\r\n";
    }
    return Variant(text);
  }
  /// Removes every item, with events.
  Variant Clear(const Call&) {
    const CalendarFolder::Items items = Shared().calendar.AllItems();
    for (const auto& item : items) Shared().calendar.Delete(item->entryId);
    return {};
  }

  std::string Save(CalendarItem item) {
    return Shared().calendar.SaveNew(std::move(item), true, Shared().clock.Now())->entryId;
  }
};

const WatchedClass& TestingObject::Kind() {
  using Self = TestingObject;
  static constexpr Member Members[] = {
      {"ProcessId", Bound<&Self::ProcessId>},
      {"Invokes", Bound<&Self::Invokes>},
      {"Lookups", Bound<&Self::Lookups>},
      {"MemberCounts", Bound<&Self::MemberCounts>},
      {"Reset", Bound<&Self::Tell<&CallWatch::ResetCounts>>},
      {"Busy", Bound<&Self::Tell<&CallWatch::PutOff>>},
      {"Refuse", Bound<&Self::Tell<&CallWatch::Refuse>>},
      {"RefuseLogon", Bound<&Self::RefuseLogon>},
      {"FailMember", Bound<&Self::FailMember>},
      {"ExitIn", Bound<&Self::Tell<&CallWatch::ExitIn>>},
      {"Slow", Bound<&Self::Tell<&CallWatch::Slow>>},
      {"ClearFaults", Bound<&Self::Tell<&CallWatch::ClearFaults>>},
      {"EndWhenIdleFor", Bound<&Self::EndWhenIdleFor>},
      {"AddRecurring", Bound<&Self::AddRecurring>},
      {"AddMeeting", Bound<&Self::AddMeeting>},
      {"AddMany", Bound<&Self::AddMany>},
      {"ListItems", Bound<&Self::ListItems>},
      {"Clear", Bound<&Self::Clear>},
  };
  static constexpr WatchedClass Testing = {{"Testing", 900, Members}, false};
  return Testing;
}

}  // namespace

Variant TestingAnswer(StandInSession& session) {
  return Variant(new TestingObject(session));
}

}  // namespace velkor
