// tests/platform/windows/Programs.h: the programs beside the test program, started and watched.
#pragma once

#include <filesystem>
#include <functional>
#include <set>
#include <string>
#include <utility>

#include "platform/windows/system/Modules.h"
#include "platform/windows/system/ProcessWatch.h"
#include "platform/windows/system/Wide.h"
#include "tests/platform/windows/PumpMessages.h"
// After windows.h.
#include <tlhelp32.h>

namespace velkor {

/// A program beside this one, with its arguments.
inline std::wstring CommandLine(const std::string& program, const std::string& arguments) {
  const std::filesystem::path folder =
      std::filesystem::path(ToWide(ModulePath(nullptr))).parent_path();
  return L"\"" + (folder / program).wstring() + L"\" " + ToWide(arguments);
}

/// Null when it does not start.
inline KernelHandle StartProgram(const std::string& program, const std::string& arguments,
                                 HANDLE output = nullptr) {
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = startup.hStdError = output;
  PROCESS_INFORMATION started{};
  std::wstring line = CommandLine(program, arguments);
  if (!::CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                        &started)) {
    return nullptr;
  }
  ::CloseHandle(started.hThread);
  return KernelHandle(started.hProcess);
}

/// Its exit code.
inline DWORD RunProgram(const std::string& program, const std::string& arguments,
                        HANDLE output = nullptr) {
  const KernelHandle process = StartProgram(program, arguments, output);
  DWORD code = 99;
  if (process && ::WaitForSingleObject(process.get(), 20'000) == WAIT_OBJECT_0) {
    ::GetExitCodeProcess(process.get(), &code);
  }
  return code;
}

/// The running processes of a program.
inline std::set<DWORD> ProcessesOf(const wchar_t* program) {
  std::set<DWORD> found;
  const KernelHandle all(::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
  PROCESSENTRY32W process{};
  process.dwSize = sizeof process;
  for (BOOL more = ::Process32FirstW(all.get(), &process); more;
       more = ::Process32NextW(all.get(), &process)) {
    if (::lstrcmpiW(process.szExeFile, program) == 0) found.insert(process.th32ProcessID);
  }
  return found;
}

/// What a program left behind.
struct ProgramRun {
  DWORD code = 99;
  /// Standard output and standard error.
  std::string output;
};

/// Runs a program to its end, for 80 seconds at most.
/// @param meanwhile  called over and over while it runs
inline ProgramRun Capture(const std::string& program, const std::string& arguments,
                          const std::function<void(HANDLE process)>& meanwhile = {}) {
  constexpr DWORD Limit = 80'000;
  ProgramRun run;
  SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
  HANDLE ends[2] = {};
  if (!::CreatePipe(&ends[0], &ends[1], &inherited, 1 << 20)) return run;
  const KernelHandle reading(ends[0]);
  KernelHandle writing(ends[1]);
  const KernelHandle process = StartProgram(program, arguments, writing.get());
  writing.reset();
  const bool ended = PumpUntil(
      [&] {
        if (meanwhile) meanwhile(process.get());
        return ::WaitForSingleObject(process.get(), 0) == WAIT_OBJECT_0;
      },
      Limit);
  if (!ended) {
    run.output = program + " does not end\n";
    ::TerminateProcess(process.get(), 99);
  }
  ::WaitForSingleObject(process.get(), 5000);
  ::GetExitCodeProcess(process.get(), &run.code);
  char part[4096];
  for (DWORD got = 0; ::ReadFile(reading.get(), part, sizeof part, &got, nullptr) && got > 0;) {
    run.output.append(part, got);
  }
  return run;
}

}  // namespace velkor
