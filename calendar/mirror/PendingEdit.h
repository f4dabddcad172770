// calendar/mirror/PendingEdit.h: an edit of one object that waits to be sent, and its file.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "calendar/mirror/Mirror.h"
#include "calendar/mirror/ObjectText.h"

namespace velkor {

enum class EditKind { Create, Change, Delete };

/// What the user did to one field.
struct FieldEdit {
  /// Of the last time, seconds since 1970.
  std::int64_t time = 0;
  /// Hashes of the values that it had in between. They may have been sent, so that they are not
  /// somebody else's when the server has them.
  std::vector<std::string> passed = {};
};

/// A category put in the place of another one, in changed occurrences too.
struct CategoryEdit {
  std::string from = {};
  std::string to = {};
  std::int64_t time = 0;
};

/// Everything that the user did to an object since it was last in step with the server.
struct PendingEdit {
  EditKind kind = EditKind::Change;
  /// Grows with each change of the edit, and is no other edit's of this mirror.
  std::uint64_t revision = 0;
  /// The revision of the first one.
  std::uint64_t first = 0;
  /// Of the object that it changes or deletes.
  std::string href = {};
  std::string etag = {};
  /// Of a creation, also of one that was taken back: it was perhaps sent already.
  bool offered = false;
  std::map<ItemField, FieldEdit> fields = {};
  std::vector<CategoryEdit> categories = {};
  /// Of a deletion: what the object may show without being somebody else's change. Of a change:
  /// what it showed in between.
  std::vector<std::string> marks = {};
  /// The object without these edits, of a creation as it was first, and with them; of a deletion as
  /// it was shown last.
  std::string before = {};
  std::string after = {};
};

std::string EncodeEdit(const PendingEdit& edit);
/// None for bytes that are no whole edit, whatever they are.
std::optional<PendingEdit> DecodeEdit(std::string_view bytes);

/// What an object shows and when; another text after each change of it.
std::string MarkOfObject(std::string_view bytes);

/// The edit of an object as the disk has it; none where there is none or where it is damaged.
std::optional<PendingEdit> ReadEdit(const Mirror& mirror, const std::string& name);
/// The same without the objects before and after.
std::optional<PendingEdit> ReadEditHeader(const Mirror& mirror, const std::string& name);
/// Gives the edit its next revision and writes it.
void SaveEdit(Mirror& mirror, const std::string& name, PendingEdit& edit,
              Durability when = Durability::Now);
void DropEdit(Mirror& mirror, const std::string& name);

}  // namespace velkor
