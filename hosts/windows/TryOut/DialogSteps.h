// hosts/windows/TryOut/DialogSteps.h: what a script has done in a dialog, step by step.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/windows/system/Win32.h"

namespace velkor {

/// One step: a verb, the item that it is done to, and a value.
struct DialogStep {
  std::string verb;
  std::string item;
  std::string value;
};

/// Reads steps that semicolons part, as "edit 1148=C:\list.xml; check Weekends=1; press 1":
///
///     press ITEM           clicks a button; without an item the window is closed
///     edit ITEM=TEXT       sets the text of an edit; "file" names that of a file dialog
///     check ITEM=1 or 0    clicks a check box or an option that is not so yet
///     select ITEM=TEXT     chooses the line with this text in a list or a drop-down list
///     row ITEM=NUMBER      clicks the box of a row, from 0, in a list with check boxes
///     button NUMBER        clicks a button of the toolbar, counted from 0
///     key CODE             posts a virtual key to the item with the keyboard, or to a menu
///     wait MILLISECONDS
///
/// An item is a number (the identifier in the dialog) or its caption without the mark of its
/// letter; "text:NAME" is the edit or list behind the label NAME.
/// Throws Error for a step that it does not know, with the step.
std::vector<DialogStep> ParseDialogSteps(std::string_view text);

/// Does one step from a thread beside the dialog's own. Waits for the item until the deadline, and
/// throws Error when it never came or the step did not succeed.
void DoDialogStep(HWND dialog, const DialogStep& step, int milliseconds);

/// The texts that a dialog shows, one after the other.
std::string TextsOf(HWND dialog);

/// Title of a window, without asking its thread.
std::string TitleOf(HWND window);

}  // namespace velkor
