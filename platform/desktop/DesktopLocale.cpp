// platform/desktop/DesktopLocale.cpp: date patterns, names and identifiers.
#include "platform/desktop/DesktopLocale.h"

#include <array>

#include "values/Text.h"

namespace velkor {
namespace {

constexpr LocaleId EnglishUnitedStates = 0x0409;

struct KnownLocale {
  const char* name;
  LocaleId id;
};

/// Identifiers by language and territory, then by language alone (Windows Language Code Identifier
/// reference).
constexpr auto KnownLocales = std::to_array<KnownLocale>({
    {"ar_EG", 0x0C01}, {"de_AT", 0x0C07}, {"de_CH", 0x0807}, {"en_AU", 0x0C09}, {"en_CA", 0x1009},
    {"en_GB", 0x0809}, {"en_IE", 0x1809}, {"en_IN", 0x4009}, {"en_NZ", 0x1409}, {"en_ZA", 0x1C09},
    {"es_AR", 0x2C0A}, {"es_MX", 0x080A}, {"fr_BE", 0x080C}, {"fr_CA", 0x0C0C}, {"fr_CH", 0x100C},
    {"it_CH", 0x0810}, {"nl_BE", 0x0813}, {"pt_PT", 0x0816}, {"zh_HK", 0x0C04}, {"zh_TW", 0x0404},
    {"ar", 0x0401},    {"bg", 0x0402},    {"ca", 0x0403},    {"cs", 0x0405},    {"da", 0x0406},
    {"de", 0x0407},    {"el", 0x0408},    {"en", 0x0409},    {"es", 0x0C0A},    {"et", 0x0425},
    {"eu", 0x042D},    {"fa", 0x0429},    {"fi", 0x040B},    {"fr", 0x040C},    {"ga", 0x083C},
    {"he", 0x040D},    {"hi", 0x0439},    {"hr", 0x041A},    {"hu", 0x040E},    {"id", 0x0421},
    {"is", 0x040F},    {"it", 0x0410},    {"ja", 0x0411},    {"ko", 0x0412},    {"lt", 0x0427},
    {"lv", 0x0426},    {"nb", 0x0414},    {"nl", 0x0413},    {"nn", 0x0814},    {"pl", 0x0415},
    {"pt", 0x0416},    {"ro", 0x0418},    {"ru", 0x0419},    {"sk", 0x041B},    {"sl", 0x0424},
    {"sr", 0x0C1A},    {"sv", 0x041D},    {"th", 0x041E},    {"tr", 0x041F},    {"uk", 0x0422},
    {"vi", 0x042A},    {"zh", 0x0804},
});

LocaleId IdOf(const std::string& name) {
  for (const std::string& wanted : {name, name.substr(0, name.find('_'))}) {
    for (const KnownLocale& known : KnownLocales) {
      if (wanted == known.name) return known.id;
    }
  }
  return EnglishUnitedStates;
}

}  // namespace

DesktopLocale::DesktopLocale(const QLocale& locale)
    : locale_(locale.language() == QLocale::C ? QLocale(QLocale::English, QLocale::UnitedStates)
                                              : locale),
      collator_(locale_),
      pattern_(locale_.dateFormat(QLocale::ShortFormat).toStdString(),
               locale_.timeFormat(QLocale::ShortFormat).contains(u'a', Qt::CaseInsensitive)) {}

LocaleId DesktopLocale::ThreadLocale() {
  return IdOf(locale_.name().toStdString());
}

std::string DesktopLocale::LocaleInfo(LocaleId, std::uint32_t kind) {
  if (kind == locale_info::DefaultAnsiCodePage) return std::to_string(code_pages::Utf8);
  if (kind == locale_info::DecimalSign) return locale_.decimalPoint().toStdString();
  if (kind != locale_info::ShortDateOrder) return {};
  return std::to_string(static_cast<int>(pattern_.FieldOrder()));
}

void DesktopLocale::EnumCalendarInfo(LocaleId, std::uint32_t type,
                                     const std::function<bool(std::string_view)>& name) {
  using NameOf = QString (QLocale::*)(int, QLocale::FormatType) const;
  using namespace calendar_types;
  const auto give = [&](std::uint32_t first, std::uint32_t count, NameOf nameOf,
                        QLocale::FormatType format) {
    if (type < first || type - first >= count) return;
    name((locale_.*nameOf)(static_cast<int>(type - first) + 1, format).toStdString());
  };
  give(FirstDayName, 7, &QLocale::standaloneDayName, QLocale::LongFormat);
  give(FirstAbbreviatedDayName, 7, &QLocale::standaloneDayName, QLocale::ShortFormat);
  give(FirstMonthName, 12, &QLocale::standaloneMonthName, QLocale::LongFormat);
  give(FirstAbbreviatedMonthName, 12, &QLocale::standaloneMonthName, QLocale::ShortFormat);
}

int DesktopLocale::Compare(std::string_view a, std::string_view b) {
  const auto text = [](std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
  };
  return collator_.compare(text(a), text(b));
}

std::string DesktopLocale::ToCodePage(std::string_view text, CodePage /*page*/) {
  return ValidUtf8(text);
}

std::string DesktopLocale::FromCodePage(std::string_view bytes, CodePage /*page*/) {
  return ValidUtf8(bytes);
}

}  // namespace velkor
