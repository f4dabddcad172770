// tests/servers/OtherClient.h: a person with another program: a folder of .ics files that
// vdirsyncer keeps equal to a calendar on a server.
#pragma once

#include <string>

#include "tests/servers/CalendarUser.h"

namespace velkor {

class OtherClient {
 public:
  /// @param folder  exists; all of it is kept in it
  OtherClient(const HttpAccess& calendar, const std::string& folder);

  /// @return what it says of a failure; empty for none
  std::string Synchronise();
  CalendarState State() const;
  /// Writes a text into the description, as an editor would that knows nothing of us.
  void Describe(const std::string& name, const std::string& text);
  void Delete(const std::string& name);

 private:
  /// The file of an object; empty where there is none.
  std::string FileOf(const std::string& name) const;

  std::string folder_;
};

}  // namespace velkor
