// tests/support/ScrollBarLog.h: the events of scroll bars as texts, with the value at that time.
#pragma once

#include <locale>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "support/cScrollBars.h"

namespace velkor {

/// Hears all events of bars that it outlives.
class ScrollBarLog {
 public:
  explicit ScrollBarLog(cScrollBars& bars) {
    const auto note = [this, &bars](std::string event) {
      return [this, &bars, event](ScrollBarSide side) {
        events_.push_back(event + Name(side) + std::to_string(bars.Value(side)));
      };
    };
    bars.onScroll = note("scroll");
    bars.onChange = note("change");
    bars.onScrollClick = note("click");
    bars.onMouseWheel = [this](ScrollBarSide side, double notches) {
      events_.push_back("wheel" + Name(side) + Text(notches));
    };
  }
  std::vector<std::string> Take() { return std::exchange(events_, {}); }

 private:
  static std::string Name(ScrollBarSide side) {
    return side == ScrollBarSide::Vertical ? " v " : " h ";
  }
  /// Whatever the locale.
  static std::string Text(double notches) {
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text.precision(3);
    text << notches;
    return text.str();
  }

  std::vector<std::string> events_;
};

}  // namespace velkor
