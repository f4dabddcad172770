// tests/categories/MasterListTest.cpp: the master category list as the registry holds it.
#include "categories/MasterList.h"

#include "tests/model/CalendarInMemory.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class MasterListTest : public CalendarInMemory {
 protected:
  std::vector<std::string> Names(const std::string& version = "11.0.5608") {
    EmbeddedOutlook outlook(store_, seams_.locale, {.userName = {}, .version = version});
    return MasterCategories(outlook, seams_.registry, messages_);
  }
  std::vector<std::string> NamesIn(std::string bytes) {
    seams_.registry.Set(RootKey::CurrentUser,
                        "Software\\Microsoft\\Office\\11.0\\Outlook\\Categories", "MasterList",
                        std::move(bytes));
    return Names();
  }
  /// UTF-16 with the low byte first.
  static std::string Bytes(std::u16string_view text) {
    std::string bytes;
    for (const char16_t unit : text) {
      bytes.push_back(static_cast<char>(unit & 0xFF));
      bytes.push_back(static_cast<char>(unit >> 8));
    }
    return bytes;
  }
};

TEST_F(MasterListTest, IsReadForTheMajorVersionAndSplitAtSemicolons) {
  EXPECT_THAT(NamesIn(Bytes(u" Holiday;Travel, far ;;  ; 🏖 \"Sea\";Ж")),
              ElementsAre("Holiday", "Travel, far", "🏖 \"Sea\"", "Ж"));
  EXPECT_THAT(Names("11"), ElementsAre("Holiday", "Travel, far", "🏖 \"Sea\"", "Ж"));
  EXPECT_THAT(Names("12.0"), IsEmpty());
  EXPECT_THAT(Names(""), IsEmpty());
}

TEST_F(MasterListTest, WhatIsNoWholeTextGivesWhatCanBeRead) {
  using namespace std::string_view_literals;
  EXPECT_THAT(NamesIn("Error"), IsEmpty());
  EXPECT_THAT(NamesIn(""), IsEmpty());
  EXPECT_THAT(NamesIn("A"), IsEmpty());
  EXPECT_THAT(NamesIn(Bytes(u"Error")), ElementsAre("Error"));
  EXPECT_THAT(NamesIn(Bytes(u"A;B\0"sv)), ElementsAre("A", "B"));
  EXPECT_THAT(NamesIn(Bytes(u"A;B\0"sv) + "x"), ElementsAre("A", "B"));
  // Halves of a pair: the first alone, the second alone, both the wrong way round.
  EXPECT_THAT(NamesIn(Bytes(u"\xD83C;x\xDFD6;\xDFD6\xD83C")),
              ElementsAre("\uFFFD", "x\uFFFD", "\uFFFD\uFFFD"));
}

}  // namespace
}  // namespace velkor
