// tests/house/HouseTest.cpp: the sources keep their layers, their openings and a portable core.
#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace velkor {
namespace {

namespace fs = std::filesystem;
using testing::IsEmpty;
using testing::SizeIs;

using Texts = std::vector<std::string>;

/// A header or source by its path from the top folder.
struct SourceFile {
  std::string path;
  Texts lines;
};

SourceFile FileOf(const std::string& path, std::istream& text) {
  SourceFile file{path, {}};
  for (std::string line; std::getline(text, line);) file.lines.push_back(line);
  return file;
}

std::vector<SourceFile> ReadTree() {
  std::vector<SourceFile> tree;
  for (auto entry = fs::recursive_directory_iterator(VELKOR_SOURCE); entry != fs::end(entry);
       ++entry) {
    const std::string path = entry->path().lexically_relative(VELKOR_SOURCE).generic_string();
    if (path == ".git" || path == "build") entry.disable_recursion_pending();
    if (!path.ends_with(".h") && !path.ends_with(".cpp")) continue;
    std::ifstream text(entry->path());
    tree.push_back(FileOf(path, text));
  }
  return tree;
}

/// The layers below each layer that is bound; hosts, tools, benches and tests may see all. A folder
/// inside another is a layer of its own.
const std::map<std::string, std::set<std::string>>& Below() {
  static const std::map<std::string, std::set<std::string>> all{
      {"values", {}},
      {"platform", {"values"}},
      {"support", {"platform"}},
      {"span", {"support"}},
      {"model", {"span"}},
      {"view", {"model"}},
      {"print", {"view"}},
      {"exchange", {"view"}},
      {"categories", {"view"}},
      {"control", {"print", "exchange", "categories"}},
      {"refresh", {"model"}},
      {"calendar", {"support"}},
      {"calendar/ics/file", {"calendar", "platform/posix"}},
      {"calendar/ics/read", {"calendar/ics/file"}},
      {"calendar/ics/write", {"calendar/ics/read"}},
      {"calendar/ics", {"calendar/ics/write"}},
      {"calendar/mirror", {"calendar/ics"}},
      {"calendar/set", {"calendar/mirror"}},
      {"calendar/net", {"calendar/ics/file"}},
      {"calendar/dav", {"calendar/net", "calendar/mirror"}},
      {"platform/headless", {"support"}},
      {"platform/posix", {"support"}},
      {"platform/desktop", {"platform/posix"}},
      {"platform/windows/system", {"support"}},
      {"platform/windows/com", {"platform/windows/system"}},
      {"platform/windows/accessible", {"platform/windows/com"}},
      {"platform/windows/outlook", {"platform/windows/com"}},
      {"platform/windows/drawing", {"platform/windows/system"}},
      {"platform/windows/elements", {"platform/windows/drawing"}},
      {"platform/windows/dialogs", {"platform/windows/elements"}},
      {"hosts", {}},
      {"tools", {}},
      {"tests", {}},
      {"bench", {}},
  };
  return all;
}

/// The layer of a path; empty for a path outside all layers.
std::string LayerOf(const std::string& path) {
  for (fs::path folder = fs::path(path).parent_path(); !folder.empty();
       folder = folder.parent_path()) {
    if (Below().contains(folder.string())) return folder.string();
  }
  return {};
}

bool IsBelow(const std::string& lower, const std::string& upper) {
  const auto& below = Below().at(upper);
  return lower == upper ||
         std::ranges::any_of(below, [&](const std::string& next) { return IsBelow(lower, next); });
}

bool IsFree(const std::string& layer) {
  return layer == "hosts" || layer == "tools" || layer == "tests" || layer == "bench";
}

bool IsCore(const std::string& layer) {
  return !layer.empty() && !IsFree(layer) && !layer.starts_with("calendar") &&
         !layer.starts_with("platform/");
}

/// What is wrong with an include line of a file; empty for nothing.
std::string FaultOfInclude(const std::string& layer, const std::string& line) {
  static const std::regex Pattern(R"re(^\s*#\s*include\s*([<"])([^>"]+)[>"])re");
  static const std::regex Foreign(
      R"(.*[/.].*|Q.*|filesystem|fstream|iostream|locale|codecvt|ctime|csignal|thread)");
  std::smatch include;
  if (layer.empty() || !std::regex_search(line, include, Pattern)) return {};
  const std::string path = include[2];
  const std::string target = include[1] == "<" ? "" : LayerOf(path);
  if (layer == "hosts" && target != "hosts" && IsFree(target)) {
    return "what is shipped must not include " + target;
  }
  if (IsFree(layer)) return {};
  if (include[1] == "<") {
    const bool foreign = IsCore(layer) && std::regex_match(path, Foreign);
    return foreign ? "foreign header " + path : "";
  }
  if (target.empty() && path != "Version.h" && (IsCore(layer) || path.starts_with("."))) {
    return "include by the path from the top folder";
  }
  return target.empty() || IsBelow(target, layer) ? "" : layer + " must not include " + target;
}

/// What a line of the core names that belongs to a face; empty for nothing.
std::string FaultOfCore(const std::string& line) {
  static const std::regex LiteralsAndComment(R"re("(\\.|[^"\\])*"|//.*|/\*.*?\*/)re");
  static const std::regex Switches(R"(\b(_WIN(32|64)|__(linux|unix|APPLE|MINGW32)\w*|_MSC_VER)\b)");
  static const std::regex Natives(
      R"(\b(H(WND|DC|ANDLE|FONT|BRUSH|PEN|BITMAP|INSTANCE|MODULE|MENU|ICON|CURSOR|KEY|RESULT|RGN))"
      R"(|LPARAM|WPARAM|LRESULT|COLORREF|DWORD|BSTR|VARIANT|SAFEARRAY|IDispatch|IUnknown|LOGFONT)"
      R"([AW]?)\b|\bQ[A-Z][a-z]\w*)");
  static const std::regex Outside(
      R"(\b((system|steady|high_resolution|utc)_clock|cout|cerr|clog)\b|(^|[^\w.>])(time|clock|)"
      R"(gettimeofday|clock_gettime|localtime(_r)?|gmtime(_r)?|mktime|fopen|freopen|tmpfile|fread|)"
      R"(fwrite|fclose|rename|unlink|mkdir|opendir|(secure_)?getenv|setenv|putenv|system|setlocale|)"
      R"(localeconv|strto[df]|ato[fil]|sto[dfil]|f?printf|f?puts|putchar)\s*\()");
  const std::string code = std::regex_replace(line, LiteralsAndComment, "");
  if (std::regex_search(code, Switches)) return "a platform switch";
  if (std::regex_search(code, Natives)) return "a native type";
  return std::regex_search(code, Outside) ? "a clock, file, environment, locale or console" : "";
}

std::string FaultOfShape(const SourceFile& file) {
  constexpr std::size_t MostLines = 700;
  if (file.lines.size() > MostLines) return "more than 700 lines";
  const auto code = std::ranges::find_if_not(
      file.lines, [](const std::string& line) { return line.starts_with("//"); });
  const std::string start = "// " + file.path + ": ";
  constexpr std::size_t LeastSentence = 10;
  if (code == file.lines.begin() || !file.lines[0].starts_with(start) ||
      file.lines[0].size() < start.size() + LeastSentence || !std::prev(code)->ends_with('.')) {
    return "must open with \"" + start + "what it is for.\"";
  }
  const bool header = file.path.ends_with(".h");
  return header && (code == file.lines.end() || *code != "#pragma once") ? "lacks #pragma once"
                                                                         : "";
}

/// "path:line: what is wrong" for each fault.
Texts FaultsOf(const SourceFile& file) {
  const std::string layer = LayerOf(file.path);
  Texts faults;
  const auto note = [&](std::size_t line, const std::string& fault) {
    if (!fault.empty()) faults.push_back(file.path + ":" + std::to_string(line) + ": " + fault);
  };
  note(1, FaultOfShape(file));
  for (std::size_t i = 0; i < file.lines.size(); ++i) {
    note(i + 1, FaultOfInclude(layer, file.lines[i]));
    if (IsCore(layer)) note(i + 1, FaultOfCore(file.lines[i]));
  }
  return faults;
}

TEST(House, EveryFileKeepsItsLayerItsOpeningAndAPortableCore) {
  const std::vector<SourceFile> tree = ReadTree();
  ASSERT_GT(tree.size(), 300u);
  Texts all;
  for (const SourceFile& file : tree) std::ranges::move(FaultsOf(file), std::back_inserter(all));
  EXPECT_THAT(all, IsEmpty());
}

// What the check above finds, so that it cannot pass by finding nothing.
TEST(House, FaultsAreFound) {
  const auto faultsOf = [](const std::string& path, const std::string& line) {
    std::istringstream text("// " + path + ": one line that says it.\n#pragma once\n" + line);
    return FaultsOf(FileOf(path, text));
  };
  const struct {
    const char* path;
    const char* good;
    const char* bad;
  } cases[] = {
      {"hosts/A.h", "#include \"control/B.h\"", "#include \"tools/B.h\""},
      {"control/A.h", "#include \"print/B.h\"", "#include \"hosts/B.h\""},
      {"print/A.h", "#include \"view/B.h\"", "#include \"exchange/B.h\""},
      {"model/A.h", "#include \"span/B.h\"", "#include \"view/B.h\""},
      {"span/A.h", "#include \"platform/B.h\"", "#include \"model/B.h\""},
      {"values/A.h", "#include \"values/B.h\"", "#include \"support/B.h\""},
      {"platform/desktop/A.h", "#include <QString>", "#include \"platform/headless/B.h\""},
      {"calendar/A.h", "#include <libical/ical.h>", "#include \"control/B.h\""},
      {"view/A.h", "#include <vector>", "#include <unistd.h>"},
      {"model/A.h", "// fopen( a HANDLE", "#include \"../view/B.h\""},
      {"model/A.h", "Say(\"time( \\\" HWND\");", "auto t = std::time (nullptr);"},
      {"support/A.h", "event.time(); Lifetime(1); HDCX x;", "void Draw(HDC dc);"},
      {"platform/A.h", "Queue QUEUE;", "#ifdef _WIN32"},
  };
  for (const auto& [path, good, bad] : cases) {
    EXPECT_THAT(faultsOf(path, good), IsEmpty()) << path;
    EXPECT_THAT(faultsOf(path, bad), SizeIs(1)) << path << ' ' << bad;
  }
  EXPECT_THAT(FaultsOf({"tests/A.cpp", {"// tests/B.cpp: another file's opening."}}), SizeIs(1));
  EXPECT_THAT(FaultsOf({"tests/A.h", {"// tests/A.h: no guard follows this."}}), SizeIs(1));
}

}  // namespace
}  // namespace velkor
