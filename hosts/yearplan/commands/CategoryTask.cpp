// hosts/yearplan/commands/CategoryTask.cpp: the words of `yearplan categories`.
#include "hosts/yearplan/commands/CategoryTask.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "hosts/yearplan/commands/CommandLine.h"
#include "values/ColourText.h"

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
  if (text.starts_with('#')) {
    if (const auto colour = ColourOfHex(std::string_view(text).substr(1))) return *colour;
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
  return "#" + ToHex(colour);
}

}  // namespace velkor
