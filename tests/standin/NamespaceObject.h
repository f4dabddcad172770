// tests/standin/NamespaceObject.h: the session and its user by their names; part of the
// calendar program for tests, never shipped.
#pragma once

#include "tests/standin/ServedObject.h"

namespace velkor {

Variant NamespaceAnswer(StandInSession& session);

}  // namespace velkor
