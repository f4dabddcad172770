// platform/windows/elements/WindowsTimerPeer.cpp: timers of a window that nobody sees.
#include <algorithm>

#include "platform/windows/elements/MakePeer.h"
#include "platform/windows/system/MessageWindow.h"

namespace velkor {
namespace {

class TimerPeer : public ElementPeer {
 public:
  explicit TimerPeer(Timer& timer) : timer_(timer), window_([this](UINT, WPARAM) { Tick(); }) {
    timer_.Attach(this);
    Changed();
  }
  /// Also in the middle of its own tick.
  ~TimerPeer() override {
    timer_.Attach(nullptr);
    if (ended_ != nullptr) *ended_ = true;
  }
  TimerPeer(const TimerPeer&) = delete;
  TimerPeer& operator=(const TimerPeer&) = delete;

  void Changed() override {
    if (timer_.Enabled() == runs_) return;
    runs_ = timer_.Enabled();
    if (runs_) {
      ::SetTimer(window_.Get(), Id, static_cast<UINT>(std::max(1, timer_.Interval())), nullptr);
    } else {
      ::KillTimer(window_.Get(), Id);
    }
  }

 private:
  static constexpr UINT_PTR Id = 1;

  /// No tick begins within a tick, though a dialog that it opens may process messages for long.
  void Tick() {
    if (ended_ != nullptr) return;
    bool ended = false;
    ended_ = &ended;
    try {
      timer_.Tick();
    } catch (...) {
      // What users have to know, handlers have told.
    }
    if (!ended) ended_ = nullptr;
  }

  Timer& timer_;
  MessageWindow window_;
  bool runs_ = false;
  /// Where a tick that is under way wants to hear of this peer's end; null between ticks.
  bool* ended_ = nullptr;
};

}  // namespace

std::unique_ptr<ElementPeer> MakePeer(Timer& timer) {
  return std::make_unique<TimerPeer>(timer);
}

}  // namespace velkor
