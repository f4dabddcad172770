// control/ShownDates.h: writes dates for people to read.
#pragma once

#include <optional>
#include <string>

#include "platform/LocaleApi.h"
#include "support/DatePattern.h"

namespace velkor {

/// Dates in the user's form, or in that of another locale. What programs read, as filters of the
/// calendar program, stays in the user's form.
class ShownDates {
 public:
  /// `user` outlives this.
  // NOLINTNEXTLINE(google-explicit-constructor): the user's form is the usual one.
  ShownDates(LocaleApi& user) : user_(&user) {}
  ShownDates(LocaleApi& user, LocaleId locale)
      : user_(&user),
        pattern_(DatePattern(
            user.LocaleInfo(locale, locale_info::ShortDate),
            user.LocaleInfo(locale, locale_info::TimeFormat).find('t') != std::string::npos)) {}

  std::string ShortDate(Date date) const {
    return pattern_ ? pattern_->ShortDate(date) : user_->ShortDate(date);
  }
  /// With the time, unless it is midnight.
  std::string DateToText(Date date) const {
    return pattern_ ? pattern_->DateToText(date) : user_->DateToText(date);
  }

 private:
  LocaleApi* user_;
  std::optional<DatePattern> pattern_;
};

}  // namespace velkor
