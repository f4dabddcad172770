// tests/support/RegIOTest.cpp: key paths taken apart, values read, codes in words.
#include "support/RegIO.h"

#include <gtest/gtest.h>

#include "platform/headless/MemoryRegistry.h"
#include "platform/headless/ScriptedMessageBoxes.h"

namespace velkor {
namespace {

constexpr auto International = "HKEY_CURRENT_USER\\Control Panel\\International";

class RegIOTest : public testing::Test {
 protected:
  MemoryRegistry registry_;
  ScriptedMessageBoxes messages_{[](const std::string& failure) { FAIL() << failure; }};
};

TEST_F(RegIOTest, WhateverGoesWrongTheAnswerIsError) {
  registry_.Set(RootKey::CurrentUser, "Locked", "value", {registry_codes::AccessDenied, "secret"});
  EXPECT_EQ(RegIO::ReadValue(registry_, messages_, "HKEY_CURRENT_USER\\Absent", "value"), "Error");
  EXPECT_EQ(RegIO::ReadValue(registry_, messages_, "HKEY_CURRENT_USER\\Locked", "value"), "Error");
  EXPECT_EQ(RegIO::ReadValue(registry_, messages_, "HKEY_NOBODY\\Locked", "value"), "Error");
  EXPECT_TRUE(messages_.Shown().empty());
}

TEST_F(RegIOTest, APathWithoutARootIsShownInAMessage) {
  for (const std::string path : {"", "Software\\Sub", "hkey_users\\Sub", " HKEY_USERS"}) {
    messages_.Expect("Incorrect Format:");
    EXPECT_EQ(RegIO::ReadValue(registry_, messages_, path, "value"), "Error");
    EXPECT_EQ(messages_.Shown().back().text, "Incorrect Format:\n\n" + path);
  }
}

TEST_F(RegIOTest, TheListSeparatorIsACommaWhenItCannotBeRead) {
  EXPECT_EQ(RegIO::ListSeparator(registry_, messages_), ",");
  registry_.Set(RootKey::CurrentUser, "Control Panel\\International", "sList", ";");
  EXPECT_EQ(RegIO::ListSeparator(registry_, messages_), ";");
  EXPECT_EQ(RegIO::ReadValue(registry_, messages_, International, "sList"), ";");
}

TEST(RegIO, UnknownCodesAreNamedByNumber) {
  EXPECT_EQ(RegIO::ErrorText(registry_codes::MoreData),
            "There is more data than the buffer has been allocated to hold.");
  EXPECT_EQ(RegIO::ErrorText(-7), "Undefined Error Code:  -7");
}

}  // namespace
}  // namespace velkor
