// hosts/SyncPlan.cpp: due times, and longer and longer waits for what fails.
#include "hosts/SyncPlan.h"

#include <algorithm>

namespace velkor {
namespace {

/// Due as soon as there is room.
constexpr std::int64_t AtOnce = 0;

std::int64_t WaitAfter(int failures) {
  constexpr std::int64_t First = 30;
  constexpr std::int64_t Longest = 3600;
  constexpr int MostDoublings = 7;
  return std::min(First << std::min(failures, MostDoublings), Longest);
}

}  // namespace

void SyncPlan::Follow(const std::vector<std::string>& ids) {
  std::erase_if(entries_, [&](const auto& entry) {
    return std::find(ids.begin(), ids.end(), entry.first) == ids.end();
  });
  for (const std::string& id : ids) entries_.try_emplace(id);
}

void SyncPlan::Want(const std::string& id) {
  const auto found = entries_.find(id);
  if (found == entries_.end()) return;
  found->second.due = AtOnce;
  found->second.again = found->second.running;
}

void SyncPlan::EditsWait(const std::string& id) {
  const auto found = entries_.find(id);
  if (found != entries_.end() && found->second.failures == 0 && found->second.due) Want(id);
}

std::vector<std::string> SyncPlan::Start(std::int64_t now) {
  std::vector<std::string> started;
  std::size_t running = RunningCount();
  for (auto& [id, entry] : entries_) {
    if (running == MostAtOnce) break;
    if (entry.running || !entry.due || *entry.due > now) continue;
    entry.running = true;
    entry.again = false;
    started.push_back(id);
    ++running;
  }
  return started;
}

void SyncPlan::End(const std::string& id, std::optional<std::int64_t> due, int failures) {
  const auto found = entries_.find(id);
  if (found == entries_.end()) return;
  const bool again = found->second.again;
  found->second = {again ? std::optional(AtOnce) : due, false, false, failures};
}

void SyncPlan::Succeeded(const std::string& id, std::int64_t now,
                         std::optional<std::chrono::seconds> interval) {
  End(id, now + interval.value_or(UsualInterval).count(), 0);
}

void SyncPlan::Failed(const std::string& id, std::int64_t now,
                      std::optional<std::chrono::seconds> retryAfter) {
  const auto found = entries_.find(id);
  if (found == entries_.end()) return;
  const int failures = found->second.failures;
  const std::int64_t told = retryAfter ? retryAfter->count() : 0;
  End(id, now + std::max(told, WaitAfter(failures)), failures + 1);
}

void SyncPlan::Blocked(const std::string& id) {
  End(id, std::nullopt, 0);
}

void SyncPlan::Stopped(const std::string& id, std::int64_t now) {
  End(id, now + UsualInterval.count(), 0);
}

bool SyncPlan::IsRunning(const std::string& id) const {
  const auto found = entries_.find(id);
  return found != entries_.end() && found->second.running;
}

bool SyncPlan::IsRunning() const {
  return RunningCount() > 0;
}

std::size_t SyncPlan::RunningCount() const {
  return static_cast<std::size_t>(
      std::ranges::count_if(entries_, [](const auto& entry) { return entry.second.running; }));
}

std::optional<std::int64_t> SyncPlan::NextDue() const {
  std::optional<std::int64_t> next;
  if (RunningCount() == MostAtOnce) return next;
  for (const auto& [id, entry] : entries_) {
    if (!entry.running && entry.due && (!next || *entry.due < *next)) next = entry.due;
  }
  return next;
}

}  // namespace velkor
