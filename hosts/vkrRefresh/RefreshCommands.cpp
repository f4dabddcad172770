// hosts/vkrRefresh/RefreshCommands.cpp: the listening thread and what it shares.
#include "hosts/vkrRefresh/RefreshCommands.h"

#include <signal.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <string_view>
#include <utility>

namespace velkor {
namespace {

/// The cache file is replaced in one step and a stray work file is taken over by the next refresh,
/// so that the end may come at any point.
[[noreturn]] void EndNow() {
  // The reader of the calendar belongs to the group.
  if (::getpgrp() == ::getpid()) ::kill(0, SIGKILL);
  ::_exit(1);
}

}  // namespace

RefreshCommands::RefreshCommands() : listener_([this] { Listen(); }) {}

void RefreshCommands::Listen() {
  std::array<char, 4096> piece{};
  std::string input;
  for (;;) {
    const ssize_t got = ::read(STDIN_FILENO, piece.data(), piece.size());
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) break;
    input.append(piece.data(), static_cast<std::size_t>(got));
    if (!TakeLines(input) || input.size() > refresh_protocol::LongestLine) break;
  }
  Close();
}

/// Takes the whole lines out of the input; false when one of them is no command.
bool RefreshCommands::TakeLines(std::string& input) {
  for (auto end = input.find('\n'); end != input.npos; end = input.find('\n')) {
    const auto command = refresh_protocol::DecodeCommand(std::string_view(input).substr(0, end));
    if (!command) return false;
    Take(*command);
    input.erase(0, end + 1);
  }
  return true;
}

void RefreshCommands::Take(const refresh_protocol::Command& command) {
  const std::lock_guard lock(mutex_);
  if (command.start) {
    waiting_.push_back(*command.start);
    busy_ = true;
    changed_.notify_one();
  } else if (busy_) {
    if (unasked_) EndNow();
    stopped_ = true;
  }
}

void RefreshCommands::Close() {
  const std::lock_guard lock(mutex_);
  if (busy_) EndNow();
  closed_ = true;
  changed_.notify_one();
}

std::optional<RefreshInputs> RefreshCommands::Next() {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [this] { return closed_ || !waiting_.empty(); });
  if (waiting_.empty()) return std::nullopt;
  RefreshInputs inputs = std::move(waiting_.front());
  waiting_.pop_front();
  return inputs;
}

bool RefreshCommands::Stopped() {
  const std::lock_guard lock(mutex_);
  return stopped_;
}

void RefreshCommands::RunUnasked(const std::function<void()>& work) {
  const auto set = [this](bool unasked) {
    const std::lock_guard lock(mutex_);
    unasked_ = unasked && !stopped_;
    return unasked_;
  };
  if (!set(true)) return;
  try {
    work();
  } catch (...) {
    set(false);
    throw;
  }
  set(false);
}

void RefreshCommands::Done() {
  const std::lock_guard lock(mutex_);
  busy_ = !waiting_.empty();
  stopped_ = false;
}

}  // namespace velkor
