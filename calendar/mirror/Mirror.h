// calendar/mirror/Mirror.h: a server's calendar as a folder: its objects as they were last fetched,
// and how the last synchronisation went.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "calendar/mirror/MirrorFolder.h"

namespace velkor {

/// What is known of the calendar as a whole.
struct MirrorState {
  std::string displayName = {};
  /// "#rrggbb"; empty for none.
  std::string colour = {};
  bool readOnly = false;
  /// What the server gave to ask for changes with (RFC 6578), or the mark of the calendar's state
  /// where it gives no such thing; empty: all objects are to be compared.
  std::string syncToken = {};
  std::string ctag = {};
  /// Seconds since 1970 when the last complete synchronisation ended; 0 for never.
  std::int64_t synchronised = 0;
  /// Why the last one failed, a sentence for people; empty when it did not.
  std::string trouble = {};
  /// It failed since the server was not reached.
  bool offline = false;

  friend bool operator==(const MirrorState&, const MirrorState&) = default;
};

struct ObjectKey {
  /// Of its file in the mirror, and the identifier of its appointment.
  std::string name = {};
  /// Where it lies on the server, as the server gives it.
  std::string href = {};
  std::string etag = {};

  friend bool operator==(const ObjectKey&, const ObjectKey&) = default;
};

struct MirrorObject {
  ObjectKey key = {};
  std::string bytes = {};
};

/// The folder of one collection, which our programs share: vkrSync writes the objects and the
/// state, the planner writes what waits to be sent (Outbox, MirrorWriter), the worker reads all
/// (ReadMirror). The folder is made by the first write; a missing one is an empty calendar. All
/// functions throw Error (a file error number) that names the file; nothing has changed then.
/// @see MirrorFolder for what a kill leaves: the old file or the new one.
///
///     objects/NAME   one line of JSON (href, etag, size of the rest), then the object's bytes
///     pending/NAME   one edit that waits to be sent, of the object with this name
///     notes/  refused/   what the user is to be told
///     state.json
class Mirror {
 public:
  /// @param folder  UTF-8, absolute
  explicit Mirror(std::string folder,
                  std::chrono::milliseconds patience = std::chrono::milliseconds(3000))
      : files_(std::move(folder), patience) {}

  const std::string& Folder() const { return files_.Path(); }

  /// A state that cannot be read is the one of a mirror that was never synchronised.
  MirrorState State() const;
  /// The objects put there before are on the disk first: a token never promises more than what a
  /// power failure leaves.
  void SetState(const MirrorState& state);

  /// All objects, by name; their headers alone are read. Where one is damaged, the state's token
  /// and ctag are forgotten, so that the next synchronisation compares all objects and fetches it
  /// anew.
  std::vector<ObjectKey> Objects();
  /// None for one that is not there or damaged.
  std::optional<MirrorObject> Object(const std::string& name) const;
  /// The same without its bytes.
  std::optional<ObjectKey> Key(const std::string& name) const;
  /// True for one that is there but cannot be read.
  bool IsDamaged(const std::string& name) const;

  /// Puts an object in the place of the one with this href, or adds it. Its name is the identifier
  /// of its UID (EntryIdOfUid); where another href has that one, or without a UID, it is made from
  /// the href.
  ObjectKey Put(const std::string& href, const std::string& etag, std::string_view bytes,
                Durability when = Durability::Later);
  /// One that is not there is no fault.
  void Remove(const std::string& href);

  /// Changes with every change of the objects and of what waits to be sent, not of the state. Costs
  /// one look at two folders. Taken before the mirror is read.
  std::string Revision() const;
  /// Changes with every new note, refused edit or answer. As cheap.
  std::string NewsRevision() const;

  /// Whoever synchronises keeps this meanwhile; null while another program does. Nobody waits for
  /// it, so that it may be kept over the network.
  [[nodiscard]] std::shared_ptr<const void> TryTurn() const { return files_.TryTask("turn"); }

  /// Has the next synchronisation compare all objects.
  void ForgetToken();

  /// Of the implementation.
  MirrorFolder& Files() { return files_; }
  const MirrorFolder& Files() const { return files_; }

 private:
  struct Header;

  static std::optional<Header> ReadHeader(std::string_view bytes);
  std::optional<Header> HeaderOf(const std::string& name) const;
  std::string NameFor(const std::string& href, std::string_view bytes);
  std::unordered_map<std::string, std::string>& Index();

  MirrorFolder files_;
  /// From href to name, once it was needed.
  std::optional<std::unordered_map<std::string, std::string>> index_;
};

/// True for what may be the name of an object: no path leads out of the folder.
bool IsObjectName(std::string_view name);

}  // namespace velkor
