// tests/standin/TestingObject.cpp: counts, faults and content for tests.
#include "tests/standin/TestingObject.h"

#include <array>
#include <cstdio>

#include "platform/windows/system/WindowsSystem.h"

namespace velkor {
namespace {

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

/// Appointments of many kinds, without events.
void AddMany(CalendarFolder& calendar, int year, int count) {
  for (int i = 0; i < count; ++i) {
    CalendarItem item = Varied(year, i);
    item.entryId = "MANY-" + std::to_string(calendar.AllItems().size() + 1) + "-" +
                   std::to_string(calendar.Revision());
    item.lastModified = WindowsClock().Now();
    calendar.Add(std::move(item));
  }
}

/// A line "subject|start|end|categories|allday" for each item.
std::string ListItems(const CalendarFolder& calendar) {
  std::string text;
  for (const auto& item : calendar.AllItems()) {
    std::string categories;
    for (const std::string& name : item->fields.categories) {
      categories += (categories.empty() ? "" : ", ") + name;
    }
    text += item->fields.subject + "|" + ToText(item->start) + "|" + ToText(item->end) + "|" +
            categories + "|" + (item->fields.allDay ? "1" : "0") + "\r\n";
  }
  return text;
}

/// Removes every item, with events.
void Clear(CalendarFolder& calendar) {
  const CalendarFolder::Items items = calendar.AllItems();
  for (const auto& item : items) calendar.Delete(item->entryId);
}

/// A line "Class.Member count" for each member called.
std::string MemberCounts(const ServedProgram& program) {
  std::map<std::string, int> counts;
  for (const std::string& call : program.log) ++counts[call];
  std::string text;
  for (const auto& [name, count] : counts) text += name + " " + std::to_string(count) + "\r\n";
  return text;
}

}  // namespace

ComPtr<ServedObject> MakeTesting(ServedProgram& own, ServedProgram& counted, CallFaults& faults,
                                 CalendarFolder& calendar) {
  auto testing = MakeServed(own, "Testing");
  const auto tells = [&](const char* member, auto answer) {
    testing->members[member] = [answer](const ServedCall&) { return Variant(answer()); };
  };
  const auto does = [&](const char* member, std::function<void(const Call&)> work) {
    testing->members[member] = [work = std::move(work)](const ServedCall& call) {
      work(call);
      return Variant();
    };
  };
  tells("ProcessId", [] { return static_cast<std::int32_t>(::GetCurrentProcessId()); });
  tells("Invokes", [&counted] { return static_cast<std::int32_t>(counted.log.size()); });
  tells("Lookups", [&counted] { return std::int32_t{counted.lookups}; });
  tells("MemberCounts", [&counted] { return MemberCounts(counted); });
  tells("ListItems", [&calendar] { return ListItems(calendar); });
  does("Reset", [&counted](const Call&) {
    counted.log.clear();
    counted.lookups = 0;
  });
  does("Busy", [&faults](const Call& call) { faults.busy = call[0].ToInt(); });
  does("Refuse", [&faults](const Call& call) { faults.refused = call[0].ToInt(); });
  does("Slow", [&faults](const Call& call) { faults.slow = call[0].ToInt(); });
  does("ExitIn", [&faults](const Call& call) { faults.exitIn = call[0].ToText(); });
  does("FailMember",
       [&faults](const Call& call) { faults.failing[call[0].ToText()] = call[1].ToInt(); });
  does("RefuseLogon", [&faults](const Call& call) {
    // MAPI_E_FAILONEPROVIDER.
    faults.failing.erase("GetNamespace");
    if (call[0].ToBool()) faults.failing["GetNamespace"] = static_cast<std::int32_t>(0x8004011D);
  });
  does("ClearFaults", [&faults](const Call&) { faults = {}; });
  does("AddMany",
       [&calendar](const Call& call) { AddMany(calendar, call[0].ToInt(), call[1].ToInt()); });
  does("Clear", [&calendar](const Call&) { Clear(calendar); });
  return testing;
}

}  // namespace velkor
