// platform/desktop/DesktopLocale.cpp: date patterns, identifiers and code pages by name.
#include "platform/desktop/DesktopLocale.h"

#include <QStringConverter>
#include <array>

#include "support/CodePage1252.h"
#include "support/values/Text.h"

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

/// The converter's name of a code page; null for one that is not known here.
const char* ConverterName(CodePage page) {
  struct Known {
    CodePage page;
    const char* name;
  };
  static constexpr auto Pages = std::to_array<Known>({{874, "windows-874"},
                                                      {932, "Shift_JIS"},
                                                      {936, "GBK"},
                                                      {949, "windows-949"},
                                                      {950, "Big5"},
                                                      {1250, "windows-1250"},
                                                      {1251, "windows-1251"},
                                                      {1253, "windows-1253"},
                                                      {1254, "windows-1254"},
                                                      {1255, "windows-1255"},
                                                      {1256, "windows-1256"},
                                                      {1257, "windows-1257"},
                                                      {1258, "windows-1258"},
                                                      {28591, "ISO-8859-1"}});
  for (const Known& known : Pages) {
    if (known.page == page) return known.name;
  }
  return nullptr;
}

/// One character in the page, '?' when it lacks it: only what leads back is an answer.
std::string Encoded(char32_t character, const char* page) {
  const QString text = QString::fromUcs4(&character, 1);
  QStringEncoder encode(page);
  if (!encode.isValid()) return "?";
  const QByteArray bytes = encode(text);
  QStringDecoder decode(page);
  return QString(decode(bytes)) == text ? bytes.toStdString() : "?";
}

}  // namespace

DesktopLocale::DesktopLocale(const QLocale& locale)
    : locale_(locale.language() == QLocale::C ? QLocale(QLocale::English, QLocale::UnitedStates)
                                              : locale),
      pattern_(locale_.dateFormat(QLocale::ShortFormat).toStdString(),
               locale_.timeFormat(QLocale::ShortFormat).contains(u'a', Qt::CaseInsensitive)) {}

LocaleId DesktopLocale::ThreadLocale() {
  return IdOf(locale_.name().toStdString());
}

std::string DesktopLocale::LocaleInfo(LocaleId, std::uint32_t kind) {
  if (kind == locale_info::DefaultAnsiCodePage) return "1252";
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

std::string DesktopLocale::ToCodePage(std::string_view text, CodePage page) {
  if (page == code_pages::WesternEuropean) return ToCodePage1252(text);
  if (page == code_pages::Utf8) return ValidUtf8(text);
  const char* const converter = ConverterName(page);
  std::string bytes;
  while (!text.empty()) {
    const char32_t character = TakeCharacter(text);
    if (character < 0x80) {
      bytes.push_back(static_cast<char>(character));
    } else {
      bytes += converter == nullptr ? "?" : Encoded(character, converter);
    }
  }
  return bytes;
}

std::string DesktopLocale::FromCodePage(std::string_view bytes, CodePage page) {
  if (page == code_pages::WesternEuropean) return FromCodePage1252(bytes);
  if (page == code_pages::Utf8) return ValidUtf8(bytes);
  const char* const converter = ConverterName(page);
  if (converter != nullptr) {
    QStringDecoder decode(converter);
    const QByteArrayView view(bytes.data(), static_cast<qsizetype>(bytes.size()));
    if (decode.isValid()) return QString(decode(view)).toStdString();
  }
  std::string text;
  for (const char c : bytes) text.push_back(static_cast<unsigned char>(c) < 0x80 ? c : '?');
  return text;
}

}  // namespace velkor
