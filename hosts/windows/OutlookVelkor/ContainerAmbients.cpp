// hosts/windows/OutlookVelkor/ContainerAmbients.cpp: a container's properties, by their numbers.
#include "hosts/windows/OutlookVelkor/ContainerAmbients.h"

#include <utility>

namespace velkor {
namespace {

/// In points.
constexpr double LargestFont = 200;
/// Of CY, to one.
constexpr double CurrencyParts = 10'000;

std::optional<OLE_COLOR> ColourIn(const Variant& value) {
  if (value.IsEmpty()) return std::nullopt;
  try {
    const auto colour = static_cast<OLE_COLOR>(value.ToInt());
    COLORREF shown = 0;
    if (SUCCEEDED(::OleTranslateColor(colour, nullptr, &shown))) return colour;
  } catch (const Error&) {
    // No number is no colour.
  }
  return std::nullopt;
}

LCID LocaleIn(const Variant& value) {
  try {
    const auto locale = value.IsEmpty() ? LCID{0} : static_cast<LCID>(value.ToInt());
    return ::IsValidLocale(locale, LCID_INSTALLED) ? locale : 0;
  } catch (const Error&) {
    return 0;
  }
}

bool TruthIn(const Variant& value, bool fallback) {
  return value.Get().vt == VT_BOOL ? value.Get().boolVal != VARIANT_FALSE : fallback;
}

}  // namespace

Variant AmbientOf(ControlLife& life, const ComPtr<IOleClientSite>& site, DISPID member) {
  ComPtr<IDispatch> ambient;
  if (!site || FAILED(site.As(&ambient))) return {};
  Variant value;
  DISPPARAMS none{};
  const HRESULT result = life.Tell(ambient, [&](IDispatch& told) {
    return told.Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none,
                       value.Out(), nullptr, nullptr);
  });
  return SUCCEEDED(result) ? std::move(value) : Variant();
}

bool MakesSense(const Font& font) {
  const std::size_t length = ToWide(font.face).size();
  return length > 0 && length < LF_FACESIZE && font.size > 0 && font.size <= LargestFont;
}

std::optional<Font> FontOf(IUnknown* font) {
  ComPtr<IFont> known;
  if (font == nullptr || FAILED(font->QueryInterface(IID_PPV_ARGS(&known)))) return std::nullopt;
  BSTR name = nullptr;
  CY size{};
  BOOL bold = FALSE;
  BOOL italic = FALSE;
  SHORT charset = DEFAULT_CHARSET;
  const bool told = SUCCEEDED(known->get_Name(&name)) && SUCCEEDED(known->get_Size(&size)) &&
                    SUCCEEDED(known->get_Bold(&bold)) && SUCCEEDED(known->get_Italic(&italic)) &&
                    SUCCEEDED(known->get_Charset(&charset));
  Font found{ToUtf8(name), static_cast<double>(size.int64) / CurrencyParts, charset, bold != FALSE,
             italic != FALSE};
  ::SysFreeString(name);
  if (!told || !MakesSense(found)) return std::nullopt;
  return found;
}

void Ambients::Read(ControlLife& life, const ComPtr<IOleClientSite>& site, DISPID member) {
  const auto asked = [&](DISPID each, const auto& take) {
    if (member == DISPID_UNKNOWN || member == each) take(AmbientOf(life, site, each));
  };
  asked(DISPID_AMBIENT_BACKCOLOR, [this](const Variant& value) { back = ColourIn(value); });
  asked(DISPID_AMBIENT_FORECOLOR, [this](const Variant& value) { fore = ColourIn(value); });
  asked(DISPID_AMBIENT_FONT,
        [this](const Variant& value) { font = FontOf(value.ToObject().Get()); });
  asked(DISPID_AMBIENT_LOCALEID, [this](const Variant& value) { locale = LocaleIn(value); });
  asked(DISPID_AMBIENT_DISPLAYNAME, [this](const Variant& value) {
    displayName = value.Get().vt == VT_BSTR ? ToWide(value.ToText()) : std::wstring();
  });
  asked(DISPID_AMBIENT_UIDEAD, [this](const Variant& value) { uiDead = TruthIn(value, false); });
  asked(DISPID_AMBIENT_USERMODE, [this](const Variant& value) { design = !TruthIn(value, true); });
  asked(DISPID_AMBIENT_SHOWHATCHING,
        [this](const Variant& value) { hatching = TruthIn(value, false); });
  asked(DISPID_AMBIENT_SHOWGRABHANDLES,
        [this](const Variant& value) { grabHandles = TruthIn(value, false); });
}

}  // namespace velkor
