// calendar/ics/write/IcsEditing.h: holds what the edits of a calendar file's text have in common.
#pragma once

#include <cstddef>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "calendar/ics/read/IcsDocument.h"
#include "calendar/ics/read/IcsLimits.h"
#include "calendar/ics/write/IcsEditor.h"

namespace velkor {

/// Throws Error (CalendarFailed).
[[noreturn]] void FailToEdit(const std::string& what);

/// Throws Error when the text holds no such appointment.
/// @param name  of the file, for messages
const IcsAppointment& FindAppointment(const IcsDocument& document, const std::string& name,
                                      const std::string& entryId);
std::set<std::string> IdsOf(const IcsDocument& document);
bool HasUnfinished(const IcsDocument& document);
/// The line end before a place; where there is none, the first one of the text.
std::string LineEndAt(std::string_view bytes, std::size_t place);

/// A stretch of the text and what comes in its place.
struct Splice {
  std::size_t begin = 0;
  std::size_t end = 0;
  std::string text;
};

std::string WithSplices(std::string_view bytes, std::vector<Splice> splices);

/// What `edit` makes of the file's plain text, in the form of the file. Throws Error for a file
/// that would be larger than `limits` allow.
IcsEdit InFormOf(std::string_view bytes, const std::string& name, const IcsLimits& limits,
                 const std::function<IcsEdit(std::string_view text)>& edit);

}  // namespace velkor
