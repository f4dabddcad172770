// platform/windows/elements/WindowsPeer.h: a child window that mirrors an element.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/Elements.h"
#include "platform/windows/drawing/Density.h"
#include "platform/windows/elements/WindowText.h"

namespace velkor {

/// Who decides where a window stands: its element's bounds, or the layout of a form.
enum class Placement { Bounds, Layout };

/// What a child window has behind it. The brush is its parent's.
struct PeerBackground {
  HBRUSH brush = nullptr;
  COLORREF colour = 0;
};

/// What a parent hands to its child of a message that the child's own doing brought there
/// (WM_COMMAND, WM_NOTIFY, WM_HSCROLL, WM_VSCROLL, WM_DRAWITEM, WM_CTLCOLOR...): the same message
/// with this added.
inline constexpr UINT Reflected = 0x2000;

/// Hands such a message of a parent to its child's peer. Every window procedure of a window that
/// holds peers asks this first.
/// @return none when no child is concerned
std::optional<LRESULT> ReflectMessage(UINT message, WPARAM wParam, LPARAM lParam);

/// A window attached to its element from here to its end; it is destroyed with it. The window may
/// be gone before, as windows go with their parents: then this does nothing any more. What the
/// element's handlers do may destroy the window, but not this: whoever owns peers keeps them until
/// the handlers returned (see DialogOwner::IsBusy).
class WindowsPeer : public ElementPeer {
 public:
  ~WindowsPeer() override;
  WindowsPeer(const WindowsPeer&) = delete;
  WindowsPeer& operator=(const WindowsPeer&) = delete;

  /// Null once the window is gone.
  HWND Window() const { return window_; }
  Element& Mirrored() const { return element_; }
  /// Width and height in pixels that the element needs to be shown whole; for a layout.
  /// @param width  that is there, for elements that wrap their text; 0 for no limit
  virtual SIZE NeededSize(int width);
  /// Whoever made the window calls this when it stands at another density, or its parent has
  /// another font: everything that has a size follows.
  void TakeDensity(Density density);

  void Changed() override;
  void SetFocus() override;

 protected:
  /// Makes the window, hidden, with the font of its parent, and attaches it to the element. Who
  /// derives from this calls Changed at the end of its constructor.
  /// @param windowClass  of the system, of the common controls, or PaintedWindowClass
  WindowsPeer(Element& element, HWND parent, Placement placement, const wchar_t* windowClass,
              DWORD style, DWORD extendedStyle = 0);

  /// Of the window; its lengths become pixels by it.
  const Density& Units() const { return density_; }
  HFONT ParentFont() const;
  /// The window has its parent's font, at a density that may be new: makes what depends on them.
  virtual void FitToDensity() {}
  /// Reads what only this kind of element has.
  virtual void Mirror() {}
  /// A message of the window, or one that its parent reflects; none for the window's own answer.
  virtual std::optional<LRESULT> Handle(UINT message, WPARAM wParam, LPARAM lParam);
  /// What to show when the pointer rests on the window; asked when it is due.
  virtual std::string ToolTipText() { return element_.ToolTip(); }
  /// Whether the pointer may bring a tool tip at all.
  virtual bool HasToolTip() const { return !element_.ToolTip().empty(); }
  /// Takes a tool tip off, so that it is asked for anew when the pointer rests again.
  void RearmToolTip();
  /// What the window procedure under this one does.
  LRESULT Default(UINT message, WPARAM wParam, LPARAM lParam);
  /// Sets the window's text, unless it has it.
  void SetText(const std::wstring& text);
  /// The window without its frame, at its own coordinates.
  RECT Area() const;
  /// What the window has behind it: asks the parent, as controls of the system do
  /// (WM_CTLCOLORSTATIC), which also sets the colours of `dc`; a parent without an opinion has the
  /// colours of dialogs.
  PeerBackground Background(HDC dc) const;
  /// Gives a window that shows no text the one that screen readers say: nobody sees it.
  void SetSpokenText();
  /// Whether what the window tells now is the answer to what this told it.
  bool IsMirroring() const { return mirroring_; }

 private:
  friend std::optional<LRESULT> ReflectMessage(UINT message, WPARAM wParam, LPARAM lParam);
  static LRESULT CALLBACK Subclass(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                   UINT_PTR id, DWORD_PTR peer);
  void MirrorShared();
  void MirrorToolTip();
  void EndToolTip();
  void GiveToolTip(LPARAM notice);

  Element& element_;
  Placement placement_;
  Density density_;
  HWND window_ = nullptr;
  HWND toolTip_ = nullptr;
  std::wstring dueToolTip_;
  bool mirroring_ = false;
};

}  // namespace velkor
