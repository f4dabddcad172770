// platform/headless/ScriptedScrollBars.cpp: scroll bars that a script works.
#include "platform/headless/ScriptedScrollBars.h"

#include <algorithm>
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
      if (onMessage) onMessage(message);
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
  if (found != windows.end() && found->second->hear) found->second->hear(message);
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
