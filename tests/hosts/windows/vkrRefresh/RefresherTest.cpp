// tests/hosts/windows/vkrRefresh/RefresherTest.cpp: every result code of the cache utility's work.
#include "hosts/windows/vkrRefresh/Refresher.h"

#include <filesystem>

#include "platform/windows/system/ProcessWatch.h"
#include "platform/windows/system/Wide.h"
#include "platform/windows/system/WindowsFiles.h"
#include "tests/model/CalendarInMemory.h"
#include "tests/model/RefreshDoubles.h"
#include "tests/platform/windows/PumpMessages.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

/// Leaves the calendar to its owner.
template <typename Outlook>
class Borrowed : public OutlookApplication {
 public:
  explicit Borrowed(Outlook& outlook) : outlook_(outlook) {}
  std::string Version() override { return outlook_.Version(); }
  std::string CurrentUserName() override { return outlook_.CurrentUserName(); }
  bool IsRunning() override { return outlook_.IsRunning(); }
  std::unique_ptr<OutlookNamespace> GetNamespace(std::string_view type) override {
    return outlook_.GetNamespace(type);
  }

 private:
  Outlook& outlook_;
};

class RefresherTest : public CalendarInMemory {
 protected:
  RefresherTest() {
    // The calendar reads dates as the refresher writes them: as the user does.
    char pattern[80]{};
    ::GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SSHORTDATE, pattern, sizeof pattern);
    seams_.locale.dates = DatePattern(pattern, true);
    std::filesystem::remove_all(folder_);
    std::filesystem::create_directory(folder_);
    for (int day = 1; day <= 3; ++day) {
      calendar_.Add(SampleItem(std::to_string(day), At(2026, 3, day), At(2026, 3, day + 1)));
    }
    Make([this] { return std::make_unique<Borrowed<EmbeddedOutlook>>(embedded_); });
  }
  ~RefresherTest() override { std::filesystem::remove_all(folder_); }

  template <typename... StartTimer>
  void Make(OpenOutlook openOutlook, StartTimer... startTimer) {
    refresher_ = std::make_shared<Refresher>(std::move(openOutlook), startTimer...);
    refresher_->onComplete = [this](short result, long error) {
      completions_.emplace_back(result, error);
    };
  }
  std::pair<short, long> Refresh() {
    completions_.clear();
    refresher_->Start(inputs_);
    EXPECT_THAT(completions_, IsEmpty()) << "from within the call";
    EXPECT_TRUE(PumpUntil([&] { return !completions_.empty(); }));
    PumpFor(50);
    EXPECT_EQ(completions_.size(), 1U);
    return completions_.empty() ? std::pair<short, long>{} : completions_[0];
  }
  std::string CacheBytes() { return WindowsFiles().Read(inputs_.cacheFile).value_or("none"); }

  const std::string folder_ = "refresher";
  RefreshInputs inputs_{2026, 1, folder_ + "\\c.tmp", folder_ + "\\~c.tmp", "calendar", "store"};
  std::shared_ptr<Refresher> refresher_;
  std::vector<std::pair<short, long>> completions_;
};

TEST_F(RefresherTest, EachFailureHasItsCodeAndLeavesTheCacheFile) {
  ASSERT_THAT(Refresh(), Pair(1, 0));
  const std::string before = CacheBytes();
  const RefreshInputs sound = inputs_;

  inputs_.workFile = folder_ + "\\none\\~c.tmp";
  EXPECT_THAT(Refresh(), Pair(2, 0));
  inputs_ = sound;
  inputs_.viewYear = -1;
  EXPECT_THAT(Refresh(), Pair(7, errors::InvalidProcedureCall));
  inputs_ = sound;
  inputs_.folderId = "gone";
  EXPECT_THAT(Refresh(), Pair(7, errors::CalendarFailed));
  inputs_ = sound;
  {
    // Somebody reads it and lets nobody delete it.
    const KernelHandle reader(::CreateFileW(ToWide(inputs_.cacheFile).c_str(), GENERIC_READ,
                                            FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
    EXPECT_THAT(Refresh(), Pair(3, 0));
  }
  Make([]() -> std::unique_ptr<OutlookApplication> { throw Error(-77, "not installed"); });
  EXPECT_THAT(Refresh(), Pair(5, -77));
  NoOutlook noSession;
  Make([&] { return std::make_unique<Borrowed<NoOutlook>>(noSession); });
  EXPECT_THAT(Refresh(), Pair(5, 1234));
  Make([]() -> std::unique_ptr<OutlookApplication> { throw std::bad_alloc(); });
  EXPECT_THAT(Refresh(), Pair(7, 0));
  Make(nullptr, [](HWND, UINT_PTR) { return false; });
  EXPECT_THAT(Refresh(), Pair(4, 0));
  Make(nullptr);

  refresher_->Start(inputs_);
  EXPECT_THROW(refresher_->Start(inputs_), Error) << "one at a time";
  refresher_->Stop();
  completions_.clear();
  EXPECT_TRUE(PumpUntil([&] { return !completions_.empty(); }));
  EXPECT_THAT(completions_, ElementsAre(Pair(6, 0)));

  EXPECT_EQ(CacheBytes(), before);
  EXPECT_FALSE(std::filesystem::exists(inputs_.workFile));
}

}  // namespace
}  // namespace velkor
