// platform/windows/elements/MakePeer.h: makes the window of an element, of each kind.
#pragma once

#include <memory>

#include "platform/InputElements.h"
#include "platform/windows/elements/WindowsPeer.h"
#include "values/Error.h"

namespace velkor {

class DialogOwner;

/// Each makes the window of one element, a child of `parent`. The element outlives it. Of windows
/// that overlap the one made first lies on top, and is first in the order of the Tab key.
std::unique_ptr<WindowsPeer> MakePeer(Label& label, HWND parent,
                                      Placement placement = Placement::Bounds);
std::unique_ptr<WindowsPeer> MakePeer(CommandButton& button, HWND parent,
                                      Placement placement = Placement::Bounds);
std::unique_ptr<WindowsPeer> MakePeer(Image& image, HWND parent,
                                      Placement placement = Placement::Bounds);
/// May hold the windows of other elements.
std::unique_ptr<WindowsPeer> MakePeer(PictureBox& picture, HWND parent,
                                      Placement placement = Placement::Bounds);
std::unique_ptr<WindowsPeer> MakePeer(ScrollBar& scrollBar, HWND parent,
                                      Placement placement = Placement::Bounds);
std::unique_ptr<WindowsPeer> MakePeer(Toolbar& toolbar, HWND parent,
                                      Placement placement = Placement::Bounds);
/// A masked box takes only what fits its mask.
std::unique_ptr<WindowsPeer> MakePeer(TextBox& box, HWND parent,
                                      Placement placement = Placement::Bounds);
std::unique_ptr<WindowsPeer> MakePeer(CheckBox& box, HWND parent,
                                      Placement placement = Placement::Bounds);
std::unique_ptr<WindowsPeer> MakePeer(OptionButton& button, HWND parent,
                                      Placement placement = Placement::Bounds);
std::unique_ptr<WindowsPeer> MakePeer(ComboBox& box, HWND parent,
                                      Placement placement = Placement::Bounds);
std::unique_ptr<WindowsPeer> MakePeer(CheckListBox& list, HWND parent,
                                      Placement placement = Placement::Bounds);

/// These have no place of their own. `control` is the window whose points a menu pops up at; a menu
/// pops up inside a scope of `owner`.
std::unique_ptr<ElementPeer> MakePeer(Menu& menu, HWND control, DialogOwner& owner);
/// Ticks on the thread that made it, whether or not there is any window.
std::unique_ptr<ElementPeer> MakePeer(Timer& timer);

/// Makes the window of an element of one of these kinds. Throws Error for other elements.
template <typename... Kinds>
std::unique_ptr<WindowsPeer> MakePeerOf(Element& element, HWND parent, Placement placement) {
  std::unique_ptr<WindowsPeer> peer;
  const auto attempt = [&](auto* mirrored) {
    if (mirrored != nullptr) peer = MakePeer(*mirrored, parent, placement);
    return mirrored != nullptr;
  };
  if ((attempt(dynamic_cast<Kinds*>(&element)) || ...)) return peer;
  throw Error(errors::InvalidProcedureCall, "A form cannot show the element " + element.Name(),
              "WindowsForms");
}

}  // namespace velkor
