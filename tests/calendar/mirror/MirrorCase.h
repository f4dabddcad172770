// tests/calendar/mirror/MirrorCase.h: a mirror in a folder of the test's own, and objects for it.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "calendar/ics/read/IcsAppointments.h"
#include "calendar/mirror/MirrorWriter.h"
#include "calendar/mirror/Outbox.h"
#include "calendar/mirror/ReadMirror.h"
#include "tests/calendar/ics/IcsCase.h"

namespace velkor {

/// An object of one event around these lines, which end in LF.
inline std::string ObjectOf(const std::string& uid, const std::string& lines) {
  return Calendar(Event("UID:" + uid + "\nDTSTAMP:20260101T000000Z\n" + lines));
}

class MirrorCase : public testing::Test {
 protected:
  ~MirrorCase() override { std::filesystem::remove_all(folder_); }

  std::string PathOf(const std::string& name) const { return folder_ + "/" + name; }
  void Overwrite(const std::string& name, const std::string& text) const {
    std::ofstream(PathOf(name), std::ios::binary) << text;
  }
  std::string Contents(const std::string& name) const {
    std::ifstream file(PathOf(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  std::string folder_ = testing::TempDir() + "mirror-" + std::to_string(getpid()) + "-" +
                        testing::UnitTest::GetInstance()->current_test_info()->name();
  Mirror mirror_{folder_};
  MirrorWriter writer_{mirror_, "Team"};
  Outbox outbox_{mirror_};
};

/// The second of a minute of 2 January 2026 of Greenwich's clock, in local time.
inline Date Moment(int minute) {
  constexpr std::int64_t Start = 1'767'312'000;
  return LocalTime(Start + minute * 60);
}

}  // namespace velkor
