// hosts/vkrRefresh/RefreshCommands.h: hears the client's commands at any moment.
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "platform/desktop/RefreshProtocol.h"

namespace velkor {

/// Reads the standard input in a thread of its own until it is closed or is no command. When that
/// happens while a refresh runs, the process ends at once, with the processes that it started.
class RefreshCommands {
 public:
  RefreshCommands();
  ~RefreshCommands() = default;
  RefreshCommands(const RefreshCommands&) = delete;
  RefreshCommands& operator=(const RefreshCommands&) = delete;

  /// Waits for the next refresh; none when the client is gone.
  std::optional<RefreshInputs> Next();
  /// True once a stop of the current refresh was asked for.
  bool Stopped();
  /// Runs work that cannot ask Stopped: a stop ends the process meanwhile, which is its completion.
  /// Nothing is run when the stop came before.
  void RunUnasked(const std::function<void()>& work);
  /// The current refresh is over; stops do not concern it any more.
  void Done();

 private:
  void Listen();
  bool TakeLines(std::string& input);
  void Take(const refresh_protocol::Command& command);
  void Close();

  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<RefreshInputs> waiting_;
  /// From the moment that a refresh is asked for until it is done.
  bool busy_ = false;
  bool stopped_ = false;
  bool unasked_ = false;
  bool closed_ = false;
  /// Last, so that it ends before what it works on; it ends once the input is closed.
  std::jthread listener_;
};

}  // namespace velkor
