// tests/house/SourceTree.cpp: reading the tree, its includes and its bare code.
#include "tests/house/SourceTree.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>

namespace velkor::house {
namespace {

namespace fs = std::filesystem;

bool IsText(const fs::path& path) {
  static constexpr std::array Extensions = {".h",  ".cpp", ".txt",  ".cmake", ".json",
                                            ".md", ".sh",  ".in",   ".idl",   ".def",
                                            ".rc", ".yml", ".html", ".svg",   ".ui"};
  static constexpr std::array Names = {"run", "LICENSE", ".clang-format", ".clang-tidy",
                                       ".gitignore"};
  const auto is = [](const std::string& text) {
    return [&text](const char* other) { return text == other; };
  };
  return std::ranges::any_of(Extensions, is(path.extension().string())) ||
         std::ranges::any_of(Names, is(path.filename().string()));
}

bool IsOutside(const std::string& path) {
  const std::string name = path.substr(path.find_last_of('/') + 1);
  return name == ".git" || path == "build" || path == "tests/data" || path == "tests/fuzz/corpus";
}

bool EndsWith(std::string_view text, std::string_view end) {
  return text.ends_with(end);
}

/// Walks over code and blanks what is no code.
class Blanker {
 public:
  explicit Blanker(std::string_view text) : text_(text) {}

  std::string Run() {
    while (at_ < text_.size()) Step();
    return std::move(code_);
  }

 private:
  bool Sees(std::string_view what) const { return text_.substr(at_).starts_with(what); }

  void Keep() { code_ += text_[at_++]; }

  void Blank() {
    code_ += text_[at_] == '\n' ? '\n' : ' ';
    ++at_;
  }

  void BlankThrough(std::string_view end) {
    while (at_ < text_.size() && !Sees(end)) Blank();
    for (std::size_t i = 0; i < end.size() && at_ < text_.size(); ++i) Blank();
  }

  void Literal(char quote) {
    Keep();
    while (at_ < text_.size() && text_[at_] != quote && text_[at_] != '\n') {
      if (text_[at_] == '\\' && at_ + 1 < text_.size()) Blank();
      Blank();
    }
    if (at_ < text_.size()) Keep();
  }

  void RawLiteral() {
    const std::size_t open = text_.find('(', at_);
    const std::string end = ")" + std::string(text_.substr(at_ + 2, open - at_ - 2)) + "\"";
    BlankThrough(end);
  }

  bool SeparatesDigits() const {
    const auto alnum = [](char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0; };
    return at_ > 0 && std::isxdigit(static_cast<unsigned char>(text_[at_ - 1])) != 0 &&
           at_ + 1 < text_.size() && alnum(text_[at_ + 1]);
  }

  void Step() {
    if (Sees("//")) {
      while (at_ < text_.size() && text_[at_] != '\n') Blank();
    } else if (Sees("/*")) {
      BlankThrough("*/");
    } else if (Sees("R\"")) {
      RawLiteral();
    } else if (text_[at_] == '"') {
      Literal('"');
    } else if (text_[at_] == '\'' && !SeparatesDigits()) {
      Literal('\'');
    } else {
      Keep();
    }
  }

  std::string_view text_;
  std::size_t at_ = 0;
  std::string code_;
};

}  // namespace

std::vector<SourceFile> ReadTree(const std::string& root) {
  std::vector<SourceFile> tree;
  for (auto entry = fs::recursive_directory_iterator(root); entry != fs::end(entry); ++entry) {
    const std::string path = entry->path().lexically_relative(root).generic_string();
    if (IsOutside(path)) {
      entry.disable_recursion_pending();
    } else if (entry->is_regular_file() && IsText(entry->path())) {
      std::ifstream in(entry->path(), std::ios::binary);
      tree.push_back({path, {std::istreambuf_iterator<char>(in), {}}});
    }
  }
  std::ranges::sort(tree, {}, &SourceFile::path);
  return tree;
}

Findings CheckAll(const std::vector<SourceFile>& tree, const Check& check) {
  Findings all;
  for (const SourceFile& file : tree) std::ranges::move(check(file), std::back_inserter(all));
  return all;
}

std::string FindingAt(const SourceFile& file, int line, std::string_view what) {
  return file.path + ":" + std::to_string(line) + ": " + std::string(what);
}

bool IsHeader(const SourceFile& file) {
  return EndsWith(file.path, ".h");
}

bool IsCode(const SourceFile& file) {
  return IsHeader(file) || EndsWith(file.path, ".cpp");
}

std::vector<Include> Includes(const SourceFile& file) {
  static const std::regex Pattern(R"re(^\s*#\s*include\s*([<"])([^>"]+)[>"])re");
  std::vector<Include> includes;
  int number = 0;
  for (const std::string& line : Lines(file.text)) {
    ++number;
    std::smatch match;
    if (std::regex_search(line, match, Pattern)) {
      includes.push_back({number, match[2], match[1] == "<"});
    }
  }
  return includes;
}

std::string CodeOnly(std::string_view text) {
  return Blanker(text).Run();
}

std::vector<std::string> Lines(std::string_view text) {
  std::vector<std::string> lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    lines.emplace_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

}  // namespace velkor::house
