// hosts/windows/StandIn/NamespaceObject.h: the session and its user by their names; part of the
// calendar program for tests, never shipped.
#pragma once

#include "hosts/windows/StandIn/ServedObject.h"

namespace velkor {

Variant NamespaceAnswer(StandInSession& session);

}  // namespace velkor
