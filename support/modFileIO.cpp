// support/modFileIO.cpp: opening and deleting files, file errors in plain words, safe file names.
#include "support/modFileIO.h"

#include <algorithm>

#include "values/Error.h"
#include "values/Text.h"

namespace velkor::modFileIO {
namespace {

/// The text for a file error number; empty for a number that has none.
std::string_view FileErrorText(long number) {
  switch (number) {
    case 52:
    case 64:
      return "That filename is illegal.";
    case 54:
      return "Can't open your file for that type of access.";
    case 55:
      return "That file is already open.";
    case 57:
      return "The disk is full.";
    case 62:
      return "This file has a nonstandard end-of-file marker,"
             "or an attempt was made to read beyond "
             "the end-of-file marker.";
    case 68:
      return "That device appears to be unavailable.";
    case 71:
      return "The disk is not ready.";
    case 76:
      return "That path doesn't exist.";
    default:
      return {};
  }
}

constexpr long DeviceUnavailable = 68;

}  // namespace

std::unique_ptr<OutputFile> OpenForWriting(Files& files, const std::string& fileName) {
  return files.OpenForWriting(fileName);
}

bool DeleteIfPresent(Files& files, const std::string& fileName) {
  return !files.Exists(fileName) || files.Delete(fileName);
}

bool Replace(Files& files, const std::string& fileName, const std::string& beside,
             const std::vector<std::string>& pieces) {
  const auto file = OpenForWriting(files, beside);
  if (!file) return false;
  try {
    for (const std::string& piece : pieces) file->Write(piece);
    if (file->MoveOver(fileName)) return true;
  } catch (...) {
    // While it is still held, so that no other writer's file is meant.
    DeleteIfPresent(files, beside);
    throw;
  }
  DeleteIfPresent(files, beside);
  // A folder or a device of that name is nothing that is replaced.
  if (!files.Exists(fileName)) return false;
  throw Error(errors::PermissionDenied, "Permission denied: " + fileName);
}

std::string MakeFileNameSafe(std::string_view text) {
  constexpr std::string_view Forbidden = "\"/\\:|<>*?";
  std::string safe(Trim(text));
  if (safe.empty()) return safe;
  if (safe.back() == '.') safe.back() = '_';
  std::replace_if(
      safe.begin(), safe.end(),
      [&](char c) {
        return static_cast<unsigned char>(c) < 32 || Forbidden.find(c) != std::string_view::npos;
      },
      '_');
  return safe;
}

FileErrorAnswer ReportFileError(MessageBoxes& messages, long number) {
  const std::string_view text = FileErrorText(number);
  if (text.empty()) return FileErrorAnswer::NotAFileError;
  const bool canRetry = number == DeviceUnavailable;
  const MessageAnswer answer =
      messages.Show({.text = std::string(text),
                     .title = "File Error",
                     .buttons = canRetry ? MessageButtons::RetryCancel : MessageButtons::Ok,
                     .icon = MessageIcon::Exclamation});
  if (answer == MessageAnswer::Retry) return FileErrorAnswer::Retry;
  if (answer == MessageAnswer::Ignore) return FileErrorAnswer::Ignore;
  return FileErrorAnswer::Other;
}

}  // namespace velkor::modFileIO
