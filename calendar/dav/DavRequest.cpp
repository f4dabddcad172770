// calendar/dav/DavRequest.cpp: bodies by QXmlStreamWriter.
#include "calendar/dav/DavRequest.h"

#include <QString>
#include <QXmlStreamWriter>
#include <utility>

#include "calendar/dav/DavXml.h"

namespace velkor {
namespace {

QString Text(std::string_view utf8) {
  return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

/// Elements by their names in DavXml.h.
class Document {
 public:
  explicit Document(std::string_view root) : xml_(&bytes_) {
    xml_.writeStartDocument();
    for (const auto& [uri, prefix] : {std::pair{"DAV:", "d"},
                                      {"urn:ietf:params:xml:ns:caldav", "c"},
                                      {"http://apple.com/ns/ical/", "i"},
                                      {"http://calendarserver.org/ns/", "s"}}) {
      xml_.writeNamespace(QLatin1String(uri), QLatin1String(prefix));
    }
    Open(root);
  }

  void Open(std::string_view name) {
    const std::size_t blank = name.rfind(' ');
    xml_.writeStartElement(Text(name.substr(0, blank)), Text(name.substr(blank + 1)));
  }
  void Close() { xml_.writeEndElement(); }
  void Write(std::string_view name, std::string_view text = {}) {
    Open(name);
    if (!text.empty()) xml_.writeCharacters(Text(text));
    Close();
  }
  void WriteComponent(std::string_view name) {
    Open(dav::Component);
    xml_.writeAttribute(QLatin1String("name"), Text(name));
    Close();
  }

  std::string Take() {
    xml_.writeEndDocument();
    return bytes_.toStdString();
  }

 private:
  QByteArray bytes_;
  QXmlStreamWriter xml_;
};

HttpRequest RequestOf(std::string method, const std::string& url, Document& document,
                      HttpHeaders headers) {
  headers.emplace_back("Content-Type", "application/xml; charset=utf-8");
  return {std::move(method), url, std::move(headers), document.Take()};
}

}  // namespace

HttpRequest PropertiesRequest(const std::string& url, int depth,
                              std::span<const std::string_view> names) {
  Document document(dav::Propfind);
  document.Open(dav::Prop);
  for (const std::string_view name : names) document.Write(name);
  return RequestOf("PROPFIND", url, document, {{"Depth", std::to_string(depth)}});
}

HttpRequest ChangesRequest(const std::string& url, std::string_view syncToken) {
  Document document(dav::SyncCollection);
  document.Write(dav::SyncToken, syncToken);
  document.Write(dav::SyncLevel, "1");
  document.Open(dav::Prop);
  document.Write(dav::ETag);
  return RequestOf("REPORT", url, document, {{"Depth", "0"}});
}

HttpRequest ObjectsRequest(const std::string& url, std::span<const std::string> hrefs) {
  Document document(dav::CalendarMultiget);
  document.Open(dav::Prop);
  document.Write(dav::ETag);
  document.Write(dav::CalendarData);
  document.Close();
  for (const std::string& href : hrefs) document.Write(dav::Href, href);
  // Whoever would leave the definitions of time zones out puts them in (RFC 7809 section 7.1).
  return RequestOf("REPORT", url, document, {{"Depth", "0"}, {"CalDAV-Timezones", "T"}});
}

HttpRequest MakeCalendarRequest(const std::string& url, std::string_view name,
                                std::string_view colour) {
  Document document(dav::MakeCalendar);
  document.Open(dav::Set);
  document.Open(dav::Prop);
  document.Write(dav::DisplayName, name);
  if (!colour.empty()) document.Write(dav::Colour, colour);
  document.Open(dav::Components);
  document.WriteComponent("VEVENT");
  return RequestOf("MKCALENDAR", url, document, {});
}

HttpRequest ColourRequest(const std::string& url, std::string_view colour) {
  Document document(dav::PropertyUpdate);
  document.Open(dav::Set);
  document.Open(dav::Prop);
  document.Write(dav::Colour, colour);
  return RequestOf("PROPPATCH", url, document, {});
}

}  // namespace velkor
