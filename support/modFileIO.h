// support/modFileIO.h: opening and deleting files, file errors in plain words, safe file names.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/MessageBoxes.h"
#include "platform/System.h"

namespace velkor::modFileIO {

/// What the caller of a failed file operation may do next.
enum class FileErrorAnswer {
  Retry,
  Ignore,
  /// Told to the user, nothing to do.
  Other,
  /// Not an error of the table; nothing was shown.
  NotAFileError,
};

/// Opens a file for binary writing; null when it cannot be opened.
std::unique_ptr<OutputFile> OpenForWriting(Files& files, const std::string& fileName);

/// @return false when a file of that name exists and could not be deleted
bool DeleteIfPresent(Files& files, const std::string& fileName);

/// Puts a file of these pieces in the place of another in one step, by way of the file `beside`,
/// which is gone afterwards. Throws Error with a file error number; PermissionDenied where the old
/// file may not be replaced.
/// @return false when `beside` cannot be written, or when the place is no file's
bool Replace(Files& files, const std::string& fileName, const std::string& beside,
             const std::vector<std::string>& pieces);

/// The text trimmed of blanks, with every character that a file name may not hold, and a "." at
/// its end, replaced by "_".
std::string MakeFileNameSafe(std::string_view text);

/// Shows what a file error number means. Numbers outside the table show nothing. 57 is told as a
/// full disk on purpose, and 61 is not in the table.
FileErrorAnswer ReportFileError(MessageBoxes& messages, long number);

}  // namespace velkor::modFileIO
