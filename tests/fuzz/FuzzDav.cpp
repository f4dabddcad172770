// tests/fuzz/FuzzDav.cpp: entry of the fuzzer for the answers of calendar servers.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "calendar/dav/DavPath.h"
#include "calendar/dav/DavXml.h"
#include "calendar/dav/ServerCalendar.h"
#include "calendar/net/NetworkFault.h"

namespace {

const std::string Collection = "https://host.example/home/team/";

/// What the mirror relies on: an object lies in its calendar, and has one spelling.
void Check(std::string_view href) {
  const auto object = velkor::ObjectHref(Collection, href);
  if (!object) return;
  if (!object->starts_with("/home/team/")) std::abort();
  if (velkor::ObjectHref(Collection, *object) != object) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  velkor::ReadConditions(bytes);
  Check(bytes.substr(0, 200));
  try {
    velkor::ReadMultistatus(bytes, [](velkor::DavResponse&& response) {
      Check(response.href);
      const velkor::ServerCalendar calendar = velkor::CalendarOf(Collection, response);
      if (!calendar.url.ends_with('/') || calendar.colour.size() > 7) std::abort();
    });
  } catch (const velkor::NetworkFault&) {
  }
  return 0;
}
