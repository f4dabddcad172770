// hosts/windows/TryOut/main.cpp: the try-out form for a user, or for a script.
#include <string>
#include <vector>

#include "hosts/windows/TryOut/Console.h"
#include "hosts/windows/TryOut/FormObject.h"
#include "hosts/windows/TryOut/ScriptHost.h"
// After windows.h.
#include <shellapi.h>

namespace velkor {
namespace {

constexpr int Failed = 1;
constexpr int Misused = 2;

constexpr const char* Usage =
    "TryOutForm                          opens the year planner in a form\n"
    "TryOutForm SCRIPT [ARGUMENT...]     runs a script (.vbs, .js) that drives the form; answers "
    "1\n"
    "                                    when it has an error or one of its checks failed";

class Ole {
 public:
  Ole() : opened_(SUCCEEDED(::OleInitialize(nullptr))) {}
  ~Ole() {
    if (opened_) ::OleUninitialize();
  }
  Ole(const Ole&) = delete;
  Ole& operator=(const Ole&) = delete;

 private:
  bool opened_;
};

std::vector<std::string> Arguments() {
  int count = 0;
  LPWSTR* const given = ::CommandLineToArgvW(::GetCommandLineW(), &count);
  std::vector<std::string> arguments;
  for (int i = 1; i < count; ++i) arguments.push_back(ToUtf8(std::wstring_view(given[i])));
  ::LocalFree(given);
  return arguments;
}

int RunScript(std::vector<std::string> arguments) {
  const std::string path = arguments.front();
  arguments.erase(arguments.begin());
  TryOutForm form;
  ScriptHost script(path);
  const ComPtr<FormObject> object(new FormObject(
      form, std::move(arguments),
      [&script](const std::string& procedure, std::initializer_list<Variant> values) {
        script.Call(procedure, values);
      }));
  form.Open();
  script.Run("Form", object);
  const int failures = object->Finish();
  form.Close();
  return failures > 0 || script.HasFailed() ? Failed : 0;
}

int Run(std::vector<std::string> arguments) {
  if (arguments.empty()) {
    TryOutForm().RunForUser();
    return 0;
  }
  JoinConsole();
  if (arguments.front().starts_with("-") || arguments.front().starts_with("/")) {
    const bool help = arguments.front() == "--help" || arguments.front() == "/?";
    (help ? WriteLine : WriteErrorLine)(Usage);
    return help ? 0 : Misused;
  }
  try {
    return RunScript(std::move(arguments));
  } catch (const Error& error) {
    WriteErrorLine(error.Description());
    return Failed;
  }
}

}  // namespace
}  // namespace velkor

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int) {
  const velkor::Ole ole;
  return velkor::Run(velkor::Arguments());
}
