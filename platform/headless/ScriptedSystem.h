// platform/headless/ScriptedSystem.h: a clock and an environment that the test sets.
#pragma once

#include <map>

#include "platform/System.h"
#include "values/Error.h"

namespace velkor {

class ScriptedClock : public Clock {
 public:
  explicit ScriptedClock(Date start = Date::FromYmd(2005, 4, 18)) : now(start) {}

  Date now;

  Date Now() override { return now; }
  void Advance(int seconds) { now = Date::FromSeconds(now.Seconds() + seconds); }
};

class ScriptedEnvironment : public Environment {
 public:
  std::map<std::string, std::string, std::less<>> variables = {{"TMP", "/temp"}};
  char separator = '/';
  /// The variable whose folder cannot be made.
  std::string failing;

  std::string Variable(std::string_view name) override {
    if (name == failing) throw Error(errors::PathNotFound, failing + " was refused.");
    const auto found = variables.find(name);
    return found == variables.end() ? std::string() : found->second;
  }
  char PathSeparator() const override { return separator; }
};

}  // namespace velkor
