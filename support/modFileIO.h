// support/modFileIO.h: opening and deleting files, file errors in plain words, safe file names.
#pragma once

#include <memory>
#include <string>
#include <string_view>

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

/// The text trimmed of blanks, with every character that a file name may not hold, and a "." at
/// its end, replaced by "_".
std::string MakeFileNameSafe(std::string_view text);

/// Shows what a file error number means. Numbers outside the table show nothing. 57 is told as a
/// full disk on purpose, and 61 is not in the table.
FileErrorAnswer ReportFileError(MessageBoxes& messages, long number);

}  // namespace velkor::modFileIO
