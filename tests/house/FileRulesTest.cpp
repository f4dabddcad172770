// tests/house/FileRulesTest.cpp: how files look, on examples and on the whole tree.
#include "tests/house/FileRules.h"

#include <gmock/gmock.h>

namespace velkor::house {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

TEST(FileRules, AFileOpensWithItsPathAndPurpose) {
  const std::string good = "// model/A.h: one line that says it.\n#pragma once\n";
  EXPECT_THAT(CheckOpening({"model/A.h", good}), IsEmpty());
  EXPECT_THAT(CheckOpening({"model/B.h", good}), ElementsAre(HasSubstr("model/B.h:1:")));
  EXPECT_THAT(CheckOpening({"model/A.h", "#pragma once\n"}), SizeIs(1));
  EXPECT_THAT(CheckOpening({"model/A.h", "// model/A.h: one line that says it.\n\n"}),
              ElementsAre(HasSubstr("#pragma once")));
  EXPECT_THAT(CheckOpening({"model/A.cpp", "// model/A.cpp: one line that says it.\n"}), IsEmpty());
  EXPECT_THAT(CheckOpening({"model/A.cpp", "// model/A.cpp: .\n"}), SizeIs(1));
  EXPECT_THAT(CheckOpening({"model/A.cpp", "// model/A.cpp: a sentence that goes\n// on.\n"}),
              IsEmpty());
  EXPECT_THAT(CheckOpening({"model/A.cpp", "// model/A.cpp: a sentence that has\n\nno end.\n"}),
              SizeIs(1));
  EXPECT_THAT(CheckOpening({"model/A.cpp", ""}), SizeIs(1));
  EXPECT_THAT(CheckOpening({"README.md", "# Title\n"}), IsEmpty());
}

TEST(FileRules, AFileEndsBeforeLine701) {
  std::string text;
  for (int i = 0; i < 700; ++i) text += "int x;\n";
  EXPECT_THAT(CheckLength({"model/A.cpp", text}), IsEmpty());
  EXPECT_THAT(CheckLength({"model/A.cpp", text + "int y;"}), SizeIs(1));
  EXPECT_THAT(CheckLength({"README.md", text + text}), IsEmpty());
}

// The examples are put together here, so that this file passes its own check.
TEST(FileRules, PlacesOutsideTheRepositoryAreFound) {
  for (const std::string& line :
       {std::string("cp /wo") + "rk/x .", std::string("HOME=/ro") + "ot/a",
        std::string("deb.deb") + "ian.org", std::string("// TO") + "DO: later",
        std::string("// FIX") + "ME", std::string("as Part 3") + ".2 says",
        std::string("see spec") + ".md", std::string("// as the sp") + "ec says",
        std::string("our specific") + "ation"}) {
    EXPECT_THAT(CheckWords({"a.sh", "x\n" + line + "\n"}), ElementsAre(HasSubstr("a.sh:2:")))
        << line;
  }
  for (const char* line : {"cd build/work/x", "the special case", "Part 3 of 5", "the specimen",
                           "mktemp -d XXXXXX", "https://www.example.org/root"}) {
    EXPECT_THAT(CheckWords({"a.sh", line}), IsEmpty()) << line;
  }
}

TEST(FileRules, HoldInThisRepository) {
  const std::vector<SourceFile> tree = ReadTree(VELKOR_SOURCE);
  ASSERT_GT(tree.size(), 30u);
  EXPECT_THAT(CheckAll(tree, CheckOpening), IsEmpty());
  EXPECT_THAT(CheckAll(tree, CheckLength), IsEmpty());
  EXPECT_THAT(CheckAll(tree, CheckWords), IsEmpty());
}

TEST(SourceTree, ScriptsAndBuildFilesAreReadAndBuildFoldersAreNot) {
  std::vector<std::string> paths;
  for (const SourceFile& file : ReadTree(VELKOR_SOURCE)) paths.push_back(file.path);
  EXPECT_THAT(paths, testing::IsSupersetOf({"test.sh", ".ci/run", "CMakeLists.txt",
                                            "tests/house/FileRulesTest.cpp"}));
  for (const std::string& path : paths) EXPECT_FALSE(path.starts_with("build/")) << path;
}

}  // namespace
}  // namespace velkor::house
