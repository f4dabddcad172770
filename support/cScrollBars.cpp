// support/cScrollBars.cpp: a window's own scroll bars with the properties and events of a control.
#include "support/cScrollBars.h"

#include <algorithm>
#include <type_traits>
#include <utility>

#include "values/Error.h"

namespace velkor {
namespace {

constexpr CommonControlsVersion FirstWithFlatBars{4, 71};

/// The window of drivers that are older than the system's own wheel messages (zmouse.h).
constexpr std::string_view DriverClass = "MouseZ";
constexpr std::string_view DriverTitle = "Magellan MSWHEEL";

constexpr std::uint64_t LowWord(std::uint64_t value) {
  return value & 0xFFFF;
}

constexpr std::int16_t SignedHighWord(std::uint64_t value) {
  return static_cast<std::int16_t>(static_cast<std::uint16_t>(value >> 16));
}

/// Calls a copy: a handler may replace itself or destroy its owner.
template <typename... Arguments>
void Raise(std::function<void(Arguments...)> handler, std::type_identity_t<Arguments>... of) {
  if (handler) handler(of...);
}

}  // namespace

cScrollBars::cScrollBars(ScrollBars& bars) : bars_(bars) {}

void cScrollBars::Create(Element& window) {
  window_.reset();
  sides_ = {};
  // Before the window is watched, which hears only messages that are registered by then.
  driver_ = {.roll = bars_.RegisterMessage("MSWHEEL_ROLLMSG"),
             .support = bars_.RegisterMessage("MSH_WHEELSUPPORT_MSG")};
  // About the driver's setting of lines to a notch. Known and left alone: how far a notch scrolls
  // is the owner's to say.
  bars_.RegisterMessage("MSH_SCROLL_LINES_MSG");
  attachment_ = std::make_shared<const bool>(true);
  window_ = bars_.Attach(window);
  for (const Side side : {Side::Horizontal, Side::Vertical}) {
    Of(side).largeChange = Info(side).page;
    window_->Show(side, false);
    window_->Enable(side, true);
  }
  if (style_ != ScrollBarStyle::Regular) window_->SetFlat(true);
  window_->onMessage = [this](const WindowMessage& message) { Hear(message); };
}

ScrollInfo cScrollBars::Info(Side side) const {
  return window_ ? window_->Info(side) : ScrollInfo{};
}

void cScrollBars::SetInfo(Side side, ScrollInfo info) {
  if (!window_) return;
  const std::int32_t before = Info(side).position;
  info.page = Of(side).largeChange;
  window_->SetInfo(side, KeptWithinRange(info));
  if (Info(side).position != before) TellChange(side);
}

bool cScrollBars::MoveTo(Side side, std::int64_t position) {
  ScrollInfo info = Info(side);
  const std::int32_t before = info.position;
  info.position = static_cast<std::int32_t>(std::clamp<std::int64_t>(position, info.min, info.max));
  window_->SetInfo(side, KeptWithinRange(info));
  return Info(side).position != before;
}

void cScrollBars::TellChange(Side side) {
  if (auto& from = Of(side).draggedFrom) from = Value(side);
  Raise(onChange, side);
}

bool cScrollBars::Visible(Side side) const {
  return window_ && Of(side).visible;
}

void cScrollBars::SetVisible(Side side, bool visible) {
  if (!window_) return;
  Of(side).visible = visible;
  window_->Show(side, visible);
}

bool cScrollBars::Enabled(Side side) const {
  return window_ && Of(side).enabled;
}

void cScrollBars::SetEnabled(Side side, bool enabled) {
  if (!window_) return;
  Of(side).enabled = enabled;
  window_->Enable(side, enabled);
}

std::int32_t cScrollBars::Min(Side side) const {
  return Info(side).min;
}

void cScrollBars::SetMin(Side side, std::int32_t min) {
  ScrollInfo info = Info(side);
  info.min = min;
  SetInfo(side, info);
}

std::int32_t cScrollBars::Max(Side side) const {
  return Info(side).max;
}

void cScrollBars::SetMax(Side side, std::int32_t max) {
  ScrollInfo info = Info(side);
  info.max = max;
  SetInfo(side, info);
}

std::int32_t cScrollBars::Value(Side side) const {
  return Info(side).position;
}

void cScrollBars::SetValue(Side side, std::int32_t value) {
  ScrollInfo info = Info(side);
  info.position = value;
  SetInfo(side, info);
}

std::int32_t cScrollBars::SmallChange(Side side) const {
  return window_ ? Of(side).smallChange : 0;
}

void cScrollBars::SetSmallChange(Side side, std::int32_t change) {
  if (window_) Of(side).smallChange = std::max(change, 0);
}

std::int32_t cScrollBars::LargeChange(Side side) const {
  return Info(side).page;
}

void cScrollBars::SetLargeChange(Side side, std::int32_t change) {
  if (!window_) return;
  Of(side).largeChange = std::max(change, 0);
  SetInfo(side, Info(side));
}

bool cScrollBars::CanBeFlat() const {
  const CommonControlsVersion version = bars_.CommonControls();
  return version.major > FirstWithFlatBars.major ||
         (version.major == FirstWithFlatBars.major && version.minor >= FirstWithFlatBars.minor);
}

void cScrollBars::SetStyle(ScrollBarStyle style) {
  const bool flat = style != ScrollBarStyle::Regular;
  if (flat && !CanBeFlat()) {
    throw Error(errors::InvalidProcedureCall,
                "Can't set non-regular style mode on this system - COMCTL32.DLL version < 4.71.",
                "cScrollBars");
  }
  const bool wasFlat = style_ != ScrollBarStyle::Regular;
  style_ = style;
  if (window_ && flat != wasFlat) window_->SetFlat(flat);
}

Extent cScrollBars::Thickness() const {
  return window_ ? window_->Thickness() : Extent{};
}

void cScrollBars::Hear(const WindowMessage& message) {
  // Messages with a handle are about a child that is a scroll bar (winuser.h, WM_VSCROLL).
  const bool own = message.lParam == 0;
  switch (message.id) {
    case window_messages::HorizontalScroll:
      if (own) HearScroll(Side::Horizontal, LowWord(message.wParam));
      return;
    case window_messages::VerticalScroll:
      if (own) HearScroll(Side::Vertical, LowWord(message.wParam));
      return;
    case window_messages::MouseWheel:
      HearWheel(Side::Vertical, SignedHighWord(message.wParam));
      return;
    case window_messages::HorizontalWheel:
      HearWheel(Side::Horizontal, SignedHighWord(message.wParam));
      return;
  }
  if (driver_.roll != 0 && message.id == driver_.roll && DriverAllowsWheel()) {
    HearWheel(Side::Vertical,
              static_cast<std::int32_t>(static_cast<std::uint32_t>(message.wParam)));
  }
}

void cScrollBars::HearScroll(Side side, std::uint64_t request) {
  const ScrollInfo info = Info(side);
  switch (request) {
    case scroll_requests::LineBack:
      return HearClick(side, -std::int64_t{Of(side).smallChange});
    case scroll_requests::LineForward:
      return HearClick(side, Of(side).smallChange);
    case scroll_requests::PageBack:
      return HearClick(side, -std::int64_t{info.page});
    case scroll_requests::PageForward:
      return HearClick(side, info.page);
    case scroll_requests::First:
      return SetValue(side, info.min);
    case scroll_requests::Last:
      return SetValue(side, info.max);
    case scroll_requests::ThumbTrack:
      // The 16 bits in the message are too few for a position.
      if (!Of(side).draggedFrom) Of(side).draggedFrom = info.position;
      if (MoveTo(side, info.trackPosition)) Raise(onScroll, side);
      return;
    case scroll_requests::ThumbPosition:
      if (!Of(side).draggedFrom) Of(side).draggedFrom = info.position;
      MoveTo(side, info.trackPosition);
      return HearEndOfDrag(side);
    case scroll_requests::EndScroll:
      return HearEndOfDrag(side);
  }
}

void cScrollBars::HearClick(Side side, std::int64_t change) {
  const std::weak_ptr<const bool> attachment = attachment_;
  if (MoveTo(side, Info(side).position + change)) TellChange(side);
  if (!attachment.expired()) Raise(onScrollClick, side);
}

void cScrollBars::HearEndOfDrag(Side side) {
  const auto from = std::exchange(Of(side).draggedFrom, std::nullopt);
  if (from && *from != Value(side)) Raise(onChange, side);
}

void cScrollBars::HearWheel(Side side, std::int32_t delta) {
  constexpr double OneNotch = window_messages::DeltaPerNotch;
  if (delta != 0) Raise(onMouseWheel, side, delta / OneNotch);
}

/// Whether its window does not say that the wheel is off; asked at each turn, since a driver may
/// come and go.
bool cScrollBars::DriverAllowsWheel() {
  return driver_.support != 0 &&
         bars_.Ask(DriverClass, DriverTitle, driver_.support).value_or(1) != 0;
}

}  // namespace velkor
