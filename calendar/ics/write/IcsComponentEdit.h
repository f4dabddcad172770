// calendar/ics/write/IcsComponentEdit.h: changes single properties of a component and no other byte
// of it.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "calendar/ics/read/IcsLimits.h"
#include "calendar/ics/read/IcsScanner.h"

namespace velkor {

/// Works on the component's own properties, not on those of components inside it. Where a property
/// stands several times, the one that the reader takes is meant: the last one, of DTSTART the
/// first.
class IcsComponentEdit {
 public:
  /// The text of the file and the limits outlive this.
  IcsComponentEdit(std::string_view bytes, const IcsComponent& component, const IcsLimits& limits);

  bool Has(std::string_view name) const { return Find(name) != nullptr; }
  /// With the semicolon before each; without those named. Empty for a property that is not there.
  std::string ParametersWithout(std::string_view name,
                                std::initializer_list<std::string_view> left) const;
  /// The one parameter, with the semicolon before it; empty when it is not there.
  std::string ParameterOf(std::string_view name, std::string_view parameter) const;

  /// Gives a property this value, in the file's encoding; adds it when it is not there.
  void Set(std::string_view name, std::string_view parameters, std::string_view value);
  /// Removes it wherever it stands.
  void Remove(std::string_view name);
  /// Leaves only the first of several.
  void KeepFirst(std::string_view name);
  bool HasComponent(std::string_view name) const;
  void RemoveComponents(std::string_view name);
  /// Adds a component of ASCII lines inside this one.
  void AddComponent(std::span<const std::string_view> lines);

  /// The component's text with all changes made.
  std::string Text() const;

 private:
  struct Line {
    std::size_t begin = 0;
    std::size_t end = 0;
    /// In upper-case letters; empty for what is no own property.
    std::string name;
    /// As the file spells it.
    std::string spelled;
    std::string parameters;
    /// Of the outermost component inside this one that the line belongs to.
    std::string inside;
    /// What stands instead of the line.
    std::optional<std::string> replaced;
  };

  const Line* Find(std::string_view name) const;
  std::string LineEndOf(const Line& line) const;

  std::string_view bytes_;
  std::vector<Line> lines_;
  /// Into lines_: before the first component inside, and before END.
  std::size_t propertiesEnd_ = 0;
  std::size_t componentsEnd_ = 0;
  std::string lineEnd_;
  std::string addedProperties_;
  std::string addedComponents_;
};

}  // namespace velkor
