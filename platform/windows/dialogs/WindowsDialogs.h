// platform/windows/dialogs/WindowsDialogs.h: the system's dialogs for files and colours.
#pragma once

#include <array>

#include "platform/CommonDialogs.h"
#include "platform/windows/system/Win32.h"

namespace velkor {

class DialogOwner;

/// File names may have any characters. The current directory stays what it was; the system
/// remembers the folder.
class WindowsCommonDialogs : public CommonDialogs {
 public:
  explicit WindowsCommonDialogs(DialogOwner& owner) : owner_(owner) {
    customColours_.fill(RGB(255, 255, 255));
  }

  std::string ShowOpen(const FileDialog& dialog) override;
  std::string ShowSave(const FileDialog& dialog) override;
  std::optional<Colour> ShowColour(Colour current) override;

 private:
  DialogOwner& owner_;
  /// What the user made up, for the next time.
  std::array<COLORREF, 16> customColours_;
};

}  // namespace velkor
