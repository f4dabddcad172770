// categories/StoredFilter.cpp: the category filter that a planner title keeps between sessions.
#include "categories/StoredFilter.h"

#include <utility>

#include "platform/Settings.h"

namespace velkor {
namespace {

using stored_settings::Application;
using stored_settings::False;
using stored_settings::True;

constexpr std::string_view ActiveKey = "Active";
constexpr std::string_view ModeKey = "UsingAND";

std::string SectionOf(std::string_view titleName) {
  return "Filtering " + std::string(titleName);
}

}  // namespace

CategoryFilter LoadFilter(Settings& settings, std::string_view titleName, std::string separator) {
  const std::string section = SectionOf(titleName);
  std::string text = settings.Get(Application, section, ActiveKey, {});
  if (text == False) text.clear();
  CategoryFilter filter(std::move(separator));
  filter.SetCategoryFilter(std::move(text));
  filter.SetFilterMode(settings.Get(Application, section, ModeKey, False) == True);
  return filter;
}

void SaveFilter(Settings& settings, std::string_view titleName, std::string_view text,
                bool matchAll) {
  const std::string section = SectionOf(titleName);
  // The mode first: without a text it does nothing.
  settings.Save(Application, section, ModeKey, matchAll ? True : False);
  settings.Save(Application, section, ActiveKey, text);
}

}  // namespace velkor
