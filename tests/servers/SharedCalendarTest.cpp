// tests/servers/SharedCalendarTest.cpp: people and programs that change one calendar at the same
// time, and are killed in the middle of it, lose nothing. VELKOR_EDITS and VELKOR_KILLS set how
// many; the long forms say what they found.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <functional>
#include <map>
#include <random>
#include <thread>

#include "calendar/dav/Discovery.h"
#include "calendar/dav/MakeCalendar.h"
#include "calendar/net/HttpClient.h"
#include "tests/calendar/dav/RunningServer.h"
#include "tests/servers/CalendarUser.h"
#include "tests/servers/OtherClient.h"

namespace velkor {
namespace {

/// What an appointment shall say in the end.
struct Wanted {
  std::string subject = {};
  Date start = {};
  std::string location = {};
  std::string body = {};
  /// Two people set it: the last value of either counts.
  std::map<char, std::string> category = {};
};

class CalendarServerRuns : public testing::Test {
 protected:
  CalendarServerRuns() {
    const std::string home = DiscoverCalendars(server_.Fact("url"), server_.Access()).home;
    HttpClient client(server_.Access(home));
    calendar_ = server_.Access(MakeServerCalendar(client, home, "Shared", "").url);
  }

  int Below(std::size_t bound) { return static_cast<int>(random_() % bound); }
  std::string Next(const char* what) { return what + (' ' + std::to_string(++edits_)); }
  const std::string& AnyName() { return std::next(wanted_.begin(), Below(wanted_.size()))->first; }
  void Sleep(qint64 most) {
    std::this_thread::sleep_for(std::chrono::microseconds(random_() % (most + 1)));
  }

  /// Does it to an appointment that the user knows of.
  void ToAny(const CalendarUser& user, const std::function<void(const std::string&)>& act) {
    if (const std::string& name = AnyName(); user.Has(name)) act(name);
  }
  std::string Create(CalendarUser& user) {
    CalendarItem item;
    item.fields.subject = Next("new");
    item.start = Date::FromYmd(2026, 1 + Below(12), 10);
    item.end = item.start.AddDays(1);
    item.fields.allDay = true;
    const std::string name = user.Create(item);
    wanted_[name] = {.subject = item.fields.subject, .start = item.start};
    return name;
  }
  void SetSubject(CalendarUser& user, const std::string& name) {
    user.Change(name, {.subject = wanted_[name].subject = Next("subject")});
  }
  void SetLocation(CalendarUser& user, const std::string& name) {
    user.Change(name, {.location = wanted_[name].location = Next("location")});
  }
  void SetStart(CalendarUser& user, const std::string& name) {
    const Date start = Date::FromYmd(2026, 1, 1 + Below(300));
    wanted_[name].start = start;
    ++edits_;
    user.Change(name, {.start = start, .end = start.AddDays(1)});
  }
  void SetCategory(CalendarUser& user, char who, const std::string& name) {
    user.Change(name, {.categories = {{wanted_[name].category[who] = Next("category")}}});
  }

  /// How many fields of an appointment are not as they were set last.
  int LostOf(const Wanted& wanted, const CalendarItem& item) {
    const AppointmentFields& fields = item.fields;
    const std::string category = fields.categories.empty() ? "" : fields.categories[0];
    const bool isOneOfThem =
        wanted.category.empty() || std::ranges::any_of(wanted.category, [&](const auto& each) {
          return each.second == category;
        });
    return (fields.subject != wanted.subject) + (fields.location != wanted.location) +
           (fields.body.substr(0, fields.body.find('\r')) != wanted.body) +
           (item.start != wanted.start) + !isOneOfThem;
  }
  int LostFields(CalendarUser& user) {
    user.Look();
    int lost = 0;
    for (const auto& [name, wanted] : wanted_) lost += LostOf(wanted, user.Find(name));
    return lost;
  }
  /// Kills a program that saves one after another. It told of each that was done; the one that it
  /// was at may be there or not.
  /// @return 1 where another value is there
  int KillWhileItSaves(CalendarUser& user, const std::string& name, qint64 most) {
    const std::string before = wanted_[name].subject;
    const std::string text = Next("subject") + '.';
    int told[2];
    if (pipe(told) != 0) return 1;
    const pid_t saver = fork();
    for (int i = 1; saver == 0; ++i) {
      user.Change(name, {.subject = text + std::to_string(i)});
      if (write(told[1], "", 1) != 1) _exit(1);
    }
    Sleep(most);
    kill(saver, SIGKILL);
    waitpid(saver, nullptr, 0);
    close(told[1]);
    int done = 0;
    for (char byte = 0; read(told[0], &byte, 1) == 1;) ++done;
    close(told[0]);
    user.Look();
    const std::string found = wanted_[name].subject = user.Find(name).fields.subject;
    return found != (done == 0 ? before : text + std::to_string(done)) &&
           found != text + std::to_string(done + 1);
  }

  std::string Path(const char* name) const { return folder_.filePath(name).toStdString(); }

  QTemporaryDir folder_;
  RunningServer server_;
  HttpAccess calendar_;
  std::mt19937 random_{2026};
  int edits_ = 0;
  std::map<std::string, Wanted> wanted_;
};

/// Ann and Ben use our program; Cleo another one, which keeps whole objects equal and merges
/// nothing.
TEST_F(CalendarServerRuns, EveryFieldThatThreePeopleSetIsThereForAllOfThemInTheEnd) {
  const int edits = std::max(60, qEnvironmentVariableIntValue("VELKOR_EDITS"));
  CalendarUser ann(calendar_, Path("ann"));
  CalendarUser ben(calendar_, Path("ben"));
  OtherClient cleo(calendar_, Path("cleo"));
  std::vector<std::string> doomed;
  const auto annAndBenSynchronise = [&] {
    const auto first = ann.StartSynchronising();
    const auto second = ben.StartSynchronising();
    EXPECT_EQ(CalendarUser::EndOf(*first) + CalendarUser::EndOf(*second), "");
    ann.Look();
    ben.Look();
  };
  const auto cleoWorks = [&] {
    EXPECT_EQ(cleo.Synchronise(), "");
    const CalendarState there = cleo.State();
    for (int i = 0; i < 8; ++i) {
      const std::string& name = AnyName();
      if (there.contains(name)) cleo.Describe(name, wanted_[name].body = Next("body"));
    }
    if (!doomed.empty() && there.contains(doomed.back())) {
      cleo.Delete(doomed.back());
      doomed.pop_back();
    }
    EXPECT_EQ(cleo.Synchronise(), "");
  };
  const std::function<void()> turns[] = {
      annAndBenSynchronise,
      [&] { EXPECT_EQ(ann.Synchronise(), ""); },
      [&] { EXPECT_EQ(ben.Synchronise(), ""); },
      cleoWorks,
      [&] { Create(Below(2) == 0 ? ann : ben); },
      [&] { ToAny(ann, [&](auto& name) { SetSubject(ann, name); }); },
      [&] { ToAny(ann, [&](auto& name) { SetStart(ann, name); }); },
      [&] { ToAny(ann, [&](auto& name) { SetCategory(ann, 'a', name); }); },
      [&] { ToAny(ben, [&](auto& name) { SetLocation(ben, name); }); },
      [&] { ToAny(ben, [&](auto& name) { SetCategory(ben, 'b', name); }); },
  };
  // Few turns synchronise, so that edits of many meet.
  std::discrete_distribution<std::size_t> chances{3, 2, 2, 2, 1, 12, 6, 5, 12, 5};

  for (int i = 0; i < 20; ++i) Create(ann);
  for (int i = 0; i < 4; ++i) {
    doomed.push_back(Create(ann));
    wanted_.erase(doomed.back());
  }
  const std::vector<std::string> gone = doomed;
  annAndBenSynchronise();
  while (edits_ < edits) turns[chances(random_)]();
  while (!doomed.empty()) cleoWorks();
  for (int round = 0; round < 3; ++round) {
    annAndBenSynchronise();
    EXPECT_EQ(cleo.Synchronise(), "");
  }

  // One who comes later sees what the server has.
  CalendarUser dora(calendar_, Path("dora"));
  EXPECT_EQ(dora.Synchronise(), "");
  EXPECT_EQ(LostFields(ann), 0);
  EXPECT_EQ(LostFields(dora), 0);
  EXPECT_EQ(dora.State().size(), wanted_.size());
  for (const std::string& name : gone) EXPECT_FALSE(dora.State().contains(name));
  for (const CalendarState& state : {ann.State(), ben.State(), cleo.State()}) {
    EXPECT_EQ(state, dora.State());
  }
  EXPECT_EQ(ann.Unsent() + ben.Unsent(), 0U);
  if (edits > 60) {
    std::printf("%d edits of %zu appointments: %d lost fields; %zu notes\n", edits_, wanted_.size(),
                LostFields(dora), ann.Notes() + ben.Notes());
  }
}

TEST_F(CalendarServerRuns, AKillAtAnyMomentLosesNoEditAndBreaksNoObject) {
  const int kills = std::max(16, qEnvironmentVariableIntValue("VELKOR_KILLS"));
  CalendarUser ann(calendar_, Path("ann"));
  CalendarUser ben(calendar_, Path("ben"));
  for (int i = 0; i < 12; ++i) Create(ann);
  EXPECT_EQ(ann.Synchronise() + ben.Synchronise(), "");
  ben.Look();
  const auto benWorks = [&] {
    for (int i = 0; i < 4; ++i) ToAny(ben, [&](auto& name) { SetLocation(ben, name); });
    EXPECT_EQ(ben.Synchronise(), "");
    ben.Look();
  };
  const auto annWorks = [&] {
    SetSubject(ann, AnyName());
    const std::string name = AnyName();
    SetSubject(ann, name);
    return name;
  };
  benWorks();
  annWorks();
  QElapsedTimer clock;
  clock.start();
  EXPECT_EQ(ann.Synchronise(), "");
  const qint64 longest = clock.nsecsElapsed() / 1000;

  int lost = 0;
  int broken = 0;
  for (int kill = 1; kill <= kills; ++kill) {
    if (kill % 4 == 0) benWorks();
    const std::string edited = annWorks();
    const auto synchronising = ann.StartSynchronising();
    // Saves come in between, also of what is being sent.
    Sleep(longest / 2);
    if (kill % 2 == 0) lost += KillWhileItSaves(ann, edited, longest / 2);
    Sleep(longest / 2);
    if (kill % 3 == 0) SetSubject(ann, AnyName());
    Sleep(longest / 4);
    synchronising->kill();
    synchronising->waitForFinished();
    broken += ann.DamagedObjects();
    ann.Look();
    for (const auto& [name, wanted] : wanted_) {
      lost += ann.Find(name).fields.subject != wanted.subject;
    }
    if (kill % 10 == 0) Create(ann);
  }
  EXPECT_EQ(ann.Synchronise() + ben.Synchronise() + ann.Synchronise(), "");
  CalendarUser dora(calendar_, Path("dora"));
  EXPECT_EQ(dora.Synchronise(), "");
  lost += LostFields(ann) + LostFields(dora);
  EXPECT_EQ(lost, 0);
  EXPECT_EQ(broken, 0);
  EXPECT_EQ(dora.State().size(), wanted_.size()) << "what was made is there once";
  EXPECT_EQ(ann.State(), dora.State());
  EXPECT_EQ(ben.State(), dora.State());
  EXPECT_EQ(ann.Unsent() + ben.Unsent(), 0U);
  if (kills > 16) {
    std::printf("%d kills, %d saves: %d lost, %d broken objects\n", kills, edits_, lost, broken);
  }
}

}  // namespace
}  // namespace velkor
