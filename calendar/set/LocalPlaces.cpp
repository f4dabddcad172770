// calendar/set/LocalPlaces.cpp: folders of copies and mirrors, named by a hash.
#include "calendar/set/LocalPlaces.h"

#include <array>

#include "calendar/ics/file/ShortHash.h"

namespace velkor {

std::string PlaceKeyOf(const SetSource& source) {
  constexpr std::array KindNames{"file", "address", "server"};
  // A line's end stands in no user's name and no URL.
  return std::string(KindNames.at(static_cast<std::size_t>(source.kind))) + "\n" + source.user +
         "\n" + source.location;
}

std::string LocalPlaceOf(const SetSource& source, const std::string& dataFolder) {
  switch (source.kind) {
    case SourceKind::File:
      break;
    case SourceKind::Address:
      return dataFolder + "/subscriptions/" + ShortHash(PlaceKeyOf(source));
    case SourceKind::Server:
      return dataFolder + "/mirrors/" + ShortHash(PlaceKeyOf(source));
  }
  return source.location;
}

std::string LocalCalendarOf(const SetSource& source, const std::string& dataFolder) {
  const std::string place = LocalPlaceOf(source, dataFolder);
  return source.kind == SourceKind::Address ? place + "/calendar.ics" : place;
}

}  // namespace velkor
