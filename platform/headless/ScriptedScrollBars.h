// platform/headless/ScriptedScrollBars.h: scroll bars that a script works.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/ScrollBars.h"

namespace velkor {

/// Outlives the bars that it attached. Bars are known by their element's name.
class ScriptedScrollBars : public ScrollBars {
 public:
  struct Side {
    ScrollInfo info;
    bool enabled = true;
    bool visible = false;
  };
  /// What became of a window's bars.
  struct Window {
    std::array<Side, 2> sides;
    bool flat = false;
    bool attached = false;
    std::function<void(const WindowMessage&)> hear;

    Side& operator[](ScrollBarSide side) { return sides[static_cast<std::size_t>(side)]; }
  };
  std::map<std::string, std::shared_ptr<Window>> windows;
  CommonControlsVersion commonControls{6, 0};
  Extent thickness{255, 255};
  /// Names in the order of their numbers, which begin at FirstRegistered.
  std::vector<std::string> registered;
  static constexpr std::uint32_t FirstRegistered = 0xC000;
  /// What other programs' windows answer, by class, title and message.
  std::function<std::optional<std::int64_t>(std::string_view, std::string_view, std::uint32_t)>
      onAsk;

  /// A message to the window of an attached element; nothing happens to others.
  void Send(const std::string& element, const WindowMessage& message);
  /// What a click on an arrow or the track sends, `request` being one of scroll_requests.
  void Click(const std::string& element, ScrollBarSide side, std::uint64_t request);
  /// Drags the thumb to a position, and again to the next one.
  void Drag(const std::string& element, ScrollBarSide side, std::int32_t position);
  /// Lets a dragged thumb go.
  void LetGo(const std::string& element, ScrollBarSide side);
  /// Turns the wheel, or tilts it for the horizontal side, by notches; above 0: away from the user
  /// or to the right.
  void Turn(const std::string& element, ScrollBarSide side, double notches);

  std::unique_ptr<WindowScrollBars> Attach(Element& window) override;
  CommonControlsVersion CommonControls() override { return commonControls; }
  std::uint32_t RegisterMessage(std::string_view name) override;
  std::optional<std::int64_t> Ask(std::string_view windowClass, std::string_view title,
                                  std::uint32_t message) override {
    return onAsk ? onAsk(windowClass, title, message) : std::nullopt;
  }
};

}  // namespace velkor
