// platform/ScrollBars.h: the scroll bars at a window's own edges, and the messages about them.
#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>

#include "values/Twips.h"

namespace velkor {

class Element;

/// The bars of a window; values of SetScrollInfo's nBar (winuser.h).
enum class ScrollBarSide { Horizontal = 0, Vertical = 1 };

/// What a bar holds, as the SCROLLINFO structure has it (winuser.h): positions from `min` to
/// `max`, of which a page of `page` is in sight, so that `position` is at most max - page + 1.
struct ScrollInfo {
  std::int32_t min = 0;
  std::int32_t max = 0;
  std::int32_t page = 0;
  std::int32_t position = 0;
  /// Where the thumb is while it is dragged.
  std::int32_t trackPosition = 0;

  friend bool operator==(const ScrollInfo&, const ScrollInfo&) = default;
};

/// A page is at most the whole range; positions, the thumb's too, are where a page begins.
constexpr ScrollInfo KeptWithinRange(ScrollInfo info) {
  info.max = std::max(info.min, info.max);
  const std::int64_t range = std::int64_t{info.max} - info.min + 1;
  const std::int64_t page = std::clamp<std::int64_t>(info.page, 0, range);
  const std::int64_t last = info.max - std::max<std::int64_t>(page - 1, 0);
  const auto kept = [&](std::int32_t position) {
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(position, info.min, last));
  };
  info.page = static_cast<std::int32_t>(std::min<std::int64_t>(page, INT32_MAX));
  info.position = kept(info.position);
  info.trackPosition = kept(info.trackPosition);
  return info;
}

/// A message of a watched window, as a window procedure gets it.
struct WindowMessage {
  std::uint32_t id = 0;
  std::uint64_t wParam = 0;
  std::int64_t lParam = 0;
};

/// Messages that windows hear about scrolling (winuser.h).
namespace window_messages {
inline constexpr std::uint32_t HorizontalScroll = 0x0114;
inline constexpr std::uint32_t VerticalScroll = 0x0115;
inline constexpr std::uint32_t MouseWheel = 0x020A;
/// The wheel is tilted.
inline constexpr std::uint32_t HorizontalWheel = 0x020E;
/// What a wheel's message counts for one notch (WHEEL_DELTA).
inline constexpr int DeltaPerNotch = 120;
}  // namespace window_messages

/// Low words of a scroll message's wParam (winuser.h, SB_LINEUP and its neighbours); "back" is up
/// or left.
namespace scroll_requests {
inline constexpr std::uint64_t LineBack = 0;
inline constexpr std::uint64_t LineForward = 1;
inline constexpr std::uint64_t PageBack = 2;
inline constexpr std::uint64_t PageForward = 3;
/// The thumb was let go.
inline constexpr std::uint64_t ThumbPosition = 4;
inline constexpr std::uint64_t ThumbTrack = 5;
inline constexpr std::uint64_t First = 6;
inline constexpr std::uint64_t Last = 7;
/// Follows each of the others when the user lets the bar go.
inline constexpr std::uint64_t EndScroll = 8;
}  // namespace scroll_requests

/// What a window hears when its own bar asks for something, one of scroll_requests.
constexpr WindowMessage ScrollMessage(ScrollBarSide side, std::uint64_t request) {
  return {.id = side == ScrollBarSide::Vertical ? window_messages::VerticalScroll
                                                : window_messages::HorizontalScroll,
          .wParam = request};
}

/// What a window hears when the wheel turns, or is tilted for the horizontal side; above 0: away
/// from the user or to the right. The message has 16 bits for it, so that more ends there.
constexpr WindowMessage WheelMessage(ScrollBarSide side, int delta) {
  const auto kept = static_cast<std::uint16_t>(std::clamp(delta, INT16_MIN, INT16_MAX));
  return {.id = side == ScrollBarSide::Vertical ? window_messages::MouseWheel
                                                : window_messages::HorizontalWheel,
          .wParam = std::uint64_t{kept} << 16};
}

/// The two bars of one window. Like a window's own, they do not move by themselves: whoever hears
/// onMessage sets the position. A window that is gone keeps its values and shows nothing.
class WindowScrollBars {
 public:
  virtual ~WindowScrollBars() = default;
  virtual ScrollInfo Info(ScrollBarSide side) = 0;
  /// Takes range, page and position, each kept within the others, and draws the bar anew.
  virtual void SetInfo(ScrollBarSide side, const ScrollInfo& info) = 0;
  virtual void Enable(ScrollBarSide side, bool enabled) = 0;
  virtual void Show(ScrollBarSide side, bool visible) = 0;
  /// Draws the bars flat, or as usual again; asked only where the common controls can do it.
  virtual void SetFlat(bool flat) = 0;
  /// Room that a bar takes when it is visible: width of the vertical one, height of the other.
  virtual Extent Thickness() = 0;

  /// Every scroll and wheel message of the window, and those that were registered. Who hears it may
  /// destroy these bars: they call a copy, and touch nothing of their own afterwards.
  std::function<void(const WindowMessage&)> onMessage;
};

/// Version of the common controls library (comctl32.dll); 0.0 where there is none.
struct CommonControlsVersion {
  int major = 0;
  int minor = 0;
};

class ScrollBars {
 public:
  virtual ~ScrollBars() = default;
  /// Watches an element's window until the result is destroyed. Without a native peer the bars
  /// hold their values all the same.
  virtual std::unique_ptr<WindowScrollBars> Attach(Element& window) = 0;
  virtual CommonControlsVersion CommonControls() = 0;
  /// The number of a message that programs know by its name; 0 where messages have no names.
  virtual std::uint32_t RegisterMessage(std::string_view name) = 0;
  /// Sends a message to another program's window and waits for its answer.
  /// @return none where there is no such window
  virtual std::optional<std::int64_t> Ask(std::string_view windowClass, std::string_view title,
                                          std::uint32_t message) = 0;
};

}  // namespace velkor
