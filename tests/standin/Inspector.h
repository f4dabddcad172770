// tests/standin/Inspector.h: the window that shows one appointment; part of the calendar
// program for tests, never shipped.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "tests/standin/ServerLoop.h"

namespace velkor {

/// Becomes true when the window has gone.
using Inspector = std::shared_ptr<const bool>;

/// Opens a dialog (class "#32770", title "SUBJECT - Appointment") with an edit for the subject
/// (identifier 100), Save & Close (IDOK) and Close (IDCANCEL). An Error of `save` is shown, and the
/// dialog stays.
Inspector OpenInspector(const std::string& subject,
                        std::function<void(const std::string& subject)> save);

/// Processes messages, calls of clients among them, until the window has gone or the process is to
/// end.
void WaitForClose(const Inspector& inspector, ServerLoop& loop);

}  // namespace velkor
