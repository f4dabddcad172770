// hosts/windows/OutlookVelkor/ControlWindow.h: the window in which one control lives.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "platform/windows/accessible/AccessibleWindows.h"
#include "platform/windows/elements/WindowsPeer.h"

namespace velkor {

class DialogOwner;
class YearPlan;

/// What a control's window tells and asks whoever made it.
struct ControlWindowCalls {
  /// The keyboard came to one of the control's windows, or went to a window of others.
  std::function<void(bool has)> onFocus;
  /// The system has other colours.
  std::function<void()> onSystemColours;
  /// Whether the pointer shows that the user has to wait.
  std::function<bool()> isWaiting;
};

/// Which element the keyboard comes to.
enum class KeyboardEntry {
  Grid,
  /// By the Tab key.
  First,
  /// By the Tab key with Shift.
  Last,
};

/// The entry by a Tab key that is down now.
KeyboardEntry EntryByTab();

/// A child of the container's window with a peer for each element of the control, which it tells
/// its size. It follows the density that the container's window has. The control outlives it. The
/// windows may be gone before it, with the container's.
class ControlWindow {
 public:
  /// @param place  in pixels of `parent`
  ControlWindow(YearPlan& plan, HWND parent, const RECT& place, DialogOwner& owner,
                ControlWindowCalls calls);
  /// No handler of an element may be running.
  ~ControlWindow();
  ControlWindow(const ControlWindow&) = delete;
  ControlWindow& operator=(const ControlWindow&) = delete;

  /// Null once it is gone.
  HWND Window() const { return window_; }
  /// As the windows are laid out.
  const Density& Units() const { return density_; }
  /// Takes the windows away; the peers stay for handlers that are running.
  void Destroy();
  void Move(const RECT& place);
  /// Takes the control's look over to the windows.
  void Dress();
  void Repaint();
  /// A window that is not usable takes no input.
  void SetUsable(bool usable);
  /// What says along its edge that the control is active while it is being designed.
  void SetFrame(bool hatching, bool grabHandles);
  /// Takes the keyboard to the grid, unless it is in one of the control's windows; by the Tab key
  /// to the first or the last element that it reaches.
  void Focus(KeyboardEntry entry);
  bool HasFocus() const;
  /// Hands a press of a mouse button on a window of others to the element that lies there.
  void TakePress(const MSG& press) const;
  /// Handles a key message by the rules of dialogs: Tab goes from element to element, and beyond
  /// the last one it is the container's; keys that the focused element wants go to it.
  /// @return whether it was handled
  bool TranslateKey(MSG& message);

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                    UINT_PTR id, DWORD_PTR self);
  static LRESULT CALLBACK WatchFocus(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                     UINT_PTR id, DWORD_PTR self);
  void MakePeers();
  HWND Keep(std::unique_ptr<WindowsPeer> peer);
  HWND NextStop(HWND from, bool backward) const;
  bool MoveByTab(HWND from);
  void TakeFont();
  void FollowDensity();
  LRESULT GiveColours(HDC dc) const;
  void Fit();
  void Paint();

  YearPlan& plan_;
  DialogOwner& owner_;
  ControlWindowCalls calls_;
  AccessibleWindows accessible_;
  Density density_;
  FontHandle font_;
  bool hatching_ = false;
  bool grabHandles_ = false;
  HWND window_ = nullptr;
  HWND grid_ = nullptr;
  HWND legendView_ = nullptr;
  HWND legendRows_ = nullptr;
  std::vector<std::unique_ptr<WindowsPeer>> peers_;
  std::vector<std::unique_ptr<ElementPeer>> menus_;
};

}  // namespace velkor
