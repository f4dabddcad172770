// hosts/yearplan/commands/CategoryTask.cpp: the words of `yearplan categories`.
#include "hosts/yearplan/commands/CategoryTask.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>

#include "hosts/yearplan/commands/CommandLine.h"

namespace velkor {
namespace {

struct TaskForm {
  std::string_view word;
  CategoryTask::Kind kind;
  std::size_t operands;
  const char* usage;
};

constexpr std::array<TaskForm, 5> Tasks{{
    {"list", CategoryTask::Kind::List, 0, "list"},
    {"new", CategoryTask::Kind::New, 1, "new NAME"},
    {"rename", CategoryTask::Kind::Rename, 2, "rename OLD NEW"},
    {"recolour", CategoryTask::Kind::Recolour, 2, "recolour NAME COLOUR"},
    {"delete", CategoryTask::Kind::Delete, 1, "delete NAME"},
}};

Colour ParseColour(const std::string& text) {
  constexpr std::size_t Length = 7;
  constexpr int Hexadecimal = 16;
  const char* end = text.data() + text.size();
  std::uint32_t value = 0;
  if (text.size() == Length && text.front() == '#') {
    const auto [read, fault] = std::from_chars(text.data() + 1, end, value, Hexadecimal);
    if (fault == std::errc() && read == end) {
      return Colour::FromRgb(static_cast<std::uint8_t>(value >> 16),
                             static_cast<std::uint8_t>(value >> 8),
                             static_cast<std::uint8_t>(value));
    }
  }
  throw UsageError("A colour is given as in '#3366CC', red first, not \"" + text + "\"");
}

}  // namespace

CategoryTask ParseCategoryTask(const std::vector<std::string>& words) {
  if (words.empty()) return {};
  const auto* task = std::find_if(Tasks.begin(), Tasks.end(),
                                  [&](const TaskForm& form) { return form.word == words[0]; });
  if (task == Tasks.end()) {
    throw UsageError("categories does not know \"" + words[0] +
                     "\" but list, new, rename, recolour and delete");
  }
  if (words.size() != task->operands + 1) {
    throw UsageError(std::string("It is: yearplan categories CALENDAR ") + task->usage);
  }
  CategoryTask parsed{
      .kind = task->kind, .name = {}, .newName = {}, .listOnly = false, .colour = {}};
  if (task->operands > 0) parsed.name = words[1];
  if (task->kind == CategoryTask::Kind::Rename) parsed.newName = words[2];
  if (task->kind == CategoryTask::Kind::Recolour) parsed.colour = ParseColour(words[2]);
  const bool names = task->kind == CategoryTask::Kind::New;
  const bool renames = task->kind == CategoryTask::Kind::Rename;
  if ((names && parsed.name.empty()) || (renames && parsed.newName.empty())) {
    throw UsageError("A category needs a name");
  }
  return parsed;
}

std::string ColourText(Colour colour) {
  std::array<char, 8> text{};
  std::snprintf(text.data(), text.size(), "#%02X%02X%02X", colour.Red(), colour.Green(),
                colour.Blue());
  return text.data();
}

}  // namespace velkor
