// tests/platform/desktop/DesktopSystemTest.cpp: the user's folders, settings, registry, messages.
#include "platform/desktop/DesktopSystem.h"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QTemporaryDir>
#include <sstream>

#include "platform/desktop/DesktopRegistry.h"
#include "platform/desktop/DesktopSettings.h"
#include "platform/desktop/TerminalMessageBoxes.h"
#include "tests/platform/desktop/ChildProcess.h"
#include "tests/support/ErrorOf.h"

namespace velkor {
namespace {

using testing::HasSubstr;

class DesktopSystem : public testing::Test {
 protected:
  DesktopSystem() {
    qputenv("XDG_CACHE_HOME", folder_.filePath("cache").toUtf8());
    qputenv("XDG_CONFIG_HOME", folder_.filePath("config").toUtf8());
    qputenv("XDG_DATA_HOME", folder_.filePath("data").toUtf8());
  }

  QTemporaryDir folder_;
  DesktopEnvironment environment_;
  const std::string cacheFolder_ = folder_.filePath("cache/outlookvelkor").toStdString();

  unsigned ModeOf(const char* name) const {
    struct stat status {};
    EXPECT_EQ(::stat(folder_.filePath(name).toUtf8().constData(), &status), 0) << name;
    return status.st_mode & 0777;
  }
  std::string Refusal() {
    return ErrorOf([&] { environment_.Variable("TMP"); }).Description();
  }
};

TEST_F(DesktopSystem, TemporaryFolderIsThePrivateCacheFolder) {
  EXPECT_EQ(environment_.Variable("TMP"), cacheFolder_);
  EXPECT_EQ(ModeOf("cache/outlookvelkor"), 0700U);
  ASSERT_EQ(::chmod(cacheFolder_.c_str(), 0777), 0);
  EXPECT_EQ(environment_.Variable("TMP"), cacheFolder_);
  EXPECT_EQ(ModeOf("cache/outlookvelkor"), 0700U);
  EXPECT_EQ(environment_.Variable("VELKOR_NOT_SET"), "");
  EXPECT_EQ(PrivateDataFolder(), folder_.filePath("data/outlookvelkor").toStdString());
  EXPECT_EQ(ModeOf("data/outlookvelkor"), 0700U);
}

TEST_F(DesktopSystem, ForeignCacheFolderIsRefused) {
  ASSERT_EQ(::mkdir(folder_.filePath("cache").toUtf8().constData(), 0700), 0);
  ASSERT_EQ(::symlink(folder_.path().toUtf8().constData(), cacheFolder_.c_str()), 0);
  EXPECT_THAT(Refusal(), HasSubstr(cacheFolder_ + ": it is no folder"));
  ASSERT_EQ(::unlink(cacheFolder_.c_str()), 0);
  if (::geteuid() == 0) {
    ASSERT_EQ(::mkdir(cacheFolder_.c_str(), 0700), 0);
    ASSERT_EQ(::chown(cacheFolder_.c_str(), 12345, 12345), 0);
    EXPECT_THAT(Refusal(), HasSubstr("belongs to another user"));
  }
}

TEST_F(DesktopSystem, ClockIsLocalTime) {
  const Date before = DesktopClock().Now();
  EXPECT_TRUE(before.IsValid());
  const std::int64_t universal = ::time(nullptr) + Date::FromYmd(1970, 1, 1).Seconds();
  EXPECT_LE(std::abs(before.Seconds() - universal), 14 * 3600 + 2);
}

TEST_F(DesktopSystem, SettingsKeepAnyTextUnderAnyName) {
  DesktopSettings settings;
  settings.Save("Year Planner", "Filtering A/B\\C", "50%", "x, y; \"z\"\n@é日");
  settings.Save("Year Planner", "", "k", "empty section");
  settings.Save("Year Planner", "Printing", "k", "");
  DesktopSettings later;
  EXPECT_EQ(later.Get("Year Planner", "Filtering A/B\\C", "50%", "-"), "x, y; \"z\"\n@é日");
  EXPECT_EQ(later.Get("Year Planner", "", "k", "-"), "empty section");
  EXPECT_EQ(later.Get("Year Planner", "Printing", "k", "-"), "");
  EXPECT_EQ(later.Get("Year Planner", "Filtering A", "50%", "-"), "-");
  EXPECT_EQ(ModeOf("config/outlookvelkor"), 0700U);
  EXPECT_EQ(ModeOf("config/outlookvelkor/settings.ini"), 0600U);
  QFile::setPermissions(folder_.filePath("config/outlookvelkor/settings.ini"),
                        QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther);
  settings.Save("Year Planner", "Printing", "k", "again");
  EXPECT_EQ(ModeOf("config/outlookvelkor/settings.ini"), 0600U);
}

TEST_F(DesktopSystem, SettingsOfTwoProcessesDoNotLoseEachOthersKeys) {
  constexpr int Keys = 25;
  const auto saveAll = [](const char* section) {
    DesktopSettings settings;
    for (int key = 0; key < Keys; ++key) {
      settings.Save("Year Planner", section, std::to_string(key), section);
      settings.Save("Year Planner", section, "last", std::to_string(key));
    }
  };
  ChildProcess child([&] {
    saveAll("child");
    return 0;
  });
  saveAll("parent");
  EXPECT_EQ(child.Wait(), 0);
  DesktopSettings settings;
  for (const char* section : {"child", "parent"}) {
    EXPECT_EQ(settings.Get("Year Planner", section, "last", ""), std::to_string(Keys - 1));
    for (int key = 0; key < Keys; ++key) {
      EXPECT_EQ(settings.Get("Year Planner", section, std::to_string(key), ""), section) << key;
    }
  }
}

TEST_F(DesktopSystem, SettingsThatCannotBeWrittenAreAnError) {
  DesktopSettings settings("/dev/null/settings.ini");
  EXPECT_THROW(settings.Save("a", "s", "k", "v"), Error);
  EXPECT_EQ(settings.Get("a", "s", "k", "fallback"), "fallback");
  // Not even root makes a file here; another program is not to blame.
  try {
    DesktopSettings("/proc/settings.ini").Save("a", "s", "k", "v");
    ADD_FAILURE();
  } catch (const Error& error) {
    EXPECT_THAT(error.what(), HasSubstr("its folder cannot be written"));
  }
}

TEST_F(DesktopSystem, RegistryAnswersValuesOfItsFileInAnyCase) {
  const QString path = folder_.filePath("registry.json");
  DesktopRegistry registry(path.toStdString());
  const auto read = [&](const char* name) {
    return registry.QueryValue(RootKey::CurrentUser, "Control Panel\\International", name);
  };
  const auto write = [&](const char* text) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
  };
  EXPECT_EQ(read("sList").code, registry_codes::FileNotFound);
  write(R"({"HKEY_CURRENT_USER\\control panel\\International":
            {"sList": ";", "n": 1, "list": {"utf16": "A\u20ac"}, "other list": {"utf8": "A"}}})");
  EXPECT_EQ(read("SLIST").data, ";");
  EXPECT_EQ(read("sList").code, registry_codes::Success);
  EXPECT_EQ(read("other").code, registry_codes::FileNotFound);
  EXPECT_EQ(read("n").code, registry_codes::CantRead);
  EXPECT_EQ(read("list").data, std::string("A\0\xAC\x20", 4));
  EXPECT_EQ(read("list").code, registry_codes::Success);
  EXPECT_EQ(read("other list").code, registry_codes::CantRead);
  write("{broken");
  EXPECT_EQ(read("sList").code, registry_codes::CantRead);
}

TEST(TerminalMessageBoxes, PrintTheMessageAndAnswerTheDefaultButton) {
  std::ostringstream stream;
  TerminalMessageBoxes boxes(stream);
  EXPECT_EQ(boxes.Show({"The disk is full.", "File Error"}), MessageAnswer::Ok);
  EXPECT_EQ(boxes.Show({"Delete?", "", MessageButtons::YesNoCancel, MessageIcon::Question, 2}),
            MessageAnswer::No);
  EXPECT_EQ(stream.str(), "File Error: The disk is full.\nyearplan: Delete?\n");
}

}  // namespace
}  // namespace velkor
