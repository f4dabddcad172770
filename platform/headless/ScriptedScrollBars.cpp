// platform/headless/ScriptedScrollBars.cpp: scroll bars that a script works.
#include "platform/headless/ScriptedScrollBars.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/Elements.h"

namespace velkor {
namespace {

class Bars : public WindowScrollBars {
 public:
  Bars(std::shared_ptr<ScriptedScrollBars::Window> window, Extent thickness)
      : window_(std::move(window)), thickness_(thickness) {
    window_->attached = true;
    window_->hear = [this](const WindowMessage& message) {
      const auto heard = onMessage;
      if (heard) heard(message);
    };
  }
  ~Bars() override {
    window_->attached = false;
    window_->hear = nullptr;
  }
  Bars(const Bars&) = delete;
  Bars& operator=(const Bars&) = delete;

  ScrollInfo Info(ScrollBarSide side) override { return (*window_)[side].info; }
  void SetInfo(ScrollBarSide side, const ScrollInfo& info) override {
    (*window_)[side].info = KeptWithinRange(info);
  }
  void Enable(ScrollBarSide side, bool enabled) override { (*window_)[side].enabled = enabled; }
  void Show(ScrollBarSide side, bool visible) override { (*window_)[side].visible = visible; }
  void SetFlat(bool flat) override { window_->flat = flat; }
  Extent Thickness() override { return thickness_; }

 private:
  std::shared_ptr<ScriptedScrollBars::Window> window_;
  Extent thickness_;
};

}  // namespace

void ScriptedScrollBars::Send(const std::string& element, const WindowMessage& message) {
  const auto found = windows.find(element);
  if (found == windows.end()) return;
  const auto hear = found->second->hear;
  if (hear) hear(message);
}

void ScriptedScrollBars::Click(const std::string& element, ScrollBarSide side,
                               std::uint64_t request) {
  Send(element, ScrollMessage(side, request));
  Send(element, ScrollMessage(side, scroll_requests::EndScroll));
}

void ScriptedScrollBars::Drag(const std::string& element, ScrollBarSide side,
                              std::int32_t position) {
  const auto found = windows.find(element);
  if (found == windows.end()) return;
  (*found->second)[side].info.trackPosition = position;
  // Messages carry 16 bits of the position.
  const std::uint64_t bits = static_cast<std::uint16_t>(position);
  Send(element, ScrollMessage(side, bits << 16 | scroll_requests::ThumbTrack));
}

void ScriptedScrollBars::LetGo(const std::string& element, ScrollBarSide side) {
  Click(element, side, scroll_requests::ThumbPosition);
}

void ScriptedScrollBars::Turn(const std::string& element, ScrollBarSide side, double notches) {
  const double delta = notches * window_messages::DeltaPerNotch;
  Send(element, WheelMessage(side, static_cast<int>(std::lround(delta))));
}

std::unique_ptr<WindowScrollBars> ScriptedScrollBars::Attach(Element& window) {
  auto& state = windows[window.Name()];
  state = std::make_shared<Window>();
  return std::make_unique<Bars>(state, thickness);
}

std::uint32_t ScriptedScrollBars::RegisterMessage(std::string_view name) {
  auto at = std::find(registered.begin(), registered.end(), name);
  if (at == registered.end()) at = registered.insert(registered.end(), std::string(name));
  return FirstRegistered + static_cast<std::uint32_t>(at - registered.begin());
}

}  // namespace velkor
