// calendar/ics/file/SaveRecord.cpp: the record's form, and finishing by it.
#include "calendar/ics/file/SaveRecord.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <optional>
#include <utility>

#include "calendar/ics/file/ShortHash.h"
#include "values/Error.h"
#include "values/Text.h"

namespace velkor {
namespace {

constexpr std::string_view Heading = "velkor-save";

struct Recorded {
  unsigned long long file = 0;
  std::string_view before;
  std::string_view after;
};

std::optional<Recorded> ReadRecord(std::string_view text) {
  const std::string_view head = text.substr(0, text.find('\n'));
  const auto parts = Split(head, " ");
  if (parts.size() != 4 || parts[0] != Heading || head.size() == text.size()) return std::nullopt;
  const auto file = ParseInteger(parts[1]);
  const auto before = ParseInteger(parts[2]);
  const auto after = ParseInteger(parts[3]);
  text.remove_prefix(head.size() + 1);
  const auto size = static_cast<long long>(text.size());
  const bool fits = file && before && after && *before >= 0 && *before <= size && *after >= 0 &&
                    *after == size - *before;
  if (!fits) return std::nullopt;
  const auto middle = static_cast<std::size_t>(*before);
  return Recorded{static_cast<unsigned long long>(*file), text.substr(0, middle),
                  text.substr(middle)};
}

/// True for what the file may be after a part of the new bytes was written over the old ones, in
/// any order, since a system that stops writes its pages in any order.
bool IsOnTheWay(std::string_view bytes, const Recorded& record) {
  const auto [shortest, longest] = std::minmax({record.before.size(), record.after.size()});
  if (bytes.size() < shortest || bytes.size() > longest) return false;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const bool isOld = i < record.before.size() ? bytes[i] == record.before[i] : bytes[i] == '\0';
    if (!isOld && (i >= record.after.size() || bytes[i] != record.after[i])) return false;
  }
  return true;
}

}  // namespace

SaveRecord::SaveRecord(int folder, std::string name, std::string path)
    : folder_(folder),
      name_(std::move(name)),
      recordName_(".velkor-" + ShortHash(name_) + ".save"),
      path_(std::move(path)) {}

bool SaveRecord::Exists() const {
  return ::faccessat(folder_, recordName_.c_str(), F_OK, 0) == 0;
}

std::string SaveRecord::Text(unsigned long long file, std::string_view before,
                             std::string_view after) {
  std::string text(Heading);
  for (const unsigned long long number : {file, static_cast<unsigned long long>(before.size()),
                                          static_cast<unsigned long long>(after.size())}) {
    text.append(" ").append(std::to_string(number));
  }
  return text.append("\n").append(before).append(after);
}

std::string SaveRecord::NameToKeep() const {
  const std::string first = name_ + ".unsaved";
  std::string name = first;
  for (int number = 2; ::faccessat(folder_, name.c_str(), F_OK, AT_SYMLINK_NOFOLLOW) == 0;
       ++number) {
    name = first + "-" + std::to_string(number);
  }
  return name;
}

bool SaveRecord::Finish() const {
  if (!Exists()) return true;
  const auto open = [&](const std::string& name, int mode) {
    OpenFile file(::openat(folder_, name.c_str(), mode | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    if (!file.IsOpen()) FailToSave(path_, errno);
    return file;
  };
  const std::string text = ReadAll(open(recordName_, O_RDONLY), path_, 0);
  const auto record = ReadRecord(text);
  const OpenFile file = open(name_, O_RDWR);
  const struct stat status = StatusOf(file, path_);
  const bool isFile = record && S_ISREG(status.st_mode) && status.st_ino == record->file;
  if (!isFile ||
      !IsOnTheWay(ReadAll(file, path_, static_cast<std::size_t>(status.st_size)), *record)) {
    const std::string kept = NameToKeep();
    if (::renameat(folder_, recordName_.c_str(), folder_, kept.c_str()) != 0) {
      FailToSave(path_, errno);
    }
    return false;
  }
  if (::lseek(file.Descriptor(), 0, SEEK_SET) != 0) FailToSave(path_, errno);
  WriteAll(file, record->after, path_);
  if (::ftruncate(file.Descriptor(), static_cast<off_t>(record->after.size())) != 0 ||
      !file.Synchronise()) {
    FailToSave(path_, errno);
  }
  if (::unlinkat(folder_, recordName_.c_str(), 0) != 0) FailToSave(path_, errno);
  return true;
}

}  // namespace velkor
