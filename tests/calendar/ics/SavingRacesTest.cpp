// tests/calendar/ics/SavingRacesTest.cpp: saves while other programs write the same file.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <thread>

#include "calendar/ics/file/CalendarFile.h"
#include "calendar/ics/file/ShortHash.h"
#include "tests/calendar/ics/CalendarFileCase.h"
#include "tests/platform/desktop/ChildProcess.h"
#include "values/Error.h"

namespace velkor {
namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

class SavingRaces : public CalendarFileCase {
 protected:
  /// As a program does that knows nothing of our locks.
  void ReplaceAsAForeignProgram(const std::string& text) const {
    fs::rename(WriteTo("foreign", text), path_);
  }
};

TEST_F(SavingRaces, AForeignReplacementLetsNoSecondSaveOfOursIn) {
  Write("old\n");
  const CalendarFileOptions patient{.patience = std::chrono::seconds(20)};
  std::atomic<bool> otherIsIn = false;
  std::thread other;
  int calls = 0;
  CalendarFile(path_, patient).Replace([&](const std::string& bytes) {
    if (++calls == 1) {
      ReplaceAsAForeignProgram("foreign\n");
      other = std::thread([&] {
        CalendarFile(path_, patient).Replace([&](const std::string& theirs) {
          otherIsIn = true;
          return theirs + "other\n";
        });
      });
      std::this_thread::sleep_for(milliseconds(150));
    }
    EXPECT_FALSE(otherIsIn) << "two saves were at work at once";
    return bytes + "first\n";
  });
  other.join();
  EXPECT_EQ(Read(), "foreign\nfirst\nother\n");
}

TEST_F(SavingRaces, WhileAPlaceIsHeldOnlyItsHolderSaves) {
  Write("old\n");
  const auto add = [](const std::string& line) {
    return [line](const std::string& bytes) { return bytes + line; };
  };
  CalendarFile file(path_);
  CalendarFile other(path_, {.patience = milliseconds(50)});
  auto hold = file.Hold();
  EXPECT_THROW(other.Replace(add("other\n")), Error);
  EXPECT_THROW((void)other.Hold(), Error);
  file.Replace(add("first\n"));
  hold.reset();
  other.Replace(add("other\n"));
  EXPECT_EQ(Read(), "old\nfirst\nother\n");
}

TEST_F(SavingRaces, BesideAForeignWriterEverySaveIsWholeOrSaysThatTheFileKeepsChanging) {
  const std::string body(std::size_t{1} << 20, 'x');
  Write(body);
  const auto end = Clock::now() + milliseconds(1200);
  std::vector<ChildProcess> ours;
  for (const char own : {'a', 'b'}) {
    ours.emplace_back([&, own] {
      int faults = 0;
      while (Clock::now() < end) {
        try {
          CalendarFile(path_, {.patience = std::chrono::seconds(20)})
              .Replace([&](const std::string& bytes) {
                if (bytes.compare(0, body.size(), body) != 0) ++faults;
                std::string other = body;
                if (bytes.back() != own) other += own;
                return other;
              });
        } catch (const Error& error) {
          if (error.Description().find("keeps changing it") == std::string::npos) ++faults;
        }
      }
      return std::min(faults, 90);
    });
  }
  while (Clock::now() < end) {
    ReplaceAsAForeignProgram(body + "f");
    std::this_thread::sleep_for(milliseconds(15));
    EXPECT_EQ(Read().compare(0, body.size(), body), 0) << "the file is not whole";
  }
  for (ChildProcess& child : ours) EXPECT_EQ(child.Wait(), 0);
  EXPECT_FALSE(fs::exists(folder_ + "/.velkor-" + ShortHash("team.ics")));
}

TEST_F(SavingRaces, AProgramThatIsWritingIntoTheFileIsWaitedFor) {
  // A machine under load may keep the writer from its next part longer than we wait for it.
  constexpr int MostRounds = 30;
  int rounds = 0;
  for (bool isWhole = false; !isWhole && rounds < MostRounds; ++rounds) {
    Write("old\n");
    std::atomic<bool> hasBegun = false;
    std::thread foreign([&] {
      std::ofstream file(path_, std::ios::binary);
      for (const char* part : {"one\n", "two\n", "three\n", "four\n"}) {
        file << part << std::flush;
        hasBegun = true;
        std::this_thread::sleep_for(milliseconds(12));
      }
    });
    while (!hasBegun) std::this_thread::yield();
    CalendarFile(path_).Replace([](const std::string& bytes) { return bytes + "ours\n"; });
    foreign.join();
    isWhole = Read() == "one\ntwo\nthree\nfour\nours\n";
  }
  EXPECT_LT(rounds, MostRounds);
}

}  // namespace
}  // namespace velkor
