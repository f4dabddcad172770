// platform/windows/elements/WindowsElementPeers.h: the window of an element whose kind is not
// known.
#pragma once

#include <memory>

#include "platform/windows/elements/WindowsPeer.h"
#include "values/Error.h"

namespace velkor {

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
