// tests/house/CoreRules.cpp: the headers and words that the core does without.
#include "tests/house/CoreRules.h"

#include <algorithm>
#include <regex>
#include <set>

namespace velkor::house {
namespace {

bool IsBound(std::string_view path) {
  static constexpr std::string_view Folders[] = {
      "control/", "model/", "view/", "print/", "exchange/", "categories/", "support/", "refresh/"};
  const bool seam = path.starts_with("platform/") && path.find('/', 9) == path.npos;
  return seam || std::ranges::any_of(
                     Folders, [path](std::string_view folder) { return path.starts_with(folder); });
}

/// Headers of the standard library that decide nothing about files, clocks or consoles.
bool IsHarmless(const std::string& header) {
  static const std::set<std::string> Headers = {
      "algorithm",
      "any",
      "array",
      "atomic",
      "bit",
      "bitset",
      "cassert",
      "cctype",
      "charconv",
      "chrono",
      "climits",
      "cmath",
      "compare",
      "concepts",
      "condition_variable",
      "cstddef",
      "cstdint",
      "cstdio",
      "cstdlib",
      "cstring",
      "deque",
      "exception",
      "forward_list",
      "functional",
      "initializer_list",
      "iomanip",
      "iterator",
      "limits",
      "list",
      "map",
      "memory",
      "memory_resource",
      "mutex",
      "new",
      "numbers",
      "numeric",
      "optional",
      "ostream",
      "istream",
      "queue",
      "random",
      "ranges",
      "ratio",
      "set",
      "span",
      "sstream",
      "stack",
      "stdexcept",
      "streambuf",
      "string",
      "string_view",
      "system_error",
      "tuple",
      "type_traits",
      "typeindex",
      "typeinfo",
      "unordered_map",
      "unordered_set",
      "utility",
      "valarray",
      "variant",
      "vector",
  };
  return Headers.contains(header);
}

struct Ban {
  std::regex words;
  std::string why;
};

const std::vector<Ban>& Bans() {
  // A free function's call: neither a member's nor the end of a longer name.
  const auto calls = [](const std::string& names) {
    return std::regex("(^|[^\\w.>])(" + names + ")\\s*\\(");
  };
  static const std::vector<Ban> All = {
      {std::regex(R"(\b(_WIN32|_WIN64|__linux__|__unix__|__APPLE__|__MINGW32__|_MSC_VER)\b)"),
       "a platform switch"},
      {std::regex(R"(\b(HWND|HDC|HANDLE|HFONT|HBRUSH|HPEN|HBITMAP|HINSTANCE|HMODULE|HMENU|HICON)"
                  R"(|HCURSOR|HKEY|HRESULT|HRGN|LPARAM|WPARAM|LRESULT|COLORREF|DWORD|BSTR|VARIANT)"
                  R"(|SAFEARRAY|IDispatch|IUnknown|LOGFONT[AW]?)\b|\bQ[A-Z][a-z]\w*)"),
       "a native type"},
      {std::regex(R"(\b(system_clock|steady_clock|high_resolution_clock|utc_clock)\b)"),
       "a system clock"},
      {calls("time|clock|gettimeofday|clock_gettime|localtime|localtime_r|gmtime|gmtime_r|mktime"),
       "a system clock"},
      {calls("fopen|freopen|tmpfile|fread|fwrite|fclose|rename|unlink|mkdir|opendir"),
       "a file-system call"},
      {calls("getenv|secure_getenv|setenv|putenv|system"), "the process's environment"},
      {calls("setlocale|localeconv|strtod|strtof|atof|stod|stof"),
       "the process's locale (use charconv)"},
      {std::regex(R"(\b(cout|cerr|clog)\b)"), "the console"},
      {calls("printf|puts|fputs|fprintf|putchar"), "the console"},
  };
  return All;
}

}  // namespace

Findings CheckCore(const SourceFile& file) {
  Findings findings;
  if (!IsCode(file) || !IsBound(file.path)) return findings;
  for (const Include& include : Includes(file)) {
    const bool ours = include.path.find('/') != std::string::npos || include.path == "Version.h";
    if (include.angled ? !IsHarmless(include.path) : !ours) {
      findings.push_back(FindingAt(file, include.line, "foreign header " + include.path));
    }
  }
  int number = 0;
  for (const std::string& line : Lines(CodeOnly(file.text))) {
    ++number;
    for (const Ban& ban : Bans()) {
      if (std::regex_search(line, ban.words)) {
        findings.push_back(FindingAt(file, number, ban.why));
      }
    }
  }
  return findings;
}

}  // namespace velkor::house
