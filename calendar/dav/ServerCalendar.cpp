// calendar/dav/ServerCalendar.cpp: properties of a collection in our words.
#include "calendar/dav/ServerCalendar.h"

#include <QUrl>
#include <algorithm>
#include <array>

#include "calendar/dav/DavPath.h"
#include "values/Text.h"

namespace velkor {
namespace {

/// "#rrggbb" of "#RRGGBB" or "#RRGGBBAA"; empty for another text.
std::string ColourIn(std::string text) {
  constexpr std::size_t Opaque = 7;
  constexpr std::size_t WithAlpha = 9;
  if (text.size() != Opaque && text.size() != WithAlpha) return {};
  text.resize(Opaque);
  std::ranges::transform(text, text.begin(), [](char c) {
    return c >= 'A' && c <= 'F' ? static_cast<char>(c + 32) : c;
  });
  const bool isColour = text[0] == '#' && std::all_of(text.begin() + 1, text.end(), [](char c) {
                          return IsDigit(c) || (c >= 'a' && c <= 'f');
                        });
  return isColour ? text : std::string();
}

std::string LastPart(const std::string& url) {
  return QUrl(QString::fromStdString(url))
      .adjusted(QUrl::StripTrailingSlash)
      .fileName(QUrl::FullyDecoded)
      .toStdString();
}

/// A server that tells no rights may still refuse.
bool IsReadOnly(const DavResponse& response) {
  const DavValue* rights = response.Find(dav::Privileges);
  if (rights == nullptr) return false;
  return std::ranges::none_of(
      std::array{dav::MayDoAll, dav::MayWrite, dav::MayWriteContent, dav::MayBind},
      [&](std::string_view right) { return rights->Holds(right); });
}

bool Holds(const DavResponse& response, std::string_view property, std::string_view element) {
  const DavValue* value = response.Find(property);
  return value != nullptr && value->Holds(element);
}

}  // namespace

std::span<const std::string_view> CalendarProperties() {
  static constexpr std::array Names{dav::ResourceType, dav::DisplayName,     dav::Colour,
                                    dav::Components,   dav::Privileges,      dav::CTag,
                                    dav::SyncToken,    dav::SupportedReports};
  return Names;
}

ServerCalendar CalendarOf(const std::string& url, const DavResponse& response) {
  ServerCalendar calendar;
  calendar.url = CollectionUrl(WholeUrl(url, response.href).value_or(url));
  calendar.name = Printable(response.Text(dav::DisplayName));
  if (calendar.name.empty()) calendar.name = Printable(LastPart(calendar.url));
  calendar.colour = ColourIn(response.Text(dav::Colour));
  calendar.readOnly = IsReadOnly(response);
  calendar.isCalendar = Holds(response, dav::ResourceType, dav::Calendar);
  calendar.holdsAppointments = calendar.isCalendar && (response.Find(dav::Components) == nullptr ||
                                                       Holds(response, dav::Components, "VEVENT"));
  calendar.syncToken = response.Text(dav::SyncToken);
  calendar.tellsChanges =
      !calendar.syncToken.empty() || Holds(response, dav::SupportedReports, dav::SyncCollection);
  calendar.ctag = response.Text(dav::CTag);
  return calendar;
}

}  // namespace velkor
