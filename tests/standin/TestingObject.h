// tests/standin/TestingObject.h: what tests ask of the program beside a calendar's own
// members (Application.Testing); part of the calendar program for tests, never shipped.
#pragma once

#include "tests/standin/ServedObject.h"

namespace velkor {

/// Its own calls are neither counted nor put off. Members as CallWatch has them; what it fills and
/// lists is the default calendar.
Variant TestingAnswer(StandInSession& session);

}  // namespace velkor
