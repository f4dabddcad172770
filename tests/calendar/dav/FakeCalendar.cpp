// tests/calendar/dav/FakeCalendar.cpp: what a well-behaved calendar server answers.
#include "tests/calendar/dav/FakeCalendar.h"

#include <regex>

namespace velkor {
namespace {

const std::string Collection = "/c/";

std::string TextOf(const std::string& body, const std::string& element) {
  std::smatch found;
  std::regex_search(body, found, std::regex("<\\w+:" + element + ">([^<]*)<"));
  return found.empty() ? std::string() : found[1].str();
}

std::string Quoted(int etag) {
  return "\"" + std::to_string(etag) + "\"";
}

std::string ETagProperty(const std::string& etag) {
  return "<d:getetag>" + etag + "</d:getetag>";
}

}  // namespace

ScriptedAnswer Multistatus(const std::string& responses) {
  return {.status = 207,
          .body =
              "<d:multistatus xmlns:d='DAV:' xmlns:c='urn:ietf:params:xml:ns:caldav' "
              "xmlns:s='http://calendarserver.org/ns/'>" +
              responses + "</d:multistatus>"};
}

std::string ResponseOf(const std::string& href, const std::string& properties) {
  return "<d:response><d:href>" + href + "</d:href><d:propstat><d:prop>" + properties +
         "</d:prop><d:status>HTTP/1.1 200 OK</d:status></d:propstat></d:response>";
}

std::string ResponseOf(const std::string& href, int status) {
  return "<d:response><d:href>" + href + "</d:href><d:status>HTTP/1.1 " + std::to_string(status) +
         " x</d:status></d:response>";
}

std::string Appointment(const std::string& uid, const std::string& subject) {
  return "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:test\r\nBEGIN:VEVENT\r\nUID:" + uid +
         "\r\nDTSTAMP:20260101T000000Z\r\nDTSTART:20260105T100000Z\r\nDTEND:20260105T110000Z\r\n"
         "SUMMARY:" +
         subject + "\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n";
}

void FakeCalendar::Put(const std::string& href, const std::string& bytes) {
  objects_[href] = {bytes, ++state_};
  removed_.erase(href);
}

void FakeCalendar::Remove(const std::string& href) {
  objects_.erase(href);
  removed_[href] = ++state_;
}

std::map<std::string, std::string> FakeCalendar::All() const {
  std::map<std::string, std::string> all;
  for (const auto& [href, object] : objects_) all[href] = object.bytes;
  return all;
}

std::string FakeCalendar::Bytes(const std::string& href) const {
  const auto found = objects_.find(href);
  return found == objects_.end() ? std::string() : found->second.bytes;
}

std::string FakeCalendar::ETag(const std::string& href) const {
  const auto found = objects_.find(href);
  return found == objects_.end() ? std::string() : Quoted(found->second.changed);
}

ServerScript FakeCalendar::Script() {
  return [this](const ScriptedRequest& request) {
    const auto faulty = fault ? fault(request) : std::nullopt;
    ScriptedAnswer answer = faulty ? *faulty : Answer(request);
    if (!date.empty()) answer.headers.emplace_back("Date", date);
    return answer;
  };
}

ScriptedAnswer FakeCalendar::Answer(const ScriptedRequest& request) {
  if (request.method == "PROPFIND") return request.headers.at("depth") == "0" ? Describe() : List();
  if (request.method == "REPORT") {
    const bool asksForChanges = request.body.find(":sync-collection") != std::string::npos;
    if (asksForChanges && !tellsChanges) return {.status = 403};
    return asksForChanges ? TellChanges(request.body) : Give(request.body);
  }
  if (request.method != "GET") return Change(request);
  if (!objects_.contains(request.path)) return {.status = 404};
  return {.headers = {{"ETag", ETag(request.path)}, {"Content-Type", "text/calendar"}},
          .body = Bytes(request.path)};
}

ScriptedAnswer FakeCalendar::Describe() const {
  const std::string state = std::to_string(state_);
  return Multistatus(
      ResponseOf(Collection,
                 "<d:resourcetype><d:collection/><c:calendar/></d:resourcetype>"
                 "<d:displayname>Team</d:displayname><s:getctag>c" +
                     state + "</s:getctag>" +
                     (tellsChanges ? "<d:sync-token>t" + state + "</d:sync-token>" : "") +
                     (readOnly ? "<d:current-user-privilege-set><d:privilege><d:read/>"
                                 "</d:privilege></d:current-user-privilege-set>"
                               : "")));
}

ScriptedAnswer FakeCalendar::List() const {
  std::string all = ResponseOf(Collection, "<d:resourcetype><d:collection/></d:resourcetype>");
  for (const auto& [href, object] : objects_) all += ResponseOf(href, ETagProperty(ETag(href)));
  return Multistatus(all);
}

ScriptedAnswer FakeCalendar::TellChanges(const std::string& body) const {
  const std::string token = TextOf(body, "sync-token");
  const int since = token.empty() ? 0 : std::atoi(token.c_str() + 1);
  if (since > state_ || (!token.empty() && since == 0)) return {.status = 403};
  std::string all;
  for (const auto& [href, object] : objects_) {
    if (object.changed > since) all += ResponseOf(href, ETagProperty(Quoted(object.changed)));
  }
  for (const auto& [href, when] : removed_) {
    if (when > since && since > 0) all += ResponseOf(href, 404);
  }
  return Multistatus(all + "<d:sync-token>t" + std::to_string(state_) + "</d:sync-token>");
}

ScriptedAnswer FakeCalendar::Give(const std::string& body) const {
  std::string all;
  static const std::regex Href("<\\w+:href>([^<]*)<");
  for (std::sregex_iterator at(body.begin(), body.end(), Href), end; at != end; ++at) {
    const std::string href = (*at)[1];
    all += objects_.contains(href)
               ? ResponseOf(href, ETagProperty(ETag(href)) + "<c:calendar-data>" + Bytes(href) +
                                      "</c:calendar-data>")
               : ResponseOf(href, 404);
  }
  return Multistatus(all);
}

ScriptedAnswer FakeCalendar::Change(const ScriptedRequest& request) {
  const auto header = [&](const std::string& name) {
    const auto found = request.headers.find(name);
    return found == request.headers.end() ? std::string() : found->second;
  };
  const bool isThere = objects_.contains(request.path);
  if (header("if-none-match") == "*" && isThere) return {.status = 412};
  if (!header("if-match").empty() && header("if-match") != ETag(request.path)) {
    return {.status = 412};
  }
  if (request.method == "DELETE") {
    if (isThere) Remove(request.path);
    return {.status = isThere ? 204 : 404};
  }
  Put(request.path, request.body);
  ScriptedAnswer answer{.status = isThere ? 204 : 201};
  if (tellsETags) answer.headers = {{"ETag", ETag(request.path)}};
  return answer;
}

}  // namespace velkor
