// tests/hosts/BackgroundRefreshTest.cpp: the control's refresh with the real worker.
#include "model/BackgroundRefresh.h"

#include "model/Status.h"
#include "platform/Elements.h"
#include "platform/desktop/DesktopFiles.h"
#include "tests/model/RefreshDoubles.h"
#include "tests/platform/desktop/RefreshCase.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Counts what the user does to a window.
class Window : public QObject {
 public:
  int handled = 0;

  void customEvent(QEvent*) override { ++handled; }
};

class RealBackgroundRefresh : public RefreshCase {
 protected:
  RealBackgroundRefresh() {
    inputs_ = InputsFor(Calendar(5));
    refresh_.CreateCacheUtility();
  }

  /// Starts a refresh in a new process and stops that process before it is done: it cannot end
  /// while the work file is held.
  pid_t StartAndHang() {
    const std::size_t before = Processes().size();
    const auto held = DesktopFiles().OpenForWriting(inputs_.workFile);
    refresh_.StartRefresh(false);
    if (!Await([&] { return Processes().size() > before; })) return -1;
    const pid_t process = Processes().back();
    ::kill(process, SIGSTOP);
    return process;
  }
  /// True when the window handles a hundred inputs while the refresh stays outstanding.
  bool HandlesInputMeanwhile() {
    Window window;
    for (int i = 0; i < 100; ++i) {
      QCoreApplication::postEvent(&window, new QEvent(QEvent::User));
    }
    return Await([&] { return window.handled == 100; }) && refresh_.Outstanding();
  }
  bool AwaitIdle() {
    return Await([&] { return !refresh_.Outstanding(); });
  }

  RefreshInputs inputs_;
  RefreshSeams around_;
  std::vector<Error> raised_;
  ProcessCacheUtilities processes_{[this](const Error& error) { raised_.push_back(error); },
                                   NumberedUtility()};
  Platform platform_ = around_.With(processes_, shell_);
  Colour status_;
  int reloads_ = 0;
  Timer tmrBackground_{"tmrBackground", 50000};
  BackgroundRefresh refresh_{platform_, tmrBackground_, [this] { return inputs_; },
                             [this](Colour colour) { status_ = colour; }, [this] { ++reloads_; }};
};

TEST_F(RealBackgroundRefresh, TheWindowHandlesInputWhileTheProcessWorksAndWhenItIsKilled) {
  pid_t process = StartAndHang();
  EXPECT_TRUE(HandlesInputMeanwhile());
  EXPECT_EQ(status_, status::Downloading);
  ::kill(process, SIGCONT);
  ASSERT_TRUE(AwaitIdle());
  EXPECT_EQ(reloads_, 1);
  const QByteArray written = Bytes("cache/c.tmp");

  process = StartAndHang();
  EXPECT_TRUE(HandlesInputMeanwhile());
  ::kill(process, SIGKILL);
  ASSERT_TRUE(AwaitIdle());
  EXPECT_THAT(around_.boxes.texts, ElementsAre("Error occured while fetching events."));
  EXPECT_FALSE(tmrBackground_.Enabled());
  EXPECT_EQ(Bytes("cache/c.tmp"), written);
}

}  // namespace
}  // namespace velkor
