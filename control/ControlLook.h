// control/ControlLook.h: decides how the control looks around its year.
#pragma once

#include <optional>

#include "values/Colour.h"
#include "values/Font.h"

namespace velkor {

/// What somebody wants of the look; unset where nothing is wanted.
struct LookWishes {
  std::optional<Colour> back;
  std::optional<Colour> fore;
  /// Face, size, bold and slant of the captions; grid and legend take the face.
  std::optional<Font> font;
};

/// What the control is drawn with outside of its grid and legend, which have colours of their own.
struct ControlLook {
  /// What the elements stand on.
  Colour back = Colour::FromRgb(250, 250, 248);
  /// Of texts and toolbar pictures.
  Colour fore = colours::Black;
  /// Unset: as the face writes its texts.
  std::optional<Font> font;

  friend bool operator==(const ControlLook&, const ControlLook&) = default;
};

/// What is set on the control itself counts before what its container wants. A font of a size that
/// does not fit the control's rows gets the nearest that does.
ControlLook LookOf(const LookWishes& own, const LookWishes& container);

}  // namespace velkor
