// tests/calendar/set/OneFileTest.cpp: planners of one calendar file, which follow it and save into
// it.
#include "calendar/set/SetCalendar.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include <array>

#include "calendar/EmbeddedOutlook.h"
#include "calendar/ics/file/SaveRecord.h"
#include "calendar/ics/file/ShortHash.h"
#include "calendar/ics/write/IcsEditor.h"
#include "platform/headless/FixedLocale.h"
#include "tests/calendar/CalendarDoubles.h"
#include "tests/calendar/ics/CalendarFileCase.h"
#include "tests/platform/desktop/ChildProcess.h"
#include "values/Text.h"

namespace velkor {
namespace {

using testing::HasSubstr;
using Texts = std::vector<std::string>;
namespace fs = std::filesystem;

/// A window of its own on a calendar file.
struct Window {
  explicit Window(const std::string& path)
      : calendar(path, Year(2026)),
        outlook(calendar.Store(), locale, {.userName = "Ann", .clock = [this] { return now; }}),
        items(outlook.GetNamespace("MAPI")->GetDefaultFolder(outlook::FolderCalendar)->Items()) {
    items->Connect(&events);
  }

  std::unique_ptr<OutlookItem> Item(const std::string& subject) {
    auto item = items->Find("[Subject]='" + subject + "'");
    EXPECT_NE(item, nullptr) << subject;
    return item;
  }
  void Rename(const std::string& from, const std::string& to) {
    const auto item = Item(from);
    item->SetSubject(to);
    item->Save();
  }
  Texts Subjects() {
    Texts subjects;
    for (auto item = items->GetFirst(); item; item = items->GetNext()) {
      subjects.push_back(item->Subject());
    }
    return subjects;
  }

  Date now = Date::FromFields({2026, 2, 3, 12, 0, 0});
  FixedLocale locale;
  SetCalendar calendar;
  EmbeddedOutlook outlook;
  EventLog events;
  std::unique_ptr<OutlookItems> items;
};

class OneFile : public CalendarFileCase {
 protected:
  OneFile() { Write(Calendar(Named("a") + Named("b"))); }

  std::size_t FilesInFolder() const {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(folder_), fs::directory_iterator()));
  }
};

TEST_F(OneFile, WhatIsSavedIsInTheFileAndIsNoNewsToItself) {
  Window window(path_);
  EXPECT_EQ(window.calendar.Store().StoreID(), fs::absolute(path_).string());
  window.Rename("a", "c");
  const auto item = window.items->Add("");
  item->SetSubject("new");
  item->SetStart(Date::FromFields({2026, 5, 6, 10, 0, 0}));
  item->Save();
  window.Item("b")->Delete();
  EXPECT_EQ(window.events.Take(), (Texts{"change c", "add new", "remove"}));
  EXPECT_FALSE(window.calendar.CheckForChanges());
  EXPECT_EQ(FilesInFolder(), 1U);

  Window other(path_);
  EXPECT_EQ(other.Subjects(), (Texts{"c", "new"}));
  EXPECT_EQ(other.Item("new")->EntryID(), item->EntryID());
  EXPECT_EQ(other.Item("new")->LastModificationTime(), window.now);
  Write(Read() + " ");
  EXPECT_TRUE(window.calendar.CheckForChanges());
  EXPECT_EQ(window.events.Take(), Texts{}) << "what was read differs from what was saved";
}

TEST_F(OneFile, ChangesOfAnotherProgramAreToldOnce) {
  Window window(path_);
  const std::string a = window.Item("a")->EntryID();
  const Date before = window.Item("a")->LastModificationTime();
  Write(Calendar(Replace(Named("a"), "SUMMARY:a", "SUMMARY:A") + Named("c")));
  EXPECT_TRUE(window.calendar.CheckForChanges());
  EXPECT_EQ(window.events.Take(), (Texts{"change A", "add c", "remove"}));
  EXPECT_FALSE(window.calendar.CheckForChanges());
  EXPECT_EQ(window.Item("A")->EntryID(), a);
  EXPECT_GT(window.Item("A")->LastModificationTime(), before);

  Write(Calendar(Named("c") + Replace(Named("a"), "SUMMARY:a", "X-NEWS:1\nSUMMARY:A")));
  EXPECT_TRUE(window.calendar.CheckForChanges());
  EXPECT_EQ(window.events.Take(), Texts{}) << "nothing that is shown changed";
}

TEST_F(OneFile, AChangedOccurrenceIsAChangeAlsoWhenAnotherYearIsLoaded) {
  const std::string daily = "UID:d\nSUMMARY:daily\nDTSTART:20250101\nRRULE:FREQ=DAILY\n";
  Write(Calendar(Event(daily)));
  Window window(path_);
  Write(Calendar(Event(daily + "EXDATE;VALUE=DATE:20260105\n")));
  window.calendar.Folder().Load(Year(2031));
  EXPECT_EQ(window.events.Take(), Texts{"change daily"});
  EXPECT_FALSE(window.calendar.CheckForChanges());
}

TEST_F(OneFile, TwoWindowsSaveInTurnAndLoseNothing) {
  Window first(path_);
  Window second(path_);
  first.Rename("a", "a1");
  second.Rename("b", "b1");
  first.Item("b")->SetLocation("unsaved");
  first.Rename("a1", "a2");
  EXPECT_TRUE(first.calendar.CheckForChanges());
  EXPECT_TRUE(second.calendar.CheckForChanges());
  EXPECT_EQ(first.events.Take(), (Texts{"change a1", "change a2", "change b1"}));
  EXPECT_EQ(second.events.Take(), (Texts{"change b1", "change a2"}));
  EXPECT_EQ(first.Subjects(), second.Subjects());
  EXPECT_FALSE(first.calendar.CheckForChanges());

  first.Item("a2")->Delete();
  const auto gone = second.Item("a2");
  gone->SetSubject("a3");
  EXPECT_THAT(FaultOf([&] { gone->Save(); }), HasSubstr("no longer in the calendar file"));
  EXPECT_EQ(first.events.Take(), Texts{"remove"});
}

TEST_F(OneFile, AnEventWithoutAUidInAnUnendedLineIsSavedAfterAnotherOneWasAdded) {
  Write("BEGIN:VCALENDAR\nBEGIN:VEVENT\nSUMMARY:last\nDTSTART:20260301\nEND:VEVENT");
  Window window(path_);
  const auto added = window.items->Add("");
  added->SetSubject("new");
  added->SetStart(Date::FromYmd(2026, 4, 1));
  added->Save();
  window.calendar.CheckForChanges();
  window.Rename("last", "changed");
  EXPECT_EQ(Window(path_).Subjects(), (Texts{"changed", "new"}));
}

TEST_F(OneFile, ASaveMergesWithWhatAnotherProgramDidToTheSameEvent) {
  Window window(path_);
  Write(Calendar(Replace(Named("a"), "SUMMARY", "LOCATION:Ghent\nSUMMARY") + Named("c")));
  window.Rename("a", "A");
  EXPECT_THAT(Read(), HasSubstr("LOCATION:Ghent\nSUMMARY:A\n"));
  EXPECT_EQ(window.Item("A")->Location(), "Ghent");
  EXPECT_TRUE(window.calendar.CheckForChanges());
  EXPECT_EQ(window.events.Take(), (Texts{"change A", "add c", "remove"}));
}

TEST_F(OneFile, AFileThatKeepsChangingDuringASaveIsLeftAlone) {
  CalendarFile file(path_);
  EXPECT_THAT(FaultOf([&] {
                file.Replace([&](const std::string& bytes) {
                  Write(bytes + "again\n");
                  return bytes + "ours\n";
                });
              }),
              HasSubstr("keeps changing"));
  EXPECT_THAT(Read(), testing::Not(HasSubstr("ours")));
  EXPECT_EQ(FilesInFolder(), 1U);
}

TEST_F(OneFile, ABrokenFileKeepsTheLastGoodItemsAndIsReportedOnce) {
  Window window(path_);
  const std::string good = Read();
  const auto isReportedOnce = [&](const std::string& what) {
    EXPECT_THAT(FaultOf([&] { window.calendar.CheckForChanges(); }), HasSubstr("team.ics")) << what;
    EXPECT_FALSE(window.calendar.CheckForChanges()) << what;
    EXPECT_EQ(window.Subjects(), (Texts{"a", "b"})) << what;
    EXPECT_THAT(FaultOf([&] { window.Rename("a", "x"); }), HasSubstr("team.ics"));
    EXPECT_EQ(window.events.Take(), Texts{}) << what;
  };
  Write("");
  isReportedOnce("empty");
  Write(std::string("\0\xFF garbage", 10));
  isReportedOnce("garbage");
  EXPECT_EQ(Read(), std::string("\0\xFF garbage", 10)) << "a save wrote into garbage";
  fs::remove(path_);
  isReportedOnce("gone");
  fs::create_directory(path_);
  isReportedOnce("a folder");
  fs::remove(path_);
  Write(good + Calendar(Named("c")));
  EXPECT_TRUE(window.calendar.CheckForChanges());
  EXPECT_EQ(window.events.Take(), Texts{"add c"});
}

TEST_F(OneFile, AFileThatMayNotBeWrittenRefusesAndNothingIsLost) {
  Window window(path_);
  const std::string good = Read();
  const auto refuses = [&](const std::string& why) {
    const auto item = window.Item("a");
    item->SetSubject("x");
    EXPECT_THAT(FaultOf([&] { item->Save(); }), HasSubstr(why)) << FaultOf([&] { item->Save(); });
    EXPECT_THAT(FaultOf([&] { item->Delete(); }), HasSubstr(why));
    EXPECT_EQ(window.Subjects(), (Texts{"a", "b"}));
    EXPECT_EQ(window.events.Take(), Texts{});
    EXPECT_EQ(Read(), good);
  };
  chmod(path_.c_str(), 0444);
  refuses("write-protected");
  chmod(path_.c_str(), 0644);

  // A folder that is not empty stands where the work file would.
  const fs::path work = fs::path(folder_) / (".velkor-" + ShortHash("team.ics"));
  fs::create_directories(work / "inside");
  refuses("no work file can be written");
  fs::remove_all(work);

  for (const std::string& place : {path_, folder_}) {
    const int held = open(place.c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(flock(held, LOCK_EX), 0);
    CalendarFile impatient(path_, {.patience = std::chrono::milliseconds(50)});
    EXPECT_THAT(
        FaultOf([&] { impatient.Replace([](const std::string& bytes) { return bytes + "x"; }); }),
        HasSubstr("another program holds it"));
    close(held);
  }
  EXPECT_EQ(Read(), good);
}

/// An access control list as the system has it (acl(5)): rights of the owner, of user 1234, of the
/// group, the mask, and of all others.
std::string AccessList(const std::array<char, 5>& rights) {
  constexpr std::array<char, 5> Tags{0x01, 0x02, 0x04, 0x10, 0x20};
  std::string list("\2\0\0\0", 4);
  for (std::size_t i = 0; i < Tags.size(); ++i) {
    const std::string id = Tags[i] == 0x02 ? std::string("\xD2\x04\0\0", 4) : "\xFF\xFF\xFF\xFF";
    list.append({Tags[i], '\0', rights[i], '\0'}).append(id);
  }
  return list;
}

std::string AttributeOf(const std::string& path, const char* name) {
  std::string value(1000, '\0');
  const ssize_t size = getxattr(path.c_str(), name, value.data(), value.size());
  return size < 0 ? "none" : value.substr(0, static_cast<std::size_t>(size));
}

bool SetAttribute(const std::string& path, const char* name, const std::string& value) {
  return setxattr(path.c_str(), name, value.data(), value.size(), 0) == 0;
}

TEST_F(OneFile, WhatAFileHasBesidesItsBytesStays) {
  const std::string link = folder_ + "/link.ics";
  fs::create_symlink("team.ics", link);
  const auto mode = [&] { return static_cast<unsigned>(fs::status(path_).permissions()); };
  const auto save = [&](const std::string& from, const std::string& to) {
    Window(link).Rename(from, to);
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_THAT(Read(), HasSubstr("SUMMARY:" + to));
  };
  chmod(path_.c_str(), 0640);
  save("a", "c");
  EXPECT_EQ(mode(), 0640U);

  const std::string list = AccessList({6, 6, 4, 6, 0});
  const char* const access = "system.posix_acl_access";
  if (!SetAttribute(path_, "user.note", "mine") || !SetAttribute(path_, access, list)) {
    GTEST_SKIP() << "the file system here keeps no attributes";
  }
  save("c", "d");
  EXPECT_EQ(AttributeOf(path_, "user.note"), "mine");
  EXPECT_EQ(AttributeOf(path_, access), list) << "the group has other rights";
  EXPECT_EQ(mode(), 0660U);

  ASSERT_EQ(removexattr(path_.c_str(), access), 0);
  ASSERT_EQ(chmod(path_.c_str(), 0600), 0);
  ASSERT_TRUE(SetAttribute(folder_, "system.posix_acl_default", list));
  save("d", "e");
  EXPECT_EQ(AttributeOf(path_, access), "none") << "the folder's list opened the file";
  EXPECT_EQ(mode(), 0600U);
}

TEST_F(OneFile, AFileOfAnotherUserStaysTheirs) {
  constexpr uid_t Theirs = 1001;
  constexpr uid_t Ours = 1000;
  if (geteuid() != 0 || chown(path_.c_str(), Theirs, Theirs) != 0) {
    GTEST_SKIP() << "only the superuser can be two users";
  }
  chmod(folder_.c_str(), 0777);
  chmod(path_.c_str(), 0666);
  ASSERT_EQ(seteuid(Ours), 0);
  const std::string fault = FaultOf(
      [&] { CalendarFile(path_).Replace([](const std::string& bytes) { return bytes + "x"; }); });
  ASSERT_EQ(seteuid(0), 0);
  EXPECT_EQ(fault, "no error");
  struct stat status {};
  ASSERT_EQ(stat(path_.c_str(), &status), 0);
  EXPECT_EQ(status.st_uid, Theirs);
  EXPECT_TRUE(Read().ends_with("x"));
  EXPECT_EQ(FilesInFolder(), 1U);
}

TEST_F(OneFile, AFileWithSeveralNamesKeepsThem) {
  const std::string other = folder_ + "/other.ics";
  fs::create_hard_link(path_, other);
  Window window(path_);
  window.Rename("a", "a longer one");
  EXPECT_FALSE(window.calendar.CheckForChanges());
  window.Rename("a longer one", "c");
  EXPECT_TRUE(fs::equivalent(path_, other));
  EXPECT_EQ(Window(other).Subjects(), (Texts{"c", "b"}));
  EXPECT_EQ(FilesInFolder(), 2U);
}

TEST_F(OneFile, ASaveIntoAFileThatWasStoppedIsFinished) {
  const std::string before = Read();
  const std::string after = Calendar(Named("longer than before") + Named("b"));
  const std::string record = ".velkor-" + ShortHash("team.ics") + ".save";
  struct stat status {};
  ASSERT_EQ(stat(path_.c_str(), &status), 0);
  const std::string half = after.substr(0, 40) + before.substr(40);
  for (const std::string& torn : {before, half, after}) {
    WriteTo(record, SaveRecord::Text(status.st_ino, before, after));
    Write(torn);
    EXPECT_EQ(Window(path_).Subjects(), (Texts{"longer than before", "b"}));
    EXPECT_EQ(Read(), after);
    EXPECT_EQ(FilesInFolder(), 1U);
  }
  WriteTo(record, SaveRecord::Text(status.st_ino, before, after));
  Write(Calendar(Named("of another program")));
  EXPECT_EQ(Window(path_).Subjects(), Texts{"of another program"});
  for (const char* broken : {"", "velkor-save 1 2\nabc", "velkor-save 1 -2 9\nabcdefg"}) {
    WriteTo(record, broken);
    EXPECT_EQ(Window(path_).Subjects(), Texts{"of another program"});
    EXPECT_FALSE(fs::exists(folder_ + "/" + record));
  }
  EXPECT_GT(fs::file_size(path_ + ".unsaved"), before.size() + after.size());
  EXPECT_EQ(FilesInFolder(), 5U) << "one of those that are kept took the place of another";
}

TEST_F(OneFile, AnUnsavedRecordReachesTheFileByItsFirstSaveAndOnlyOnce) {
  Window first(path_);
  Window second(path_);
  CalendarItem record;
  record.fields.subject = "Colours: ";
  record.fields.body = "--LIST--\r\nLeave|255";
  record.start = record.end = Date::FromFields({2011, 1, 1, 1, 30, 0});
  for (Window* window : {&first, &second}) window->calendar.Folder().AddUnsaved(record);
  const std::string before = Read();
  const std::string filter = "[Start]>='12/31/2010' AND [Subject]='Colours: '";
  const auto mine = first.items->Find(filter);
  const auto theirs = second.items->Find(filter);
  EXPECT_EQ(mine->Body(), record.fields.body);
  Write(before + "\n");
  EXPECT_TRUE(first.calendar.CheckForChanges());
  EXPECT_NE(first.items->Find(filter), nullptr);

  mine->SetBody("--LIST--\r\nLeave|1");
  mine->Save();
  theirs->SetBody("--LIST--\r\nLeave|2");
  theirs->Save();
  first.calendar.CheckForChanges();
  EXPECT_EQ(mine->EntryID(), theirs->EntryID());
  EXPECT_EQ(first.items->Find(filter)->Body(), "--LIST--\r\nLeave|2");
  EXPECT_EQ(first.items->FindNext(), nullptr) << "there are two records";
  Window third(path_);
  third.calendar.Folder().AddUnsaved(record);
  EXPECT_EQ(third.items->Find(filter)->Body(), "--LIST--\r\nLeave|2");
  EXPECT_EQ(third.items->Find(filter)->Start(), record.start);
  Write(before);
  EXPECT_TRUE(first.calendar.CheckForChanges());
  EXPECT_EQ(first.items->Find(filter), nullptr) << "a saved record is like any other";
}

TEST_F(OneFile, AnyEndOfTheSavingProcessLeavesAWholeFile) {
  std::string text;
  for (int i = 0; i < 3000; ++i) text += Named("event " + std::to_string(i));
  text = Calendar(text);
  Write(text);
  const std::size_t size = Read().size();
  for (int round = 0; round < 40; ++round) {
    // A file with two names is written into.
    if (round == 20) fs::create_hard_link(path_, folder_ + "/other.ics");
    const std::size_t names = round < 20 ? 1 : 2;
    ChildProcess child([&] {
      for (int i = 0;; ++i) {
        CalendarFile(path_).Replace([&](const std::string& bytes) {
          std::string other =
              bytes.substr(0, size) + std::string(static_cast<std::size_t>(i % 7), '\n');
          std::replace(other.begin(), other.end(), i % 2 == 0 ? 'e' : 'x', i % 2 == 0 ? 'x' : 'e');
          return other;
        });
      }
      return 0;
    });
    usleep(static_cast<useconds_t>(3000 + 1700 * (round % 20)));
    child.Kill();
    CalendarFile(path_).FinishStoppedSave();
    const std::string bytes = Read().substr(0, size);
    ASSERT_TRUE(bytes == text || bytes == Replace(text, "e", "x")) << "the file is not whole";
    ASSERT_LE(FilesInFolder(), names + 1);
    ASSERT_EQ(fs::hard_link_count(path_), names);
    Write(text);
  }
  Window window(path_);
  window.Rename("event 5", "saved");
  EXPECT_EQ(FilesInFolder(), 2U) << "the work file of a killed process stays";
}

TEST_F(OneFile, ManyProcessesSavingAtOnceLoseNoSave) {
  constexpr int Writers = 4;
  constexpr int Saves = 15;
  std::vector<ChildProcess> children;
  for (int writer = 0; writer < Writers; ++writer) {
    children.emplace_back([&] {
      CalendarFile file(path_, {.patience = std::chrono::seconds(60)});
      for (int i = 0; i < Saves; ++i) {
        CalendarItem item;
        item.fields.subject = std::to_string(writer) + "-" + std::to_string(i);
        item.start = item.end = Date::FromYmd(2026, 4, 1);
        file.Replace([&](const std::string& bytes) {
          return AddToIcs(bytes, "team.ics", item, false, item.fields.subject).bytes;
        });
      }
      return 0;
    });
  }
  for (ChildProcess& child : children) EXPECT_EQ(child.Wait(), 0);
  EXPECT_EQ(Parse(Read()).items.size(), 2U + Writers * Saves);
}

}  // namespace
}  // namespace velkor
