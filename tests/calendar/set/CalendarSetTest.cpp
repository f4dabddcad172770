// tests/calendar/set/CalendarSetTest.cpp: the file of a set, its faults, and two windows on one.
#include "calendar/set/CalendarSet.h"

#include <gmock/gmock.h>

#include <thread>

#include "calendar/set/LocalPlaces.h"
#include "tests/calendar/ics/CalendarFileCase.h"

namespace velkor {
namespace {

using testing::HasSubstr;

class CalendarSetCase : public CalendarFileCase {
 protected:
  CalendarSet Sample() const {
    CalendarSet set;
    set.path = folder_ + "/team.yearplan";
    set.barColours = BarColours::Calendar;
    AddSource(set, {.kind = SourceKind::File, .location = folder_ + "/anna/anna.ics"});
    AddSource(set, {.kind = SourceKind::File, .location = "/srv/far.ics", .name = "Fär \"x\""});
    AddSource(set, {.kind = SourceKind::Address,
                    .location = "webcal://example.org/days.ics",
                    .colour = Colour::FromRgb(0x33, 0x66, 0xCC),
                    .shown = false,
                    .background = true});
    AddSource(set,
              {.kind = SourceKind::Server, .location = "https://example.org/c/", .user = "anna"});
    set.defaultSource = set.sources[3].id;
    return set;
  }
  std::string TextOf(const std::string& name) const {
    std::ifstream file(folder_ + "/" + name);
    return {std::istreambuf_iterator<char>(file), {}};
  }
};

TEST_F(CalendarSetCase, KeepsEverythingAndMovesWithItsFolder) {
  const CalendarSet set = Sample();
  SaveSet(set);
  EXPECT_EQ(LoadSet(set.path), set);
  EXPECT_THAT(TextOf("team.yearplan"), HasSubstr("\"file\": \"anna/anna.ics\""));
  std::filesystem::create_directory(folder_ + "/moved");
  std::filesystem::rename(set.path, folder_ + "/moved/Team.YEARPLAN");
  EXPECT_EQ(LoadSet(folder_ + "/moved/Team.YEARPLAN").sources[0].location,
            folder_ + "/moved/anna/anna.ics");
  EXPECT_TRUE(IsSetPath("Team.YEARPLAN"));
  EXPECT_FALSE(IsSetPath(".yearplan"));
}

TEST_F(CalendarSetCase, IsReadAsPeopleWriteItAndKeepsWhatItDoesNotKnow) {
  const std::string path = WriteTo("own.yearplan",
                                   "\xEF\xBB\xBF{\"yearplan\": 1, \"later\": {\"a\": [1]},\n"
                                   "\"calendars\": [{\"file\": \"a.ics\", \"mood\": null},\n"
                                   "{\"file\": \"b.ics\"}]}");
  const CalendarSet set = LoadSet(path);
  ASSERT_EQ(set.sources.size(), 2U);
  EXPECT_NE(set.sources[0].id, set.sources[1].id);
  const std::string id = set.sources[1].id;
  UpdateSet(path, [&](CalendarSet& now) { FindSource(now, id)->name = "B"; });
  const std::string text = TextOf("own.yearplan");
  EXPECT_THAT(text, HasSubstr("\"later\": {\n    \"a\": ["));
  EXPECT_THAT(text, HasSubstr("\"mood\": null"));
  EXPECT_EQ(LoadSet(path).sources[1].id, id);
}

TEST_F(CalendarSetCase, OnePlaceIsInASetOnce) {
  CalendarSet set = Sample();
  const std::string id = set.sources[0].id;
  EXPECT_EQ(AddSource(set, set.sources[0]), id);
  EXPECT_EQ(set.sources.size(), 4U);
  SetSource other = set.sources[3];
  other.user = "ben";
  EXPECT_NE(AddSource(set, other), set.sources[3].id);
  EXPECT_NE(LocalPlaceOf(set.sources[4], "/d"), LocalPlaceOf(set.sources[3], "/d"));
}

TEST_F(CalendarSetCase, FaultsAreToldWithTheirPlace) {
  const std::vector<std::pair<std::string, std::string>> cases{
      {"{\"yearplan\": 1,\n \"calendars\": [,]}", "it is no valid JSON at line 2, column 16."},
      {"", "it is no valid JSON at line 1, column 1."},
      {"[]", "it is no object in braces."},
      {"{}", "the field yearplan is not the number of the form, as in \"yearplan\": 1."},
      {"{\"yearplan\": 1e999}", "a number in it is too large."},
      {"{\"yearplan\": 2}", "a later version of this program made it."},
      {"{\"yearplan\": 1, \"calendars\": 7}", "the field calendars is no list in brackets."},
      {"{\"yearplan\": 1, \"calendars\": [7]}", "calendars[0] is no object in braces."},
      {"{\"yearplan\": 1, \"calendars\": [{\"file\": \"a\", \"address\": \"b\"}]}",
       "the field calendars[0].file (or address, or server) is needed, just one of them."},
      {"{\"yearplan\": 1, \"calendars\": [{\"file\": \"\"}]}",
       "the field calendars[0].file is empty."},
      {"{\"yearplan\": 1, \"calendars\": [{\"file\": \"a\", \"colour\": \"blue\"}]}",
       "the field calendars[0].colour is no colour as in \"#3366CC\"."},
      {"{\"yearplan\": 1, \"calendars\": [{\"file\": \"a\", \"shown\": 1}]}",
       "the field calendars[0].shown is neither true nor false."},
      {"{\"yearplan\": 1, \"calendars\": [{\"id\": \"0000000a\", \"file\": \"a\"},"
       "{\"id\": \"0000000a\", \"file\": \"b\"}]}",
       "the field calendars[1].id is that of another calendar, too."},
      {"{\"yearplan\": 1, \"x\": " + std::string(100'000, '[') + std::string(100'000, ']') + "}",
       "its JSON is nested too deeply."},
  };
  for (const auto& [text, fault] : cases) {
    const std::string path = WriteTo("bad.yearplan", text);
    EXPECT_EQ(FaultOf([&] { LoadSet(path); }),
              "The set of calendars " + path + " cannot be read: " + fault);
    EXPECT_THAT(FaultOf([&] { UpdateSet(path, [](CalendarSet&) {}); }), HasSubstr(fault));
    EXPECT_EQ(TextOf("bad.yearplan"), text);
  }
  const std::string gone = folder_ + "/gone.yearplan";
  EXPECT_THAT(FaultOf([&] { LoadSet(gone); }), HasSubstr(gone + " does not exist"));
  EXPECT_THAT(FaultOf([&] { UpdateSet(gone, [](CalendarSet&) {}); }), HasSubstr("any more"));
  CalendarSet set = Sample();
  set.sources[0].name = "\xFF";
  EXPECT_THAT(FaultOf([&] { SaveSet(set); }), HasSubstr("UTF-8"));
  EXPECT_FALSE(std::filesystem::exists(set.path));
}

TEST_F(CalendarSetCase, TwoWindowsLoseNothingOfEachOther) {
  const CalendarSet set = Sample();
  SaveSet(set);
  constexpr int Each = 20;
  const auto add = [&](const std::string& name) {
    for (int i = 0; i < Each; ++i) {
      UpdateSet(set.path, [&](CalendarSet& now) {
        AddSource(now, {.location = "/x/" + name + std::to_string(i) + ".ics"});
      });
    }
  };
  std::thread other(add, "a");
  add("b");
  other.join();
  EXPECT_EQ(LoadSet(set.path).sources.size(), set.sources.size() + 2U * Each);
}

TEST_F(CalendarSetCase, SourcesThatNobodySavedMakeTheSameSetEachTime) {
  const std::vector<SetSource> sources{{.location = "/x/a.ics"}, {.location = "/x/b.ics"}};
  const CalendarSet set = SetOf(sources, folder_);
  EXPECT_TRUE(IsUnsavedSet(set.path, folder_));
  UpdateSet(set.path, [](CalendarSet& now) { now.sources[0].shown = false; });
  const CalendarSet again = SetOf({sources[1], sources[0]}, folder_);
  EXPECT_EQ(again.path, set.path);
  EXPECT_FALSE(again.sources[0].shown);
  EXPECT_NE(SetOf({sources[0]}, folder_).path, set.path);
}

}  // namespace
}  // namespace velkor
