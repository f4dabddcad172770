// view/Scrolling.h: computes where a wheel or a row that has to be seen moves a scroll bar.
#pragma once

#include <algorithm>
#include <cmath>

#include "platform/Elements.h"

namespace velkor {

/// Width of the bar of VScroll1 and of the legend.
inline constexpr Twips ScrollBarWidth = 255;

/// Turns of a wheel as values of a scroll bar; the fine steps of a touchpad add up.
class WheelSteps {
 public:
  /// @param stepsPerNotch  in small changes of the bar
  explicit WheelSteps(double stepsPerNotch) : stepsPerNotch_(stepsPerNotch) {}

  /// @param notches  above 0: away from the user, towards smaller values
  void Turn(ScrollBar& bar, double notches) {
    rest_ -= notches * stepsPerNotch_ * bar.SmallChange();
    const double whole = std::trunc(rest_);
    rest_ -= whole;
    const double value = std::clamp(bar.Value() + whole, 0.0, static_cast<double>(bar.Max()));
    bar.SetValue(static_cast<int>(value));
  }

 private:
  double stepsPerNotch_;
  double rest_ = 0;
};

/// Scrolls by no more than it takes to see a stretch; of one higher than the view its top is seen.
/// @param bar    counts pixels
/// @param view   height of what is in sight
/// @param pixel  height of a pixel
inline void ScrollIntoView(ScrollBar& bar, Twips top, Twips bottom, Twips view, double pixel) {
  if (bottom > bar.Value() * pixel + view) {
    bar.SetValue(static_cast<int>(std::ceil((bottom - view) / pixel)));
  }
  if (top < bar.Value() * pixel) bar.SetValue(static_cast<int>(top / pixel));
}

}  // namespace velkor
