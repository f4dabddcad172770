// tests/fuzz/FuzzMirror.cpp: entry of the fuzzer for the files of a mirror: an object with its
// header, an edit that waits, and the state.
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>

#include "calendar/ics/read/IcsAppointments.h"
#include "calendar/mirror/Outbox.h"
#include "calendar/mirror/ReadMirror.h"
#include "values/Error.h"

namespace {

using namespace velkor;

/// What every edit promises: sent once, it waits no more, and all that is shown is an appointment.
void SendAll(Mirror& mirror) {
  Outbox outbox(mirror);
  for (const std::string& name : outbox.Waiting()) {
    const auto edit = outbox.Prepare(name);
    if (!edit) continue;
    outbox.Sent(*edit, edit->kind == EditKind::Create ? "/c/" + edit->href : edit->href, "2",
                edit->bytes);
  }
  for (const MirrorQuestion& question : outbox.Questions()) outbox.Answer(question.id, true);
  for (const MirrorNote& note : outbox.Notes()) outbox.Dismiss(note.id);
  if (outbox.Refused().size() > 1) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string folder =
      std::filesystem::temp_directory_path() / ("fuzz-mirror-" + std::to_string(getpid()));
  // The object, a NUL, then the edit.
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const std::size_t place = std::min(bytes.find('\0'), size);
  const std::string name = EntryIdOfUid("a");
  Mirror mirror(folder);
  mirror.Files().Write("objects/" + name, bytes.substr(0, place), Durability::Later);
  mirror.Files().Write("pending/" + name, bytes.substr(std::min(place + 1, size)),
                       Durability::Later);
  mirror.Files().Write("state.json", bytes, Durability::Later);
  try {
    const DateWindow window{Date::FromYmd(2025, 1, 1), Date::FromYmd(2027, 12, 31)};
    for (const CalendarItem& item : ReadMirror(folder, window).items) {
      if (item.entryId.empty() || !item.start.IsValid() || item.end < item.start) std::abort();
    }
    mirror.Objects();
    SendAll(mirror);
  } catch (const Error& error) {
    if (error.Number() != errors::CalendarFailed) std::abort();
  }
  std::filesystem::remove_all(folder);
  return 0;
}
