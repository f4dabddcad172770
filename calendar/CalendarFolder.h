// calendar/CalendarFolder.h: a folder's items, how they are saved, and who is told.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "calendar/CalendarItem.h"
#include "values/Date.h"

namespace velkor {

/// A stretch of time, both ends included.
struct DateWindow {
  Date from;
  Date to;
};

/// Where a folder keeps its items. Each function throws Error when it cannot save; nothing has
/// changed then.
class CalendarWriter {
 public:
  virtual ~CalendarWriter() = default;
  /// @return the item as it was saved, with its identifier
  virtual CalendarItem WriteNew(const CalendarItem& item, bool reminder) = 0;
  /// @param after   what WithChange gives, with its time of saving
  /// @return the item as it was saved
  virtual CalendarItem WriteChange(const CalendarItem& after, const ItemChange& change) = 0;
  virtual void WriteDeletion(const CalendarItem& item) = 0;
  /// Puts one category in place of another in all items that carry it, changed occurrences too.
  /// The folder has them after the next Refresh.
  virtual void WriteCategory(std::string_view from, std::string_view to, Date now) = 0;
  /// Keeps other programs of ours from saving for as long as the answer is kept.
  [[nodiscard]] virtual std::shared_ptr<const void> Hold() = 0;
  /// Brings the folder up to date with what others saved.
  virtual void Refresh() = 0;
};

struct FolderEvent {
  enum class Kind { Add, Change, Remove };
  Kind kind;
  /// Null for a removal.
  std::shared_ptr<const CalendarItem> item;
};

/// Saving goes first to the writer, when there is one, then into memory, and then every listener
/// is told; a save that fails throws and leaves all as it was. Functions that take an identifier
/// throw Error (CalendarFailed) when there is no such item.
class CalendarFolder {
 public:
  using Item = std::shared_ptr<const CalendarItem>;
  using Items = std::vector<Item>;
  /// Reads the folder's items again, with the occurrences of another window; may throw Error.
  using Loader = std::function<std::vector<CalendarItem>(const DateWindow&)>;
  using Listener = std::function<void(const FolderEvent&)>;
  /// So many events are raised at most when items are replaced; beyond that a single removal
  /// stands for them all, since it makes its listeners look at everything again.
  static constexpr std::size_t MostEvents = 50;

  CalendarFolder(std::string name, std::string entryId, int itemType)
      : name_(std::move(name)), entryId_(std::move(entryId)), itemType_(itemType) {}

  const std::string& Name() const { return name_; }
  const std::string& EntryID() const { return entryId_; }
  /// OlItemType.
  int ItemType() const { return itemType_; }

  CalendarFolder& AddFolder(std::string name, std::string entryId, int itemType);
  const std::vector<std::unique_ptr<CalendarFolder>>& Folders() const { return folders_; }

  /// Puts an item there without writing it; nobody is told.
  void Add(CalendarItem item);
  /// Puts an item there that its writer has saved already, and tells of it.
  Item AddSaved(CalendarItem item);
  /// Puts an item there that is written when it is first saved, as a new one. It survives
  /// Replace, but gives way to an item of the same subject that comes with it; it is not put there
  /// at all when there is one already. Without an identifier it gets one.
  void AddUnsaved(CalendarItem item);
  /// Replaces all items by others with the occurrences of `window`, and tells of those that were
  /// added, changed or removed, by their identifiers. Without a loader a folder counts as loaded
  /// for every window.
  void Replace(std::vector<CalendarItem> items, const DateWindow& window);
  /// The same; items of AllItems stay what they are.
  void Replace(Items items, const DateWindow& window);
  void SetLoader(Loader loader) { loader_ = std::move(loader); }
  /// The writer outlives the folder; null keeps items in memory only.
  void SetWriter(CalendarWriter* writer) { writer_ = writer; }

  const Items& AllItems() const { return items_; }
  /// The item with this identifier; null when there is none. An unsaved item that was saved or
  /// gave way since is found under its old identifier, too.
  Item Find(const std::string& entryId) const;
  /// Grows with every change of the items.
  std::uint64_t Revision() const { return revision_; }
  /// The window whose occurrences are there; none before the first Replace.
  const std::optional<DateWindow>& Loaded() const { return loaded_; }

  /// Makes sure that every occurrence which touches `window` is there. Loads more than asked for,
  /// so that neighbouring windows need no second load. A load that fails throws the loader's Error
  /// and leaves the items as they are.
  void Load(const DateWindow& window);

  /// @param now  time of saving; a later one is kept when the item was saved at that second already
  /// @return the item as it stands now
  Item SaveNew(CalendarItem item, bool reminder, Date now);
  /// An empty change saves nothing, except for an unsaved item.
  Item SaveChange(const std::string& entryId, const ItemChange& change, Date now);
  void Delete(const std::string& entryId);
  /// Puts one category in place of another in all items that carry it, in one step.
  /// @return false without a writer, who alone can
  bool ReplaceCategory(std::string_view from, std::string_view to, Date now);
  /// Keeps other programs of ours from saving for as long as the answer is kept, and brings the
  /// folder up to date; null without a writer.
  [[nodiscard]] std::shared_ptr<const void> Hold();

  /// Calls a listener after each change for as long as the answer is kept. A listener may change
  /// the folder, of which all are told when it is done, and end its own or another's listening.
  [[nodiscard]] std::shared_ptr<const Listener> Listen(Listener listener);

 private:
  const std::string& CurrentId(const std::string& entryId) const;
  std::size_t IndexOf(const std::string& entryId) const;
  std::size_t Expect(const std::string& entryId) const;
  std::string FreshId();
  void Put(std::size_t index, CalendarItem item);
  void KeepUnsaved(Items& items);
  std::vector<FolderEvent> DifferencesTo(Items& items) const;
  void Raise(const FolderEvent& event);

  std::string name_;
  std::string entryId_;
  int itemType_;
  std::vector<std::unique_ptr<CalendarFolder>> folders_;
  Items items_;
  mutable std::unordered_map<std::string, std::size_t> index_;
  mutable std::optional<std::uint64_t> indexedRevision_;
  std::uint64_t revision_ = 0;
  std::uint64_t nextId_ = 1;
  std::unordered_set<std::string> unsaved_;
  /// From the identifier of an unsaved item to the one of the item that stands for it now.
  std::unordered_map<std::string, std::string> renamed_;
  Loader loader_;
  CalendarWriter* writer_ = nullptr;
  std::optional<DateWindow> loaded_;
  std::vector<std::weak_ptr<const Listener>> listeners_;
  /// Events that wait for those before them.
  std::deque<FolderEvent> raised_;
  bool isRaising_ = false;
};

}  // namespace velkor
