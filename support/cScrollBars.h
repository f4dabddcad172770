// support/cScrollBars.h: a window's own scroll bars with the properties and events of a control.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "platform/ScrollBars.h"

namespace velkor {

/// As the common controls count them (commctrl.h, FSB_REGULAR_MODE and its neighbours).
enum class ScrollBarStyle { Regular = 0, Encarta = 1, Flat = 2 };

/// Properties are about one bar, horizontal or vertical; without an argument about that of
/// `Orientation`, the vertical one at first. Before Create they hold nothing, and setters do
/// nothing. Handlers may call all of it, and destroy it.
class cScrollBars {
 public:
  using Side = ScrollBarSide;

  /// `bars` outlives this.
  explicit cScrollBars(ScrollBars& bars);
  cScrollBars(const cScrollBars&) = delete;
  cScrollBars& operator=(const cScrollBars&) = delete;

  /// Attaches to a window, leaving another one, and watches its messages until the end. The bars
  /// are hidden and enabled then, with the range that the window has and a SmallChange of 1.
  void Create(Element& window);

  Side Orientation() const { return orientation_; }
  void SetOrientation(Side side) { orientation_ = side; }

  bool Visible() const { return Visible(orientation_); }
  bool Visible(Side side) const;
  void SetVisible(Side side, bool visible);
  bool Enabled() const { return Enabled(orientation_); }
  bool Enabled(Side side) const;
  void SetEnabled(Side side, bool enabled);

  /// The range of positions. A page of it, LargeChange, is in sight, so that Value is at most
  /// Max - LargeChange + 1. Max is never below Min. onChange follows where that moves Value.
  std::int32_t Min() const { return Min(orientation_); }
  std::int32_t Min(Side side) const;
  void SetMin(Side side, std::int32_t min);
  std::int32_t Max() const { return Max(orientation_); }
  std::int32_t Max(Side side) const;
  void SetMax(Side side, std::int32_t max);
  std::int32_t Value() const { return Value(orientation_); }
  std::int32_t Value(Side side) const;
  /// Kept within the range; onChange follows when it is another position.
  void SetValue(Side side, std::int32_t value);
  /// How far an arrow and the track move the position; below 0 is 0. A LargeChange that exceeds the
  /// range is the whole range until the range grows.
  std::int32_t SmallChange() const { return SmallChange(orientation_); }
  std::int32_t SmallChange(Side side) const;
  void SetSmallChange(Side side, std::int32_t change);
  std::int32_t LargeChange() const { return LargeChange(orientation_); }
  std::int32_t LargeChange(Side side) const;
  void SetLargeChange(Side side, std::int32_t change);

  /// Whether the common controls can draw flat bars, which they do from version 4.71 on.
  bool CanBeFlat() const;
  ScrollBarStyle Style() const { return style_; }
  /// Throws Error (InvalidProcedureCall) where the bars cannot be flat; the style stays as it was.
  void SetStyle(ScrollBarStyle style);

  /// Room that a visible bar takes: width of the vertical one, height of the other.
  Extent Thickness() const;

  /// The thumb is dragged; Value is where it is.
  std::function<void(Side)> onScroll;
  /// The position is another one; of a dragged thumb, once, when it was let go.
  std::function<void(Side)> onChange;
  /// An arrow or the track was clicked; Value is where that led, onChange came before.
  std::function<void(Side)> onScrollClick;
  /// Notches of the wheel, fractions included; above 0: away from the user or, of one that is
  /// tilted, to the right. How far that scrolls is the owner's to say.
  std::function<void(Side, double notches)> onMouseWheel;

 private:
  /// What the window does not keep of a bar.
  struct Bar {
    bool visible = false;
    bool enabled = true;
    std::int32_t smallChange = 1;
    /// As it was set; the window's page is at most the range.
    std::int32_t largeChange = 0;
    /// The position that onChange told last, while the thumb is dragged.
    std::optional<std::int32_t> draggedFrom;
  };
  /// Numbers of the messages of older wheel drivers; 0 is none.
  struct WheelDriver {
    std::uint32_t roll = 0;
    std::uint32_t support = 0;
  };

  Bar& Of(Side side) { return sides_[static_cast<std::size_t>(side)]; }
  const Bar& Of(Side side) const { return sides_[static_cast<std::size_t>(side)]; }
  ScrollInfo Info(Side side) const;
  void SetInfo(Side side, ScrollInfo info);
  /// True where that is another position.
  bool MoveTo(Side side, std::int64_t position);
  void TellChange(Side side);
  void Hear(const WindowMessage& message);
  void HearScroll(Side side, std::uint64_t request);
  void HearClick(Side side, std::int64_t change);
  void HearEndOfDrag(Side side);
  void HearWheel(Side side, std::int32_t delta);
  bool DriverAllowsWheel();

  ScrollBars& bars_;
  std::unique_ptr<WindowScrollBars> window_;
  Side orientation_ = Side::Vertical;
  ScrollBarStyle style_ = ScrollBarStyle::Regular;
  std::array<Bar, 2> sides_;
  WheelDriver driver_;
  /// Ends with this and with each attachment, so that what raised an event knows whether to go on.
  std::shared_ptr<const bool> attachment_;
};

}  // namespace velkor
