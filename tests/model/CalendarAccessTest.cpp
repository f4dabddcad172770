// tests/model/CalendarAccessTest.cpp: finding the folder.
#include "model/CalendarAccess.h"

#include "tests/model/CalendarCase.h"

namespace velkor {
namespace {

class CalendarAccessTest : public CalendarCase {};

TEST_F(CalendarAccessTest, AFolderPathIsWalkedFromTheTopAndOtherKindsFallBackToTheDefault) {
  CalendarFolder& team = root_.AddFolder("Team", "team", outlook::ItemTypeAppointment);
  team.AddFolder("Rota", "rota", outlook::ItemTypeAppointment);
  root_.AddFolder("Inbox", "inbox", outlook::ItemTypeMail);
  const std::pair<const char*, const char*> paths[] = {
      {"", "calendar"},
      {"Calendar", "calendar"},
      {"Mailbox\\Team", "team"},
      {"Mailbox\\Team\\Rota", "rota"},
      {"Mailbox\\Inbox", "calendar"},
      {"Mailbox", "calendar"},
  };
  for (const auto& [path, entryId] : paths) {
    ASSERT_TRUE(access_.ResolveFolder(path)) << path;
    EXPECT_EQ(access_.EntryID(), entryId) << path;
    EXPECT_EQ(access_.StoreID(), "store");
    EXPECT_EQ(access_.Folder().EntryID(), entryId);
    EXPECT_EQ(access_.ReopenFolder()->EntryID(), entryId);
  }
  for (const char* path : {"calendar\\", "Nowhere", "Mailbox\\Nobody", "Mailbox\\Team\\Rota\\No",
                           "\\\\Mailbox\\Team", "Mailbox\\Team\\", "\\"}) {
    EXPECT_FALSE(access_.ResolveFolder(path)) << path;
    EXPECT_EQ(access_.EntryID(), "") << path;
  }
  store_.SetDefaultCalendar(nullptr);
  EXPECT_FALSE(access_.ResolveFolder(""));
  EXPECT_FALSE(access_.ResolveFolder("Mailbox\\Inbox"));
}

}  // namespace
}  // namespace velkor
