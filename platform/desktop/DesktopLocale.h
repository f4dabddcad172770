// platform/desktop/DesktopLocale.h: the locale of the user's session.
#pragma once

#include <QLocale>

#include "platform/LocaleApi.h"

namespace velkor {

/// Dates are written in ASCII digits with a four-digit year, in the order and with the separators
/// of the locale's short date. The ANSI code page is 1252.
class DesktopLocale : public LocaleApi {
 public:
  explicit DesktopLocale(const QLocale& locale = QLocale::system());

  LocaleId ThreadLocale() override;
  std::string LocaleInfo(LocaleId locale, std::uint32_t kind) override;
  void EnumCalendarInfo(LocaleId locale, std::uint32_t calendarType,
                        const std::function<bool(std::string_view)>& name) override;
  CodePage AnsiCodePage() override { return 1252; }
  std::string ToCodePage(std::string_view text, CodePage page) override;
  std::string FromCodePage(std::string_view bytes, CodePage page) override;
  std::string ShortDate(Date date) override;
  std::string DateToText(Date date) override;

 private:
  QLocale locale_;
  /// One of y, M, d and literal characters; numbers of two digits where `padded_` says so.
  QString pattern_;
  bool padded_ = false;
  bool halfDays_ = false;
};

}  // namespace velkor
