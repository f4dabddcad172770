// hosts/windows/SetupHelper/Holders.cpp: asks the system and looks into every process.
#include "hosts/windows/SetupHelper/Holders.h"

#include <algorithm>
#include <vector>

#include "platform/windows/system/ProcessWatch.h"
// After windows.h.
#include <psapi.h>
#include <restartmanager.h>

namespace velkor {
namespace {

using Path = std::filesystem::path;

std::vector<DWORD> AllProcesses() {
  std::vector<DWORD> processes(4096);
  DWORD size = 0;
  const auto room = static_cast<DWORD>(processes.size() * sizeof(DWORD));
  if (!::EnumProcesses(processes.data(), room, &size)) return {};
  processes.resize(size / sizeof(DWORD));
  return processes;
}

/// The files of a process, its own first; none of one that may not be looked into.
std::vector<Path> ModulesOf(HANDLE process) {
  std::vector<HMODULE> modules(4096);
  DWORD size = 0;
  const auto room = static_cast<DWORD>(modules.size() * sizeof(HMODULE));
  if (!::EnumProcessModulesEx(process, modules.data(), room, &size, LIST_MODULES_ALL)) return {};
  modules.resize(std::min<std::size_t>(modules.size(), size / sizeof(HMODULE)));
  std::vector<Path> files;
  for (HMODULE module : modules) {
    std::wstring name(32'768, L'\0');
    name.resize(
        ::GetModuleFileNameExW(process, module, name.data(), static_cast<DWORD>(name.size())));
    files.emplace_back(std::move(name));
  }
  return files;
}

bool AreSame(const Path& one, const Path& other) {
  // Most differ in their names, which are compared without opening anything.
  if (::_wcsicmp(one.filename().c_str(), other.filename().c_str()) != 0) return false;
  std::error_code ignored;
  return std::filesystem::equivalent(one, other, ignored);
}

std::wstring ProgramOf(HANDLE process) {
  std::wstring name(32'768, L'\0');
  auto length = static_cast<DWORD>(name.size());
  if (!::QueryFullProcessImageNameW(process, 0, name.data(), &length)) return L"?";
  return Path(name.substr(0, length)).filename().wstring();
}

/// The numbers of the processes that the restart manager would have to end.
std::vector<DWORD> AskRestartManager(std::span<const Path> files) {
  DWORD session = 0;
  wchar_t key[CCH_RM_SESSION_KEY + 1] = {};
  if (::RmStartSession(&session, 0, key) != ERROR_SUCCESS) return {};
  std::vector<const wchar_t*> names;
  for (const Path& file : files) names.push_back(file.c_str());
  std::vector<RM_PROCESS_INFO> known(256);
  auto count = static_cast<UINT>(known.size());
  UINT needed = 0;
  DWORD reasons = 0;
  const bool answered =
      ::RmRegisterResources(session, static_cast<UINT>(names.size()), names.data(), 0, nullptr, 0,
                            nullptr) == ERROR_SUCCESS &&
      ::RmGetList(session, &needed, &count, known.data(), &reasons) == ERROR_SUCCESS;
  ::RmEndSession(session);
  std::vector<DWORD> processes;
  for (UINT index = 0; answered && index < count; ++index) {
    processes.push_back(known[index].Process.dwProcessId);
  }
  return processes;
}

}  // namespace

bool IsInUse(const Path& file) {
  constexpr DWORD Shared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const HANDLE opened = ::CreateFileW(file.c_str(), GENERIC_WRITE, Shared, nullptr, OPEN_EXISTING,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
  if (opened != INVALID_HANDLE_VALUE) {
    ::CloseHandle(opened);
    return false;
  }
  const DWORD code = ::GetLastError();
  return code == ERROR_SHARING_VIOLATION || code == ERROR_LOCK_VIOLATION ||
         code == ERROR_USER_MAPPED_FILE;
}

std::map<DWORD, std::wstring> HoldersOf(std::span<const Path> files) {
  std::map<DWORD, std::wstring> holders;
  const std::vector<DWORD> known = AskRestartManager(files);
  for (const DWORD id : AllProcesses()) {
    constexpr DWORD Rights = PROCESS_QUERY_INFORMATION | PROCESS_VM_READ;
    KernelHandle process(::OpenProcess(Rights, FALSE, id));
    const bool isKnown = std::find(known.begin(), known.end(), id) != known.end();
    if (!process && isKnown) {
      process.reset(::OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, id));
    }
    const std::vector<Path> modules = process ? ModulesOf(process.get()) : std::vector<Path>();
    const bool holds = std::any_of(modules.begin(), modules.end(), [&](const Path& module) {
      return std::any_of(files.begin(), files.end(),
                         [&](const Path& file) { return AreSame(module, file); });
    });
    if (isKnown || holds) holders[id] = ProgramOf(process.get());
  }
  return holders;
}

}  // namespace velkor
