// platform/desktop/DesktopLocale.h: the locale of the user's session.
#pragma once

#include <QCollator>
#include <QLocale>

#include "platform/LocaleApi.h"
#include "support/DatePattern.h"

namespace velkor {

/// UTF-8 is the one code page there is. One calendar, the Gregorian one.
class DesktopLocale : public LocaleApi {
 public:
  explicit DesktopLocale(const QLocale& locale = QLocale::system());

  LocaleId ThreadLocale() override;
  std::string LocaleInfo(LocaleId locale, std::uint32_t kind) override;
  void EnumCalendarInfo(LocaleId locale, std::uint32_t calendarType,
                        const std::function<bool(std::string_view)>& name) override;
  int Compare(std::string_view a, std::string_view b) override;
  CodePage AnsiCodePage() override { return code_pages::Utf8; }
  CodePage CachePage() override { return code_pages::Utf8; }
  std::string ToCodePage(std::string_view text, CodePage page) override;
  std::string FromCodePage(std::string_view bytes, CodePage page) override;
  std::string ShortDate(Date date) override { return pattern_.ShortDate(date); }
  std::string DateToText(Date date) override { return pattern_.DateToText(date); }

 private:
  QLocale locale_;
  QCollator collator_;
  DatePattern pattern_;
};

}  // namespace velkor
