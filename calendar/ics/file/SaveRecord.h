// calendar/ics/file/SaveRecord.h: what a save into a file itself leaves beside it until it is done.
#pragma once

#include <string>
#include <string_view>

#include "calendar/ics/file/SaveFaults.h"

namespace velkor {

/// A file with several names or with rights that no other file can be given is written into, not
/// replaced. Before that, its old and its new bytes stand whole in a record beside it, so that the
/// next of our programs can finish what one that was stopped has begun.
class SaveRecord {
 public:
  /// @param folder  where the file and the record lie, open and locked
  /// @param name    of the file
  /// @param path    what messages call the file
  SaveRecord(int folder, std::string name, std::string path);

  const std::string& Name() const { return recordName_; }
  bool Exists() const;
  /// @param file  the number of its entry, by which the record knows it again
  static std::string Text(unsigned long long file, std::string_view before, std::string_view after);
  /// Writes into the file what its record says, and takes the record away. A file that another
  /// program has changed since is left alone; the record then stays under the file's name with
  /// ".unsaved" and, beside older ones, a number. Does nothing without a record. Throws as
  /// FailToSave does.
  /// @return false when the file was left alone
  bool Finish() const;

 private:
  std::string NameToKeep() const;

  int folder_;
  std::string name_;
  std::string recordName_;
  std::string path_;
};

}  // namespace velkor
