// platform/windows/system/WindowsSystem.cpp: local time and environment variables.
#include "platform/windows/system/WindowsSystem.h"

#include "platform/windows/system/Wide.h"

namespace velkor {

Date WindowsClock::Now() {
  SYSTEMTIME now{};
  ::GetLocalTime(&now);
  return Date::FromFields({now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond});
}

std::string WindowsEnvironment::Variable(std::string_view name) {
  const std::wstring wide = ToWide(name);
  std::wstring value(::GetEnvironmentVariableW(wide.c_str(), nullptr, 0), L'\0');
  if (value.empty()) return {};
  const DWORD length =
      ::GetEnvironmentVariableW(wide.c_str(), value.data(), static_cast<DWORD>(value.size()));
  return length < value.size() ? ToUtf8({value.data(), length}) : std::string();
}

}  // namespace velkor
