// platform/desktop/QtElementWidgets.h: the widget of an element whose kind is not known.
#pragma once

#include <QWidget>

#include "platform/desktop/QtPeers.h"
#include "values/Error.h"

namespace velkor {

/// Makes the widget of an element of one of these kinds. Throws Error for other elements.
template <typename... Kinds>
QWidget* MakePeerOf(Element& element, QWidget* parent, Placement placement) {
  QWidget* widget = nullptr;
  const auto attempt = [&](auto* mirrored) {
    if (mirrored) widget = MakePeer(*mirrored, parent, placement);
    return mirrored != nullptr;
  };
  if ((attempt(dynamic_cast<Kinds*>(&element)) || ...)) return widget;
  throw Error(errors::InvalidProcedureCall, "A form cannot show the element " + element.Name(),
              "QtForms");
}

}  // namespace velkor
