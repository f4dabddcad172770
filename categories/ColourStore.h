// categories/ColourStore.h: finds the hidden appointment that holds a planner's category colours.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Outlook.h"

namespace velkor {

class LocaleApi;

/// The colour records of one calendar folder; reads them and changes nothing.
class ColourStore {
 public:
  /// Both outlive this.
  ColourStore(OutlookFolder& folder, LocaleApi& locale) : folder_(folder), locale_(locale) {}

  /// The colour list of a planner title, split into lines with the header first: of its own
  /// record, else of a record in the older form. None when there is no such record or it holds no
  /// list worth keeping (its own: not one category; the older form: fewer than two). Throws what
  /// the calendar throws.
  std::optional<std::vector<std::string>> FindList(std::string_view titleName);

 private:
  std::unique_ptr<OutlookItem> FindRecord(std::string_view subject);

  OutlookFolder& folder_;
  LocaleApi& locale_;
};

}  // namespace velkor
