// model/Status.h: the colours of the status indicator and the messages that go with them.
#pragma once

#include <string_view>

#include "values/Colour.h"

namespace velkor::status {

inline constexpr Colour Downloading = Colour::FromRgb(0, 255, 0);
inline constexpr Colour Failed = Colour::FromRgb(255, 0, 0);
inline constexpr Colour Idle = Colour::FromRgb(212, 208, 200);
inline constexpr Colour Neutral = Colour::FromRgb(255, 255, 255);
/// A refresh is being started, or a cache file read.
inline constexpr Colour Starting = Colour::FromRgb(0, 0, 0);

/// The message that StatusChange raises for a colour; empty clears it.
constexpr std::string_view MessageOf(Colour colour) {
  if (colour == Downloading) {
    return "Downloading appointment data from Outlook, the year planner will be refreshed when "
           "this operation is completed";
  }
  if (colour == Failed) {
    return "An error occured while synchronising with Outlook, attempting to reset and refresh "
           "appointment data";
  }
  return {};
}

}  // namespace velkor::status
