// calendar/dav/DavPath.h: the addresses of calendars and of the objects in them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace velkor {

/// A path in one spelling, whatever a server encodes with percent signs and what not.
std::string CanonicalPath(std::string_view path);

/// An address that a server wrote into an answer, made whole.
/// @param url   where the answer came from
/// @return none for what is no address over http or https
std::optional<std::string> WholeUrl(const std::string& url, std::string_view href);

/// The canonical path of an object in a collection.
/// @param collection  its URL
/// @return none for the collection itself, for a collection in it, and for what lies elsewhere
std::optional<std::string> ObjectHref(const std::string& collection, std::string_view href);

/// The URL of an object.
/// @param href  a canonical path
std::string ObjectUrl(const std::string& collection, std::string_view href);

/// The canonical path of a new object.
/// @param name     of letters, digits and dots
/// @param attempt  from 0; another path for each, where that before is taken
std::string NewObjectHref(const std::string& collection, std::string_view name, int attempt);

/// With the slash at its end that the URL of a collection has.
std::string CollectionUrl(std::string_view url);

/// The scheme, host and port are those of the other address.
bool IsSameServer(const std::string& one, const std::string& other);

/// Large providers keep a user's calendars on a server beside the one that is known, or below it:
/// both are then below one domain, whose name is longer than the "co" of co.uk. Only over TLS, and
/// not for one server alone.
bool IsOfSameOwner(const std::string& known, const std::string& other);

}  // namespace velkor
