// platform/windows/system/WindowsSystem.h: the clock and the environment of the process.
#pragma once

#include "platform/System.h"

namespace velkor {

class WindowsClock : public Clock {
 public:
  Date Now() override;
};

class WindowsEnvironment : public Environment {
 public:
  std::string Variable(std::string_view name) override;
  char PathSeparator() const override { return '\\'; }
};

}  // namespace velkor
