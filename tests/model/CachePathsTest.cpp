// tests/model/CachePathsTest.cpp: folders of cache files, and sums of folder names.
#include "model/CachePaths.h"

#include <gtest/gtest.h>

#include "platform/headless/HeadlessSeams.h"

namespace velkor {
namespace {

TEST(CachePaths, TheChecksumStaysThatOfTheAnsiCodePageWhereItsCharactersTakeMoreBytes) {
  FixedLocale locale;
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
