// hosts/windows/OutlookVelkor/StockProperties.cpp: colours and a font, and how they are stored.
#include "hosts/windows/OutlookVelkor/StockProperties.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "hosts/windows/OutlookVelkor/ContainerAmbients.h"
#include "platform/Host.h"
#include "platform/windows/com/ComError.h"

namespace velkor {
namespace {

constexpr std::string_view BackKey = "BackColor";
constexpr std::string_view ForeKey = "ForeColor";
constexpr std::string_view FontKey = "Font";
constexpr std::string_view EnabledKey = "Enabled";
constexpr std::string_view Separator = ", ";
constexpr std::string_view Bold = "bold";
constexpr std::string_view Italic = "italic";

[[noreturn]] void RefuseValue(std::string_view name, const std::string& value,
                              const std::string& wanted) {
  throw Error(errors::InvalidProcedureCall,
              std::string(name) + " is \"" + value + "\"; " + wanted + ".", "YearPlan");
}

bool IsColour(OLE_COLOR colour) {
  COLORREF shown = 0;
  return SUCCEEDED(::OleTranslateColor(colour, nullptr, &shown));
}

std::optional<Colour> Shown(const std::optional<OLE_COLOR>& colour) {
  COLORREF shown = 0;
  if (!colour || FAILED(::OleTranslateColor(*colour, nullptr, &shown))) return std::nullopt;
  return Colour{static_cast<std::int32_t>(shown)};
}

/// As automation languages store a colour: a number of 32 bits with its sign.
std::string ToText(OLE_COLOR colour) {
  return std::to_string(static_cast<std::int32_t>(colour));
}

std::optional<OLE_COLOR> ColourIn(std::string_view name, const std::string& text) {
  if (text.empty()) return std::nullopt;
  std::int64_t number = 0;
  const char* const end = text.data() + text.size();
  const auto [after, fault] = std::from_chars(text.data(), end, number);
  const auto colour = static_cast<OLE_COLOR>(number);
  const bool fits = number >= INT32_MIN && number <= UINT32_MAX;
  if (fault != std::errc() || after != end || !fits || !IsColour(colour)) {
    RefuseValue(name, text, "a colour is a number, as 16777215 for white");
  }
  return colour;
}

/// "Tahoma, 9.75, bold, italic"
std::string ToText(const Font& font) {
  char size[32];
  const auto written = std::to_chars(std::begin(size), std::end(size), font.size);
  std::string text = font.face;
  text.append(Separator).append(size, written.ptr);
  if (font.bold) text.append(Separator).append(Bold);
  if (font.italic) text.append(Separator).append(Italic);
  return text;
}

std::vector<std::string> Parts(std::string_view text) {
  std::vector<std::string> parts;
  for (std::size_t end = 0; end != text.npos;) {
    end = text.find(Separator);
    parts.emplace_back(text.substr(0, end));
    if (end != text.npos) text.remove_prefix(end + Separator.size());
  }
  return parts;
}

ComPtr<IFont> MakeFontObject(const Font& font) {
  std::wstring face = ToWide(font.face);
  FONTDESC wanted{};
  wanted.cbSizeofstruct = sizeof wanted;
  wanted.lpstrName = face.data();
  wanted.cySize.int64 = std::llround(font.size * 10'000);
  wanted.sWeight = font.bold ? FW_BOLD : FW_NORMAL;
  wanted.sCharset = static_cast<SHORT>(font.charset);
  wanted.fItalic = font.italic;
  ComPtr<IFont> made;
  Check(::OleCreateFontIndirect(&wanted, IID_PPV_ARGS(&made)), "The font cannot be made");
  return made;
}

std::optional<Font> FontIn(const std::string& text) {
  if (text.empty()) return std::nullopt;
  const std::vector<std::string> parts = Parts(text);
  Font font;
  font.face = parts[0];
  bool known = parts.size() >= 2;
  if (known) {
    const char* const end = parts[1].data() + parts[1].size();
    const auto [after, fault] = std::from_chars(parts[1].data(), end, font.size);
    known = fault == std::errc() && after == end;
  }
  for (std::size_t i = 2; i < parts.size(); ++i) {
    font.bold = font.bold || parts[i] == Bold;
    font.italic = font.italic || parts[i] == Italic;
    known = known && (parts[i] == Bold || parts[i] == Italic);
  }
  if (!known || !MakesSense(font)) {
    RefuseValue(FontKey, text, "a font is a face and a size, as Tahoma, 9, bold");
  }
  return font;
}

}  // namespace

StockValues ReadStockValues(PropertyBag& bag) {
  const auto text = [&](std::string_view key) {
    return std::get<std::string>(bag.ReadProperty(key, std::string()));
  };
  // Containers keep values of their own under these names, which say nothing to us.
  const auto orUnset = [](const auto& read) -> decltype(read()) {
    try {
      return read();
    } catch (const Error&) {
      return {};
    }
  };
  StockValues values;
  values.back = orUnset([&] { return ColourIn(BackKey, text(BackKey)); });
  values.fore = orUnset([&] { return ColourIn(ForeKey, text(ForeKey)); });
  values.font = orUnset([&] { return FontIn(text(FontKey)); });
  values.enabled = std::get<bool>(bag.ReadProperty(EnabledKey, true));
  return values;
}

/// Hears what others do to a font object that they were given.
class StockProperties::FontWatch : public ComObject<IPropertyNotifySink> {
 public:
  FontWatch(StockProperties& owner, IFont& font) : owner_(&owner) {
    ComPtr<IConnectionPointContainer> points;
    if (FAILED(font.QueryInterface(IID_PPV_ARGS(&points)))) return;
    points->FindConnectionPoint(__uuidof(IPropertyNotifySink), &point_);
  }
  void Begin() {
    if (point_ && FAILED(point_->Advise(this, &cookie_))) point_.Reset();
  }
  void End() {
    owner_ = nullptr;
    if (const ComPtr<IConnectionPoint> point = std::move(point_)) point->Unadvise(cookie_);
  }
  STDMETHODIMP OnChanged(DISPID /*member*/) override {
    return Answer([&] {
      if (owner_ != nullptr) owner_->FontChanged();
    });
  }
  STDMETHODIMP OnRequestEdit(DISPID /*member*/) override { return S_OK; }

 private:
  StockProperties* owner_;
  ComPtr<IConnectionPoint> point_;
  DWORD cookie_ = 0;
};

StockProperties::StockProperties(std::function<void(std::string_view)> onChange)
    : onChange_(std::move(onChange)) {}

StockProperties::~StockProperties() {
  Hold(nullptr);
}

void StockProperties::SetColour(std::optional<OLE_COLOR>& colour, OLE_COLOR wanted,
                                std::string_view name) {
  if (!IsColour(wanted)) RefuseValue(name, ToText(wanted), "that is no colour");
  if (colour == wanted) return;
  colour = wanted;
  onChange_(name);
}

void StockProperties::SetEnabled(bool enabled) {
  if (std::exchange(values_.enabled, enabled) != enabled) onChange_(EnabledKey);
}

ComPtr<IFont> StockProperties::FontObject(const Font& shown) {
  if (!values_.font) Hold(MakeFontObject(shown));
  return font_;
}

void StockProperties::SetFont(IUnknown* font, bool copied) {
  const std::optional<Font> wanted = FontOf(font);
  if (font != nullptr && !wanted)
    RefuseValue(FontKey, "", "an object with face and size is wanted");
  ComPtr<IFont> held;
  if (font != nullptr) Check(font->QueryInterface(IID_PPV_ARGS(&held)), "The font is none");
  if (held && copied) held = MakeFontObject(*wanted);
  values_.font = wanted;
  Hold(std::move(held));
  onChange_(FontKey);
}

void StockProperties::Hold(ComPtr<IFont> font) {
  if (const ComPtr<FontWatch> watch = std::move(watch_)) watch->End();
  font_ = std::move(font);
  if (!font_) return;
  watch_ = ComPtr<FontWatch>(new FontWatch(*this, *font_.Get()));
  watch_->Begin();
}

/// An object that stopped making sense leaves the font as it was.
void StockProperties::FontChanged() {
  const std::optional<Font> font = FontOf(font_.Get());
  if (!font || font == values_.font) return;
  values_.font = font;
  onChange_(FontKey);
}

LookWishes StockProperties::Wishes() const {
  return WishesOf(values_.back, values_.fore, values_.font);
}

void StockProperties::Take(const StockValues& values) {
  values_ = values;
  // The object may have a font of the system that is only near to what was stored.
  Hold(values.font ? MakeFontObject(*values.font) : nullptr);
}

void StockProperties::Write(PropertyBag& bag) const {
  const auto write = [&](std::string_view key, const std::string& text) {
    bag.WriteProperty(key, text, std::string());
  };
  if (values_.back) write(BackKey, ToText(*values_.back));
  if (values_.fore) write(ForeKey, ToText(*values_.fore));
  if (values_.font) write(FontKey, ToText(*values_.font));
  if (!values_.enabled) bag.WriteProperty(EnabledKey, values_.enabled, true);
}

LookWishes WishesOf(const std::optional<OLE_COLOR>& back, const std::optional<OLE_COLOR>& fore,
                    const std::optional<Font>& font) {
  return {Shown(back), Shown(fore), font};
}

}  // namespace velkor
