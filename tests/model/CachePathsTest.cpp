// tests/model/CachePathsTest.cpp: names and folders of cache files.
#include "model/CachePaths.h"

#include <gtest/gtest.h>

#include "platform/headless/HeadlessSeams.h"

namespace velkor {
namespace {

TEST(CachePaths, TheNameIsMadeOfUserYearFolderAndChecksum) {
  FixedLocale locale;
  EXPECT_EQ(CacheFileName("Jane Doe", 2005, "", locale), "Jane Doe20050.tmp");
  EXPECT_EQ(CacheFileName("Jane Doe", 2005, "C", locale), "Jane Doe2005C0.tmp");
  EXPECT_EQ(CacheFileName("Jo", 2026, "Ab\\Cd", locale), "Jo2026Cd322.tmp");
  EXPECT_EQ(CacheFileName("Jo", 2026, "Ab\\", locale), "Jo2026163.tmp");
  EXPECT_EQ(CacheFileName(" a/b:c ", 2005, "x\\y?<z", locale), "a_b_c 2005y__z456.tmp");
}

TEST(CachePaths, TheChecksumAddsAnsiCodesOfAllCharactersButTheLast) {
  FixedLocale locale;
  EXPECT_EQ(FolderChecksum("", locale), 0);
  EXPECT_EQ(FolderChecksum("é", locale), 0);
  EXPECT_EQ(FolderChecksum("éa", locale), 0xE9);
  EXPECT_EQ(FolderChecksum("€é", locale), 0x80);
  EXPECT_EQ(FolderChecksum("日b", locale), '?');
  locale.ansiCodePage = 65001;
  EXPECT_EQ(FolderChecksum("Aé", locale), 'A');
}

TEST(CachePaths, FollowTheThreePreferencesForTheDirectory) {
  ScriptedEnvironment environment;
  environment.separator = '\\';
  MemoryFiles files;
  const struct {
    const char* tmp;
    bool hasTemp;
    const char* directory;
  } cases[] = {{"d:\\scratch", true, "d:\\scratch"}, {"", true, "temp"}, {"", false, "c:"}};
  for (const auto& [tmp, hasTemp, directory] : cases) {
    environment.variables["TMP"] = tmp;
    files.directories.clear();
    if (hasTemp) files.directories.insert("c:\\temp");
    const CachePaths paths = MakeCachePaths("n.tmp", environment, files);
    EXPECT_EQ(paths.cacheFile, std::string(directory) + "\\n.tmp");
    EXPECT_EQ(paths.workFile, std::string(directory) + "\\~n.tmp");
  }
  environment.variables = {{"TMP", "/var/cache"}};
  environment.separator = '/';
  EXPECT_EQ(MakeCachePaths("n.tmp", environment, files).workFile, "/var/cache/~n.tmp");
}

}  // namespace
}  // namespace velkor
