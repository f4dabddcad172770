// tests/house/SourceTree.h: the texts of this repository as the checks of the house read them.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace velkor::house {

/// One text file; the path counts from the top folder, with slashes.
struct SourceFile {
  std::string path;
  std::string text;
};

/// What a check has to say: "path:line: what is wrong".
using Findings = std::vector<std::string>;
using Check = std::function<Findings(const SourceFile&)>;

struct Include {
  int line = 0;
  std::string path;
  /// Written in angle brackets.
  bool angled = false;
};

/// Every text file that is kept under version control by its place and name: sources, scripts,
/// build files and documents, without build folders and data.
std::vector<SourceFile> ReadTree(const std::string& root);

/// All findings of a check over a tree.
Findings CheckAll(const std::vector<SourceFile>& tree, const Check& check);

std::string FindingAt(const SourceFile& file, int line, std::string_view what);

bool IsHeader(const SourceFile& file);
/// A C++ header or source.
bool IsCode(const SourceFile& file);

std::vector<Include> Includes(const SourceFile& file);

/// The text with comments and the insides of literals blanked out; lines stay where they are.
std::string CodeOnly(std::string_view text);

std::vector<std::string> Lines(std::string_view text);

}  // namespace velkor::house
