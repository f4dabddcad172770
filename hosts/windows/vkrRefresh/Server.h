// hosts/windows/vkrRefresh/Server.h: serves one client, from its activation to its end.
#pragma once

#include "hosts/windows/vkrRefresh/Refresher.h"

namespace velkor {

/// Gives the class to the first client that asks and processes messages until that client has let
/// its object go, or has ended. Ends as well when nobody asks within a minute. Throws Error.
void Serve(const OpenOutlook& openOutlook);

}  // namespace velkor
