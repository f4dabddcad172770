// platform/desktop/QtScrollBars.h: scroll bars at the edges of a widget.
#pragma once

#include <string>
#include <vector>

#include "platform/ScrollBars.h"

namespace velkor {

/// Bars stand over the right and bottom edges of the widget that is the element's peer when they
/// are attached, above its other children. Wheel events that its children leave are theirs.
/// Positions are whole twips.
class QtScrollBars : public ScrollBars {
 public:
  std::unique_ptr<WindowScrollBars> Attach(Element& window) override;
  CommonControlsVersion CommonControls() override { return {}; }
  /// Numbered as the system numbers such messages, from 0xC000 on; nobody sends them.
  std::uint32_t RegisterMessage(std::string_view name) override;
  std::optional<std::int64_t> Ask(std::string_view, std::string_view, std::uint32_t) override {
    return std::nullopt;
  }

 private:
  std::vector<std::string> names_;
};

}  // namespace velkor
