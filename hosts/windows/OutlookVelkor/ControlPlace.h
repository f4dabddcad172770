// hosts/windows/OutlookVelkor/ControlPlace.h: the place that a container gives a control: its site,
// its size, and its window in the container's.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "hosts/windows/OutlookVelkor/ControlLife.h"
#include "hosts/windows/OutlookVelkor/ControlWindow.h"

namespace velkor {

/// How a control behaves in its place, as its container and its own properties have it.
struct ControlManner {
  /// What the container calls it; empty for no name.
  std::wstring name;
  /// It takes input.
  bool usable = true;
  /// While it is active it draws these around itself.
  bool hatching = false;
  bool grabHandles = false;
};

/// Embedded, with a site; in place, with a window; active, when the container's frame shows it so;
/// with the keyboard. Each is more than the one before, and the container may take away any of them
/// at any time.
class ControlPlace {
 public:
  /// The size of a control that was given none: 900 x 480 pixels at 96 to the inch.
  static constexpr SIZEL FirstExtent{23813, 12700};

  /// All outlive this.
  /// @param control  what the container's frame is told is active
  /// @param isWaiting  whether the pointer shows that the user has to wait
  ControlPlace(ControlLife& life, YearPlan& plan, IOleInPlaceActiveObject& control,
               std::function<bool()> isWaiting, std::function<void()> onSystemColours);
  ~ControlPlace();
  ControlPlace(const ControlPlace&) = delete;
  ControlPlace& operator=(const ControlPlace&) = delete;

  const ComPtr<IOleClientSite>& Site() const { return site_; }
  /// Another site takes the window away.
  void SetSite(IOleClientSite* site);
  /// Whether the container is being designed, not used; one that says nothing is used.
  bool IsDesignMode() const;
  /// In hundredths of a millimetre.
  SIZEL Extent() const { return extent_; }
  void SetExtent(SIZEL extent) { extent_ = extent; }

  /// Null without one.
  HWND Window() const { return window_ ? window_->Window() : nullptr; }
  /// Of the window; the screen's without one.
  Density Units() const { return window_ ? window_->Units() : DensityOf(nullptr); }
  bool IsInPlace() const { return window_ != nullptr; }

  /// In place from here on.
  HRESULT Open();
  void Close();
  /// Active, and with the keyboard, where it is in place.
  void TakeKeyboard(KeyboardEntry entry);
  /// What the user did to activate the control is done to what lies under the pointer.
  void TakePress(const MSG& press) {
    if (window_) window_->TakePress(press);
  }
  void UiDeactivate();
  void SetManner(ControlManner manner);
  /// The container shows a dialog of its own, or has done with it.
  void SetModeless(bool modeless);
  /// The control's look is another one.
  void LookChanged() {
    if (window_) window_->Dress();
  }
  void Repaint() {
    if (window_) window_->Repaint();
  }
  /// Moves the window to a place of which the container covers all but `clip`; null for nothing.
  void SetRects(const RECT& place, const RECT* clip);
  /// @return S_OK when the key was handled, else what the container answers
  HRESULT TranslateKey(MSG& message);

 private:
  HRESULT MakeWindow(IOleClientSite& site);
  void UiActivate();
  void Behave();
  void FocusChanged(bool has);
  void FrameIsModal(bool open);
  void Cover(const RECT& place, const RECT* clip);
  ComPtr<IOleControlSite> ControlSite() const;

  ControlLife& life_;
  YearPlan& plan_;
  IOleInPlaceActiveObject& control_;
  std::function<bool()> isWaiting_;
  std::function<void()> onSystemColours_;
  ComPtr<IOleClientSite> site_;
  ComPtr<IOleInPlaceSite> inPlaceSite_;
  ComPtr<IOleInPlaceFrame> frame_;
  ComPtr<IOleInPlaceUIWindow> document_;
  /// Those that were told of the dialogs that are open, from the outermost on; of some it is null.
  std::vector<ComPtr<IOleInPlaceFrame>> modalFrames_;
  SIZEL extent_;
  ControlManner manner_;
  bool modeless_ = true;
  bool uiActive_ = false;
  bool hasFocus_ = false;
  std::unique_ptr<ControlWindow> window_;
};

}  // namespace velkor
