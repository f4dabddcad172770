// tests/calendar/dav/FakeCalendar.h: a calendar on a scripted server, which fails as a test wants.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>

#include "tests/calendar/net/ScriptedServer.h"

namespace velkor {

/// Objects by their paths below /c/. Changed between requests only.
class FakeCalendar {
 public:
  bool tellsChanges = true;
  bool readOnly = false;
  /// Whether an answer to PUT has an entity tag.
  bool tellsETags = true;
  /// The Date of each answer; none when empty.
  std::string date;
  /// Answers in the place of the calendar where it gives an answer.
  std::function<std::optional<ScriptedAnswer>(const ScriptedRequest&)> fault;

  void Put(const std::string& href, const std::string& bytes);
  void Remove(const std::string& href);
  /// The bytes by paths.
  std::map<std::string, std::string> All() const;
  /// Empty for none.
  std::string Bytes(const std::string& href) const;
  std::string ETag(const std::string& href) const;

  ServerScript Script();
  /// As the calendar answers without a fault.
  ScriptedAnswer Answer(const ScriptedRequest& request);

 private:
  struct Object {
    std::string bytes;
    int changed = 0;
  };

  ScriptedAnswer Describe() const;
  ScriptedAnswer List() const;
  ScriptedAnswer TellChanges(const std::string& body) const;
  ScriptedAnswer Give(const std::string& body) const;
  ScriptedAnswer Change(const ScriptedRequest& request);

  std::map<std::string, Object> objects_;
  /// When each was removed.
  std::map<std::string, int> removed_;
  int state_ = 1;
};

/// A multistatus of responses.
ScriptedAnswer Multistatus(const std::string& responses);
/// A response about properties.
std::string ResponseOf(const std::string& href, const std::string& properties);
/// A response of a status alone.
std::string ResponseOf(const std::string& href, int status);

/// A calendar of one appointment.
std::string Appointment(const std::string& uid, const std::string& subject);

}  // namespace velkor
