// platform/CommonDialogs.h: the platform's own dialogs for files and colours.
#pragma once

#include <optional>
#include <string>

#include "values/Colour.h"

namespace velkor {

/// Flags of a file dialog (the common dialog control's cdlOFN constants).
namespace file_dialog_flags {
inline constexpr unsigned OverwritePrompt = 2;
inline constexpr unsigned HideReadOnly = 4;
}  // namespace file_dialog_flags

struct FileDialog {
  /// Pairs of a name and a pattern, all joined by "|": "All Files(*.*)|*.*".
  std::string filter;
  std::string title;
  /// file_dialog_flags joined.
  unsigned flags = 0;
  /// Without its dot; added to a name without one.
  std::string defaultExtension;
};

class CommonDialogs {
 public:
  virtual ~CommonDialogs() = default;
  /// A file's name with its folder, UTF-8; empty when the user cancels. May throw Error.
  virtual std::string ShowOpen(const FileDialog& dialog) = 0;
  virtual std::string ShowSave(const FileDialog& dialog) = 0;
  /// A colour, beginning with `current`; none when the user cancels. May throw Error.
  virtual std::optional<Colour> ShowColour(Colour current) = 0;
};

}  // namespace velkor
