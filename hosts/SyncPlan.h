// hosts/SyncPlan.h: decides which calendars of a set are brought up to date when.
#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace velkor {

/// Times are seconds since 1970. At most four run at once. One that fails is tried again after half
/// a minute, then after twice as long each time, up to an hour, and never before the server wants
/// it.
class SyncPlan {
 public:
  /// Seconds after which one is due again that has no interval of its own.
  static constexpr std::chrono::seconds UsualInterval = std::chrono::minutes(5);
  static constexpr std::size_t MostAtOnce = 4;

  /// Those that are not followed yet are due at once; others than these are forgotten.
  void Follow(const std::vector<std::string>& ids);

  /// The user wants it, or answered what stood in its way: due now, whatever failed before.
  void Want(const std::string& id);
  /// Something waits to be sent: due now, or at its next try where it fails.
  void EditsWait(const std::string& id);

  /// The next to run, which count as running from now on.
  std::vector<std::string> Start(std::int64_t now);
  void Succeeded(const std::string& id, std::int64_t now,
                 std::optional<std::chrono::seconds> interval);
  void Failed(const std::string& id, std::int64_t now,
              std::optional<std::chrono::seconds> retryAfter);
  /// It waits for the user: due no more before it is wanted.
  void Blocked(const std::string& id);
  /// The user stopped it: due again after its usual time.
  void Stopped(const std::string& id, std::int64_t now);

  bool IsRunning(const std::string& id) const;
  bool IsRunning() const;
  /// When Start has something to give; none while nothing is due or no more may run.
  std::optional<std::int64_t> NextDue() const;

 private:
  struct Entry {
    /// None: never, before it is wanted.
    std::optional<std::int64_t> due = 0;
    bool running = false;
    /// Something came up while it ran.
    bool again = false;
    int failures = 0;
  };

  std::size_t RunningCount() const;
  void End(const std::string& id, std::optional<std::int64_t> due, int failures);

  std::map<std::string, Entry> entries_;
};

}  // namespace velkor
