// tests/house/Arrows.cpp: the layers and what each of them may see.
#include "tests/house/Arrows.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

namespace velkor::house {
namespace {

/// The layer that a file belongs to; empty for a path outside all layers.
std::string LayerOf(std::string_view path) {
  // The first fit counts, so a folder inside another stands before it.
  static constexpr std::pair<std::string_view, std::string_view> Layers[] = {
      {"support/values/", "values"},
      {"support/", "support"},
      {"platform/headless/", "headless"},
      {"platform/desktop/", "desktop"},
      {"platform/windows/", "windows"},
      {"platform/", "seams"},
      {"view/span/", "span"},
      {"view/", "view"},
      {"model/", "model"},
      {"print/", "print"},
      {"exchange/", "exchange"},
      {"categories/", "categories"},
      {"control/", "control"},
      {"refresh/", "refresh"},
      {"calendar/", "calendar"},
      {"hosts/", "hosts"},
      {"tools/", "tools"},
      {"tests/", "tests"},
      {"bench/", "bench"},
  };
  const auto* layer = std::ranges::find_if(
      Layers, [path](const auto& candidate) { return path.starts_with(candidate.first); });
  return layer == std::end(Layers) ? std::string() : std::string(layer->second);
}

using Names = std::set<std::string, std::less<>>;

Names With(Names names, const Names& more) {
  names.insert(more.begin(), more.end());
  return names;
}

/// For each layer that is bound by arrows, the layers that it may include. Hosts, tools, benches
/// and tests are not bound.
std::map<std::string, Names> AllowedIncludes() {
  std::map<std::string, Names> allowed;
  allowed["values"] = {"values"};
  allowed["seams"] = With(allowed["values"], {"seams"});
  allowed["support"] = With(allowed["seams"], {"support"});
  allowed["span"] = With(allowed["support"], {"span"});
  allowed["model"] = With(allowed["span"], {"model"});
  allowed["view"] = With(allowed["model"], {"view"});
  for (const char* peer : {"print", "exchange", "categories"}) {
    allowed[peer] = With(allowed["view"], {peer});
  }
  allowed["control"] = With(allowed["view"], {"print", "exchange", "categories", "control"});
  allowed["refresh"] = With(allowed["model"], {"refresh"});
  for (const char* outer : {"calendar", "headless", "desktop", "windows"}) {
    allowed[outer] = With(allowed["support"], {outer});
  }
  return allowed;
}

}  // namespace

Findings CheckArrows(const SourceFile& file) {
  static const std::map<std::string, Names> Allowed = AllowedIncludes();
  Findings findings;
  const auto allowed = Allowed.find(LayerOf(file.path));
  if (!IsCode(file) || allowed == Allowed.end()) return findings;
  for (const Include& include : Includes(file)) {
    const std::string target = LayerOf(include.path);
    if (include.path.starts_with(".")) {
      findings.push_back(FindingAt(file, include.line, "include by the path from the top folder"));
    } else if (!target.empty() && !allowed->second.contains(target)) {
      findings.push_back(
          FindingAt(file, include.line,
                    allowed->first + " must not include " + target + " (" + include.path + ")"));
    }
  }
  return findings;
}

}  // namespace velkor::house
