// hosts/windows/SetupHelper/main.cpp: tells who uses files, and takes back removals.
#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <iterator>
#include <vector>

#include "hosts/windows/SetupHelper/Holders.h"
#include "hosts/windows/SetupHelper/PendingRemovals.h"
#include "platform/windows/system/AnsiText.h"
#include "platform/windows/system/Wide.h"

namespace velkor {
namespace {

constexpr int Done = 0;
constexpr int InUse = 1;
constexpr int WrongUsage = 2;

std::vector<std::filesystem::path> UsedOf(std::span<wchar_t* const> files) {
  std::vector<std::filesystem::path> used;
  std::copy_if(files.begin(), files.end(), std::back_inserter(used), IsInUse);
  return used;
}

/// Whether only cache utilities are left, each of which ends some seconds after its client.
bool EndsBySelf(const std::map<DWORD, std::wstring>& holders) {
  return !holders.empty() && std::all_of(holders.begin(), holders.end(), [](const auto& each) {
    return each.second == L"vkrRefresh.exe";
  });
}

/// Prints the programs that use any of the files.
int TellHolders(std::span<wchar_t* const> files) {
  constexpr ULONGLONG Patience = 15'000;
  const ULONGLONG begun = ::GetTickCount64();
  for (;;) {
    const std::vector<std::filesystem::path> used = UsedOf(files);
    if (used.empty()) return Done;
    const std::map<DWORD, std::wstring> holders = HoldersOf(used);
    if (!EndsBySelf(holders) || ::GetTickCount64() - begun > Patience) {
      for (const auto& [process, program] : holders) {
        std::printf("%s (process %lu)\r\n", ToAnsi(ToUtf8(program)).c_str(), process);
      }
      return InUse;
    }
    ::Sleep(500);
  }
}

int Run(std::span<wchar_t* const> arguments) {
  const std::wstring_view option = arguments.empty() ? L"" : arguments[0];
  if (option == L"/Holders" && arguments.size() > 1) return TellHolders(arguments.subspan(1));
  if (option == L"/Forget" && arguments.size() == 2) {
    ForgetPendingRemovals(arguments[1]);
    return Done;
  }
  std::puts("SetupHelper /Holders FILE...  prints each program that uses one of the files");
  std::puts("SetupHelper /Forget FOLDER    has the system not remove it when it starts again");
  std::puts("It answers with 0 when it is done, 1 when a file is in use.");
  return WrongUsage;
}

}  // namespace
}  // namespace velkor

int wmain(int count, wchar_t* arguments[]) {
  try {
    return velkor::Run(std::span(arguments, static_cast<std::size_t>(count)).subspan(1));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "SetupHelper: %s\n", error.what());
    return velkor::WrongUsage;
  }
}
