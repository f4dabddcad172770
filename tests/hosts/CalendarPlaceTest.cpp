// tests/hosts/CalendarPlaceTest.cpp: where caches and settings of a calendar are, and are not.
#include "hosts/yearplan/CalendarSettings.h"
#include "hosts/yearplan/window/KeptSettings.h"
#include "platform/headless/MemorySettings.h"
#include "tests/hosts/YearplanCase.h"
#include "tests/platform/desktop/CalendarText.h"

#include <filesystem>

namespace velkor {
namespace {

using testing::HasSubstr;
using testing::Not;

TEST(CalendarSettings, EachCalendarHasItsOwnAndBeginsWithWhatAllShared) {
  MemorySettings store;
  store.Save("Year Planner", "Filtering Default", "Categories", "Work");
  CalendarSettings a(store, "/a.ics");
  CalendarSettings b(store, "/b.ics");
  EXPECT_EQ(a.Get("Year Planner", "Filtering Default", "Categories", ""), "Work");
  a.Save("Year Planner", "Filtering Default", "Categories", "");
  EXPECT_EQ(a.Get("Year Planner", "Filtering Default", "Categories", "none"), "");
  EXPECT_EQ(b.Get("Year Planner", "Filtering Default", "Categories", ""), "Work");
  EXPECT_EQ(b.Get("Year Planner", "Printing", "Bands", "3"), "3");
}

TEST(KeptSettings, WhatIsNotStoredLastsInMemoryAndIsToldOnce) {
  MemorySettings store;
  int told = 0;
  KeptSettings settings(store, [&] { ++told; });
  settings.Save("a", "s", "k", "stored");
  EXPECT_EQ(settings.Trouble(), "");
  store.readOnly = true;
  settings.Save("a", "s", "k", "kept");
  settings.Save("a", "s", "other", "kept");
  EXPECT_EQ(settings.Get("a", "s", "k", ""), "kept");
  EXPECT_EQ(store.Get("a", "s", "k", ""), "stored");
  EXPECT_EQ(told, 1);
  EXPECT_THAT(settings.Trouble(), HasSubstr("cannot be written"));
  store.readOnly = false;
  settings.Save("a", "s", "k", "later");
  EXPECT_EQ(store.Get("a", "s", "k", ""), "later");
  EXPECT_EQ(settings.Get("a", "s", "k", ""), "later");
}

class CachePlace : public Yearplan {};

TEST_F(CachePlace, WithoutACacheFolderEveryCommandWorksFromMemoryWithOneRemark) {
  Write("team.ics", Calendar(3));
  Write("blocked", "a file, no folder");
  const std::pair<QString, QString> places[] = {{File("blocked"), "XDG_CACHE_HOME"},
                                                {QString(), "HOME"}};
  for (const auto& [cache, variable] : places) {
    cacheHome_ = cache;
    home_ = File("blocked");
    for (const QStringList& command :
         {QStringList{"inspect", "team.ics", "--year", "2026", "--json"},
          {"render", "team.ics", "--year", "2026", "-o", "a.svg"},
          {"export", "team.ics", "--from", "2025", "--to", "2026", "-o", "a.xml"},
          {"print", "team.ics", "--year", "2026", "-o", "a.pdf"}}) {
      const Outcome outcome = Run(command);
      EXPECT_EQ(outcome.code, 0) << outcome.messages;
      EXPECT_THAT(outcome.messages, HasSubstr("named by " + variable.toStdString() + ")"));
      EXPECT_EQ(std::count(outcome.messages.begin(), outcome.messages.end(), '\n'), 1);
    }
    EXPECT_TRUE(Bytes("a.svg").contains("Event 2"));
    EXPECT_EQ(Bytes("a.xml").count("<Subject>"), 3);
    EXPECT_EQ(Run({"refresh", "team.ics", "--year", "2026"}).code, 1);
  }
}

TEST_F(CachePlace, CacheFilesOfAFolderThatDoesNotSayWhoseItIsAreNotShown) {
  namespace fs = std::filesystem;
  Write("team.ics", Calendar(1));
  const auto refreshed = [&](const char* year) {
    EXPECT_EQ(Run({"refresh", "team.ics", "--year", year}).code, 0);
    int files = 0;
    for (const auto& file : fs::recursive_directory_iterator(Path("cache/outlookvelkor"))) {
      files += file.path().extension() == ".tmp";
    }
    return files;
  };
  EXPECT_EQ(refreshed("2025"), 1);
  EXPECT_EQ(refreshed("2026"), 2);
  for (const auto& folder : fs::directory_iterator(Path("cache/outlookvelkor"))) {
    fs::remove(folder.path() / "calendar");
  }
  EXPECT_EQ(refreshed("2027"), 1);
}

TEST_F(CachePlace, CachesOfCalendarsThatAreGoneAreRemovedAfterNinetyDays) {
  namespace fs = std::filesystem;
  const auto age = [&](const fs::path& folder, int days) {
    const auto time = fs::file_time_type::clock::now() - std::chrono::hours(24 * days);
    for (const auto& entry : fs::directory_iterator(folder)) fs::last_write_time(entry, time);
    fs::last_write_time(folder, time);
  };
  const fs::path root = Path("cache/outlookvelkor");
  const std::tuple<const char*, int, bool, bool> calendars[] = {
      {"gone", 91, false, false}, {"recent", 89, false, true}, {"there", 91, true, true}};
  for (const auto& [name, days, exists, stays] : calendars) {
    const QString file = QString(name) + ".ics";
    Write(file, Calendar(1));
    ASSERT_EQ(Run({"refresh", file, "--year", "2026"}).code, 0);
    if (!exists) QFile::remove(File(file));
  }
  fs::create_directories(root / "of somebody else");
  for (const auto& folder : fs::directory_iterator(root)) {
    for (const auto& [name, days, exists, stays] : calendars) {
      if (folder.path().filename().string().starts_with(name)) age(folder, days);
    }
  }
  age(root / "of somebody else", 1000);
  Write("team.ics", Calendar(1));
  ASSERT_EQ(Run({"refresh", "team.ics", "--year", "2026"}).code, 0);
  std::string left;
  for (const auto& folder : fs::directory_iterator(root)) left += folder.path().filename().string();
  for (const auto& [name, days, exists, stays] : calendars) {
    EXPECT_EQ(left.find(name) != std::string::npos, stays) << name;
  }
  EXPECT_THAT(left, HasSubstr("of somebody else"));
  EXPECT_THAT(left, HasSubstr("team "));
}

}  // namespace
}  // namespace velkor
