// tests/house/CoreRulesTest.cpp: the core stays portable, on examples and on the whole tree.
#include "tests/house/CoreRules.h"

#include <gmock/gmock.h>

namespace velkor::house {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

Findings InCore(const std::string& text) {
  return CheckCore({"model/Example.cpp", text});
}

TEST(CoreRules, ForeignHeadersAreFound) {
  EXPECT_THAT(InCore("#include <vector>\n#include \"support/values/Date.h\"\n"), IsEmpty());
  EXPECT_THAT(InCore("\n#include <fstream>\n"),
              ElementsAre("model/Example.cpp:2: foreign header fstream"));
  for (const char* header : {"filesystem", "iostream", "locale", "ctime", "windows.h",
                             "gtest/gtest.h", "libical/ical.h", "unistd.h"}) {
    EXPECT_THAT(InCore("# include <" + std::string(header) + ">\n"), SizeIs(1)) << header;
  }
  EXPECT_THAT(InCore("#include \"neighbour.h\"\n"), SizeIs(1));
}

TEST(CoreRules, NativeTypesAndSwitchesAreFound) {
  for (const char* line : {"#ifdef _WIN32", "#if defined(__linux__)", "HWND window;",
                           "void Draw(HDC dc);", "QString name;", "HRESULT Guard();"}) {
    EXPECT_THAT(InCore(line), SizeIs(1)) << line;
  }
  EXPECT_THAT(InCore("Queue QUEUE; int handle; Handle h; HDCX x;"), IsEmpty());
}

TEST(CoreRules, CallsToTheOutsideAreFound) {
  for (const char* line :
       {"auto now = std::chrono::system_clock::now();", "auto t = time(nullptr);",
        "auto t = std::time (nullptr);", "FILE* f = fopen(p, \"r\");", "std::getenv(\"TMP\");",
        "setlocale(LC_ALL, \"\");", "std::cout << 1;", "auto d = std::stod(text);",
        "std::printf(\"x\");"}) {
    EXPECT_THAT(InCore(line), SizeIs(1)) << line;
  }
}

TEST(CoreRules, WhatOnlyLooksAlikeIsLeftAlone) {
  EXPECT_THAT(InCore("// reads the time(zone), no fopen( here\n"), IsEmpty());
  EXPECT_THAT(InCore("/* getenv(\n fopen( */ int x = 1'000'000;\n"), IsEmpty());
  EXPECT_THAT(InCore("Text(\"time( \\\" fopen(\"); char c = '\"'; Say(R\"(cout)\");"), IsEmpty());
  EXPECT_THAT(InCore("event.time(); files->rename(a); Lifetime(1); std::snprintf(b, 4, \"x\");"),
              IsEmpty());
}

TEST(CoreRules, CodeAfterALiteralOrACommentIsStillSeen) {
  EXPECT_THAT(InCore("Say(\"a\\\\\"); fopen(x);\n"), SizeIs(1));
  EXPECT_THAT(
      InCore("/* a */ HWND w;\n// b\nHDC d;\n"),
      ElementsAre("model/Example.cpp:1: a native type", "model/Example.cpp:3: a native type"));
  EXPECT_THAT(InCore("Say(R\"x(a)\" b)x\"); HWND w;\n"), SizeIs(1));
}

TEST(CoreRules, BindCoreRefreshAndSeamsOnly) {
  const std::string text = "HWND window;\n";
  for (const char* path : {"control/A.h", "model/A.h", "view/A.h", "view/span/A.h", "print/A.h",
                           "exchange/A.h", "categories/A.h", "support/A.h", "support/values/A.h",
                           "refresh/A.cpp", "platform/Surface.h"}) {
    EXPECT_THAT(CheckCore({path, text}), SizeIs(1)) << path;
  }
  for (const char* path : {"platform/windows/A.h", "calendar/A.h", "hosts/A.cpp", "tests/A.cpp"}) {
    EXPECT_THAT(CheckCore({path, text}), IsEmpty()) << path;
  }
}

TEST(CoreRules, HoldInThisRepository) {
  EXPECT_THAT(CheckAll(ReadTree(VELKOR_SOURCE), CheckCore), IsEmpty());
}

}  // namespace
}  // namespace velkor::house
