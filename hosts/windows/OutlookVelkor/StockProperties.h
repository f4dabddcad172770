// hosts/windows/OutlookVelkor/StockProperties.h: the properties that containers expect of every
// control.
#pragma once

#include <functional>
#include <optional>
#include <string_view>

#include "control/ControlLook.h"
#include "platform/windows/com/ComObject.h"

namespace velkor {

class PropertyBag;

/// What is stored of them; unset colours and font are the container's.
struct StockValues {
  std::optional<OLE_COLOR> back;
  std::optional<OLE_COLOR> fore;
  std::optional<Font> font;
  bool enabled = true;
};

/// A colour or a font that makes no sense is unset. Throws Error where Enabled is no truth value.
StockValues ReadStockValues(PropertyBag& bag);

/// Properties with identifiers of the system (DISPID_BACKCOLOR and so on). Until a colour or the
/// font is set, it is the container's; then it is the control's own, and kept with it.
class StockProperties {
 public:
  /// @param onChange  hears the name of each that has another value
  explicit StockProperties(std::function<void(std::string_view name)> onChange);
  ~StockProperties();
  StockProperties(const StockProperties&) = delete;
  StockProperties& operator=(const StockProperties&) = delete;

  const std::optional<OLE_COLOR>& BackColour() const { return values_.back; }
  const std::optional<OLE_COLOR>& ForeColour() const { return values_.fore; }
  bool Enabled() const { return values_.enabled; }
  /// Throw Error (InvalidProcedureCall) for what is no colour.
  void SetBackColour(OLE_COLOR colour) { SetColour(values_.back, colour, "BackColor"); }
  void SetForeColour(OLE_COLOR colour) { SetColour(values_.fore, colour, "ForeColor"); }
  void SetEnabled(bool enabled);

  /// An object that who gets it may change, which makes the font the control's own.
  /// @param shown  the font it has until one is set
  ComPtr<IFont> FontObject(const Font& shown);
  /// Null: the container's again. Throws Error (InvalidProcedureCall) for what is no font.
  /// @param copied  what others do to the object later does not count
  void SetFont(IUnknown* font, bool copied);

  LookWishes Wishes() const;

  /// Takes what was stored, which nobody has to be told of.
  void Take(const StockValues& values);
  /// Only what is set.
  void Write(PropertyBag& bag) const;

 private:
  class FontWatch;
  void SetColour(std::optional<OLE_COLOR>& colour, OLE_COLOR wanted, std::string_view name);
  void Hold(ComPtr<IFont> font);
  void FontChanged();

  std::function<void(std::string_view)> onChange_;
  StockValues values_;
  /// What others were given of the font.
  ComPtr<IFont> font_;
  ComPtr<FontWatch> watch_;
};

/// What a container and the colours and fonts of the system make of it.
LookWishes WishesOf(const std::optional<OLE_COLOR>& back, const std::optional<OLE_COLOR>& fore,
                    const std::optional<Font>& font);

}  // namespace velkor
