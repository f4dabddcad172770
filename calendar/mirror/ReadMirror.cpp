// calendar/mirror/ReadMirror.cpp: one object after the other, with what all of them share.
#include "calendar/mirror/ReadMirror.h"

#include <new>
#include <utility>

#include "calendar/ics/read/IcsDocument.h"
#include "calendar/ics/read/IcsOccurrences.h"
#include "calendar/ics/read/IcsPlainText.h"
#include "calendar/mirror/MergeEdit.h"
#include "calendar/mirror/ObjectEdits.h"
#include "values/Error.h"

namespace velkor {
namespace {

class MirrorReader {
 public:
  MirrorReader(Mirror& mirror, const DateWindow& window, const IcsLimits& limits)
      : mirror_(mirror),
        limits_(limits),
        diagnostics_(mirror.Folder(), limits.diagnostics),
        items_(window, limits, diagnostics_) {}

  ParsedCalendar Read() {
    ParsedCalendar calendar;
    calendar.name = mirror_.State().displayName;
    std::size_t count = 0;
    for (const std::string& name : NamesOfObjects(mirror_)) {
      diagnostics_.BeginFile(mirror_.Folder() + "/objects/" + name);
      if (++count > limits_.components) {
        diagnostics_.Warn(0, "the calendar has more than " + std::to_string(limits_.components) +
                                 " objects; this one and those after it are left out");
        break;
      }
      if (const auto view = View(name)) AddItems(calendar.items, name, *view);
    }
    if (areDamaged_) ForgetToken();
    calendar.diagnostics = diagnostics_.Take();
    return calendar;
  }

 private:
  /// The edit is read first: one that is sent meanwhile is then in the object.
  std::optional<std::string> View(const std::string& name) {
    // What stands before an object in its file.
    constexpr std::size_t Headers = std::size_t{1} << 20;
    const std::size_t most = limits_.fileSize;
    const MirrorFolder& files = mirror_.Files();
    const auto waiting = files.SizeOf("pending/" + name);
    if (files.SizeOf("objects/" + name).value_or(0) > most + Headers ||
        waiting.value_or(0) > 2 * most + Headers) {
      diagnostics_.Warn(
          0, "the object is larger than " + std::to_string(most >> 20) + " MiB; it is left out");
      return std::nullopt;
    }
    const auto edit = waiting ? ReadEdit(mirror_, name) : std::nullopt;
    if (waiting && !edit && files.SizeOf("pending/" + name)) {
      diagnostics_.Warn(0, "what waits to be sent of the object cannot be read; it is not shown");
    }
    const auto base = mirror_.Object(name);
    if (!base && mirror_.IsDamaged(name)) {
      areDamaged_ = true;
      diagnostics_.Warn(0, "the object is damaged on this disk; it is fetched again");
    }
    return ViewOf(edit, base);
  }

  void AddItems(std::vector<CalendarItem>& items, const std::string& name,
                const std::string& bytes) {
    const std::string path = mirror_.Folder() + "/objects/" + name;
    try {
      const IcsPlainText plain(bytes, path);
      const IcsDocument document(plain.Text(), path, limits_, diagnostics_, {}, &zones_);
      const IcsAppointment* main = MainOf(document);
      for (const IcsAppointment& one : document.Appointments()) {
        items.push_back(items_.Item(document.Events()[one.main], document.ChangedOf(one),
                                    &one == main ? name : name + "-" + one.entryId));
      }
    } catch (const Error&) {
      diagnostics_.Warn(0, "the object is no calendar that can be read; it is left out");
    }
  }

  void ForgetToken() {
    try {
      mirror_.ForgetToken();
    } catch (const Error&) {
      // The next one to read it tries again.
    }
  }

  Mirror& mirror_;
  const IcsLimits& limits_;
  Diagnostics diagnostics_;
  IcsItemBuilder items_;
  IcsZoneStore zones_;
  bool areDamaged_ = false;
};

}  // namespace

ParsedCalendar ReadMirror(const std::string& folder, const DateWindow& window,
                          const IcsLimits& limits) {
  Mirror mirror(folder);
  try {
    FinishCategoryIfPossible(mirror);
    return MirrorReader(mirror, window, limits).Read();
  } catch (const std::bad_alloc&) {
    throw Error(errors::CalendarFailed,
                "The copy of the calendar in " + folder + " needs more memory than is allowed.",
                "Calendar");
  }
}

}  // namespace velkor
