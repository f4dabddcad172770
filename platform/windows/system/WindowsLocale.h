// platform/windows/system/WindowsLocale.h: the calling thread's locale.
#pragma once

#include "platform/LocaleApi.h"
#include "support/DatePattern.h"

namespace velkor {

/// The user's date and time formats are read once, when this is made.
class WindowsLocale : public LocaleApi {
 public:
  WindowsLocale();

  LocaleId ThreadLocale() override;
  std::string LocaleInfo(LocaleId locale, std::uint32_t kind) override;
  void EnumCalendarInfo(LocaleId locale, std::uint32_t calendarType,
                        const std::function<bool(std::string_view)>& name) override;
  int Compare(std::string_view a, std::string_view b) override;
  CodePage AnsiCodePage() override;
  CodePage CachePage() override { return code_pages::Utf8; }
  std::string ToCodePage(std::string_view text, CodePage page) override;
  std::string FromCodePage(std::string_view bytes, CodePage page) override;
  std::string ShortDate(Date date) override { return pattern_.ShortDate(date); }
  std::string DateToText(Date date) override { return pattern_.DateToText(date); }

 private:
  DatePattern pattern_;
};

}  // namespace velkor
