// platform/headless/ScriptedShell.h: a user's desktop on which messages are what the test says.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/System.h"

namespace velkor {

class ScriptedShell : public Shell {
 public:
  /// What one round of ProcessMessages brings; called with the number of the round, from 1.
  std::function<void(int round)> onMessages;
  int rounds = 0;
  int waitPointers = 0;
  std::vector<std::string> pages;
  int beeps = 0;

  void ProcessMessages() override {
    ++rounds;
    if (onMessages) onMessages(rounds);
  }
  void SetWaitPointer(bool wait) override { waitPointers += wait ? 1 : -1; }
  void Beep() override { ++beeps; }
  void OpenPage(const std::string& address) override { pages.push_back(address); }
};

}  // namespace velkor
