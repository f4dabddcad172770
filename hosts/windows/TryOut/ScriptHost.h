// hosts/windows/TryOut/ScriptHost.h: runs a script in an engine of the system.
#pragma once

#include <initializer_list>
#include <string>

#include "platform/windows/com/Variant.h"
// After windows.h.
#include <activscp.h>

namespace velkor {

/// One script, .vbs by VBScript or .js by JScript, that knows one object by a name. On the thread
/// that initialised COM.
class ScriptHost {
 public:
  /// Reads the script: UTF-8, UTF-16 with its mark, else the system's code page. Throws Error with
  /// the path for a file that cannot be read, and for an ending or an engine that there is not.
  explicit ScriptHost(std::string path);
  ~ScriptHost();
  ScriptHost(const ScriptHost&) = delete;
  ScriptHost& operator=(const ScriptHost&) = delete;

  /// Runs it from its first line to its last. What goes wrong is told on standard error, as
  /// "path(line): text".
  /// @param name  of the object in the script
  void Run(const std::string& name, const ComPtr<IDispatch>& object);
  /// Calls a procedure of the script; without one nothing happens. Also in the middle of a run.
  void Call(const std::string& procedure, std::initializer_list<Variant> arguments);
  bool HasFailed() const;

 private:
  class Site;

  std::string path_;
  std::wstring text_;
  ComPtr<Site> site_;
  ComPtr<IActiveScript> engine_;
};

}  // namespace velkor
