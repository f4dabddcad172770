// control/ControlLook.cpp: takes the first wish that there is.
#include "control/ControlLook.h"

#include <algorithm>

namespace velkor {
namespace {

/// Of captions, in points: the toolbar's row has room for no more.
constexpr double SmallestText = 6;
constexpr double LargestText = 14;

}  // namespace

ControlLook LookOf(const LookWishes& own, const LookWishes& container) {
  ControlLook look;
  look.back = own.back.value_or(container.back.value_or(look.back));
  look.fore = own.fore.value_or(container.fore.value_or(look.fore));
  look.font = own.font ? own.font : container.font;
  if (look.font) look.font->size = std::clamp(look.font->size, SmallestText, LargestText);
  return look;
}

}  // namespace velkor
