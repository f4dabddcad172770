// platform/windows/elements/WindowsTimerPeer.cpp: timers of a window that nobody sees.
#include <algorithm>

#include "platform/windows/elements/WindowsPeer.h"
// After windows.h.
#include <commctrl.h>

namespace velkor {
namespace {

class TimerPeer : public ElementPeer {
 public:
  explicit TimerPeer(Timer& timer) : timer_(timer) {
    window_ = ::CreateWindowExW(0, PaintedWindowClass(), L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                ThisModule(), nullptr);
    ::SetWindowSubclass(window_, Procedure, Id, reinterpret_cast<DWORD_PTR>(this));
    timer_.Attach(this);
    Changed();
  }
  /// Also in the middle of its own tick.
  ~TimerPeer() override {
    timer_.Attach(nullptr);
    if (ended_ != nullptr) *ended_ = true;
    ::KillTimer(window_, Id);
    ::RemoveWindowSubclass(window_, Procedure, Id);
    ::DestroyWindow(window_);
  }
  TimerPeer(const TimerPeer&) = delete;
  TimerPeer& operator=(const TimerPeer&) = delete;

  void Changed() override {
    if (timer_.Enabled() == runs_) return;
    runs_ = timer_.Enabled();
    if (runs_) {
      ::SetTimer(window_, Id, static_cast<UINT>(std::max(1, timer_.Interval())), nullptr);
    } else {
      ::KillTimer(window_, Id);
    }
  }

 private:
  static constexpr UINT_PTR Id = 1;

  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                    UINT_PTR /*id*/, DWORD_PTR peer) {
    if (message != WM_TIMER) return ::DefSubclassProc(window, message, wParam, lParam);
    reinterpret_cast<TimerPeer*>(peer)->Tick();
    return 0;
  }

  /// No tick begins within a tick, though a dialog that it opens may process messages for long.
  void Tick() {
    if (ended_ != nullptr) return;
    bool ended = false;
    ended_ = &ended;
    try {
      timer_.Tick();
    } catch (...) {
      // Nothing may be thrown through the system; what users have to know, handlers have told.
    }
    if (!ended) ended_ = nullptr;
  }

  Timer& timer_;
  HWND window_ = nullptr;
  bool runs_ = false;
  /// Where a tick that is under way wants to hear of this peer's end; null between ticks.
  bool* ended_ = nullptr;
};

}  // namespace

std::unique_ptr<ElementPeer> MakePeer(Timer& timer) {
  return std::make_unique<TimerPeer>(timer);
}

}  // namespace velkor
