// tests/calendar/ics/CalendarFileCase.h: a calendar file in a folder of the test's own.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "tests/calendar/ics/IcsCase.h"

namespace velkor {

/// An all-day event with its subject as its UID.
inline std::string Named(const std::string& subject) {
  return Event("UID:" + subject + "\nSUMMARY:" + subject + "\nDTSTART:20260301\n");
}

class CalendarFileCase : public testing::Test {
 protected:
  CalendarFileCase() { std::filesystem::create_directories(folder_); }
  ~CalendarFileCase() override { std::filesystem::remove_all(folder_); }

  /// As another program would, into the file itself.
  std::string WriteTo(const std::string& name, const std::string& text) const {
    std::string path = folder_ + "/" + name;
    std::ofstream(path, std::ios::binary) << text;
    return path;
  }
  void Write(const std::string& text) const { WriteTo("team.ics", text); }
  std::string Read() const {
    std::ifstream file(path_, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  std::string folder_ = testing::TempDir() + "calendar-" + std::to_string(getpid()) + "-" +
                        testing::UnitTest::GetInstance()->current_test_info()->name();
  std::string path_ = folder_ + "/team.ics";
};

}  // namespace velkor
