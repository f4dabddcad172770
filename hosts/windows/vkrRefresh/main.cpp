// hosts/windows/vkrRefresh/main.cpp: the cache utility of the Windows control, and its
// registration.
#include <algorithm>
#include <exception>
#include <string>
#include <string_view>

#include "hosts/windows/vkrRefresh/Server.h"
#include "hosts/windows/vkrRefresh/ServerRegistration.h"
#include "platform/windows/outlook/AutomationOutlook.h"
#include "platform/windows/system/Wide.h"

namespace velkor {
namespace {

constexpr int Done = 0;
constexpr int Failed = 1;
constexpr int WrongUsage = 2;

constexpr std::string_view Usage =
    "vkrRefresh rebuilds the cache files of the year planner; the planner starts it.\n"
    "\n"
    "vkrRefresh /RegServer           registers it for everybody (as administrator)\n"
    "vkrRefresh /UnregServer         removes that registration\n"
    "vkrRefresh /RegServerPerUser    registers it for the current user\n"
    "vkrRefresh /UnregServerPerUser  removes that registration\n"
    "\n"
    "Register it where it is going to stay. It answers with 0 when it is done, 1 when it failed.\n";

/// Writes to where the program's output goes, else to the console that it was started from, if any.
void Tell(std::string_view text, DWORD stream = STD_OUTPUT_HANDLE) {
  HANDLE out = ::GetStdHandle(stream);
  if ((out == nullptr || out == INVALID_HANDLE_VALUE) && ::AttachConsole(ATTACH_PARENT_PROCESS)) {
    out = ::GetStdHandle(stream);
  }
  if (out == nullptr || out == INVALID_HANDLE_VALUE) return;
  DWORD written = 0;
  const std::wstring wide = ToWide(text);
  if (!::WriteConsoleW(out, wide.data(), static_cast<DWORD>(wide.size()), &written, nullptr)) {
    ::WriteFile(out, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
  }
}

/// The one argument without what introduces it, in lower case; empty when there is not one.
std::string Option() {
  int count = 0;
  const auto arguments = ::CommandLineToArgvW(::GetCommandLineW(), &count);
  std::string option =
      arguments != nullptr && count == 2 ? ToUtf8(std::wstring_view(arguments[1])) : std::string();
  ::LocalFree(arguments);
  if (option.empty() || (option[0] != '/' && option[0] != '-')) return {};
  option.erase(0, 1);
  std::transform(option.begin(), option.end(), option.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  return option;
}

int Run(const std::string& option) {
  if (option == "embedding") {
    DialogOwner owner;
    Serve([&owner] { return std::make_unique<AutomationOutlook>(owner); });
    return Done;
  }
  if (option == "regserver") {
    RegisterServer(Registration::Machine);
    Tell("The cache utility is registered for everybody.\n");
  } else if (option == "unregserver") {
    UnregisterServer(Registration::Machine);
    Tell("The cache utility is not registered for everybody any more.\n");
  } else if (option == "regserverperuser") {
    RegisterServer(Registration::User);
    Tell("The cache utility is registered for the current user.\n");
  } else if (option == "unregserverperuser") {
    UnregisterServer(Registration::User);
    Tell("The cache utility is not registered for the current user any more.\n");
  } else {
    Tell(Usage);
    return option == "?" || option == "help" ? Done : WrongUsage;
  }
  return Done;
}

}  // namespace
}  // namespace velkor

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
  try {
    return velkor::Run(velkor::Option());
  } catch (const std::exception& error) {
    velkor::Tell("vkrRefresh: " + std::string(error.what()) + "\n", STD_ERROR_HANDLE);
    return velkor::Failed;
  }
}
