// calendar/dav/SyncProgress.h: how a synchronisation tells how far it is.
#pragma once

#include <cstddef>
#include <functional>

namespace velkor {

/// Told after each edit that was sent, of those that wait, and after each portion of objects that
/// was fetched, of those that changed. May be empty.
using SyncProgress = std::function<void(std::size_t done, std::size_t of)>;

}  // namespace velkor
