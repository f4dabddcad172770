// hosts/windows/OutlookVelkor/ContainerAmbients.h: asks a container what surrounds its controls.
#pragma once

#include <optional>
#include <string>

#include "hosts/windows/OutlookVelkor/ControlLife.h"
#include "platform/windows/com/Variant.h"
#include "values/Font.h"

namespace velkor {

/// One ambient property of a container (DISPID_AMBIENT_...); empty where it does not say.
Variant AmbientOf(ControlLife& life, const ComPtr<IOleClientSite>& site, DISPID member);

/// Whether a font has a face and a size that fonts of the system have.
bool MakesSense(const Font& font);
/// Face, size, weight, slant and character set of a font object; none where it does not say.
std::optional<Font> FontOf(IUnknown* font);

/// What a container says of the surroundings. What it does not say, or says in a way that makes no
/// sense, is as it stands here.
struct Ambients {
  std::optional<OLE_COLOR> back;
  std::optional<OLE_COLOR> fore;
  std::optional<Font> font;
  /// That the container speaks; 0 for the user's.
  LCID locale = 0;
  /// What the container calls the control; empty for no name.
  std::wstring displayName;
  /// The control is to take no input, as while the container's program is halted.
  bool uiDead = false;
  /// The control is placed, not used.
  bool design = false;
  /// Whether a control that is active while it is being designed shows that by itself.
  bool hatching = false;
  bool grabHandles = false;

  /// Asks for one of them, or for all (DISPID_UNKNOWN).
  void Read(ControlLife& life, const ComPtr<IOleClientSite>& site, DISPID member);
};

}  // namespace velkor
