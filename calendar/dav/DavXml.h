// calendar/dav/DavXml.h: reads the XML that calendar servers answer with, whatever it holds.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velkor {

/// Names of elements: the namespace, a blank, the local name.
namespace dav {
inline constexpr std::string_view Multistatus = "DAV: multistatus";
inline constexpr std::string_view Response = "DAV: response";
inline constexpr std::string_view Href = "DAV: href";
inline constexpr std::string_view Status = "DAV: status";
inline constexpr std::string_view Propstat = "DAV: propstat";
inline constexpr std::string_view Prop = "DAV: prop";
inline constexpr std::string_view Set = "DAV: set";
inline constexpr std::string_view Fault = "DAV: error";
inline constexpr std::string_view Collection = "DAV: collection";
inline constexpr std::string_view ResourceType = "DAV: resourcetype";
inline constexpr std::string_view DisplayName = "DAV: displayname";
inline constexpr std::string_view ETag = "DAV: getetag";
inline constexpr std::string_view SyncToken = "DAV: sync-token";
inline constexpr std::string_view SyncLevel = "DAV: sync-level";
inline constexpr std::string_view SyncCollection = "DAV: sync-collection";
inline constexpr std::string_view Propfind = "DAV: propfind";
inline constexpr std::string_view PropertyUpdate = "DAV: propertyupdate";
inline constexpr std::string_view SupportedReports = "DAV: supported-report-set";
inline constexpr std::string_view Privileges = "DAV: current-user-privilege-set";
inline constexpr std::string_view MayDoAll = "DAV: all";
inline constexpr std::string_view MayWrite = "DAV: write";
inline constexpr std::string_view MayWriteContent = "DAV: write-content";
inline constexpr std::string_view MayBind = "DAV: bind";
inline constexpr std::string_view CurrentUserPrincipal = "DAV: current-user-principal";
inline constexpr std::string_view CalendarHomeSet =
    "urn:ietf:params:xml:ns:caldav calendar-home-set";
inline constexpr std::string_view Calendar = "urn:ietf:params:xml:ns:caldav calendar";
inline constexpr std::string_view CalendarData = "urn:ietf:params:xml:ns:caldav calendar-data";
inline constexpr std::string_view CalendarMultiget =
    "urn:ietf:params:xml:ns:caldav calendar-multiget";
inline constexpr std::string_view MakeCalendar = "urn:ietf:params:xml:ns:caldav mkcalendar";
inline constexpr std::string_view Components =
    "urn:ietf:params:xml:ns:caldav supported-calendar-component-set";
inline constexpr std::string_view Component = "urn:ietf:params:xml:ns:caldav comp";
inline constexpr std::string_view NoUidConflict = "urn:ietf:params:xml:ns:caldav no-uid-conflict";
inline constexpr std::string_view Colour = "http://apple.com/ns/ical/ calendar-color";
inline constexpr std::string_view CTag = "http://calendarserver.org/ns/ getctag";
}  // namespace dav

/// What an element holds, at any depth.
struct DavValue {
  std::string name;
  std::string text;
  /// The names of the elements within, and what their attributes "name" say (VEVENT).
  std::vector<std::string> names;
  /// The texts of the DAV:href within.
  std::vector<std::string> hrefs;

  bool Holds(std::string_view elementName) const;
};

/// What a server says about one of its resources.
struct DavResponse {
  /// As the server writes it.
  std::string href;
  /// Of the resource itself; 0 where only its properties have one.
  int status = 0;
  /// Those that it has.
  std::vector<DavValue> properties;

  /// None when the resource has no such property.
  const DavValue* Find(std::string_view name) const;
  /// The text of a property without blanks around it; empty for none.
  std::string Text(std::string_view name) const;
};

/// Reads the answer of a status 207 and hands each response on as it is read (RFC 4918 section 13).
/// @return the synchronisation token (RFC 6578 section 6.2); empty for none
/// Throws NetworkFault (NotUnderstood) for what is no multistatus (a page of HTML), ends too early,
/// defines entities, or is deeper or has longer tags than any server's answer; TooLarge for more
/// than a million responses. Takes memory in proportion to one response, time to the whole.
std::string ReadMultistatus(std::string_view body, const std::function<void(DavResponse&&)>& visit);

/// What a refusal gives as its reason (RFC 4918 section 16): the elements of its DAV:error; none
/// for a body that is something else.
std::vector<DavValue> ReadConditions(std::string_view body);

}  // namespace velkor
