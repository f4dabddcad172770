// platform/windows/elements/WindowsScrollBars.h: a window's own scroll bars, as usual or flat.
#pragma once

#include <memory>
#include <set>
#include <string_view>

#include "platform/ScrollBars.h"

namespace velkor {

/// Bars of the window of the WindowsPeer that an element has when they are attached. A window may
/// have several; each hears all messages that concern it, the latest first, until one takes them.
/// The wheel is the window's parent's where the user set it to scroll nothing.
class WindowsScrollBars : public ScrollBars {
 public:
  WindowsScrollBars() : messages_(std::make_shared<std::set<std::uint32_t>>()) {}

  std::unique_ptr<WindowScrollBars> Attach(Element& window) override;
  CommonControlsVersion CommonControls() override;
  std::uint32_t RegisterMessage(std::string_view name) override;
  /// Waits for at most a second; no answer is none.
  std::optional<std::int64_t> Ask(std::string_view windowClass, std::string_view title,
                                  std::uint32_t message) override;

 private:
  /// Numbers that were registered; shared with the bars, which hear them.
  std::shared_ptr<std::set<std::uint32_t>> messages_;
};

}  // namespace velkor
