// tests/control/LoggedOutlook.h: a calendar program that writes down each call it gets.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/Outlook.h"
#include "values/Error.h"

namespace velkor {

/// Called with the name of each call before it is passed on, or with none where only the program
/// is looked at; may throw.
using CallLog = std::function<void(const std::string& call)>;

/// A part of the program, with what its calls are passed on to.
template <typename Seam>
class LoggedSeam : public Seam {
 public:
  LoggedSeam(std::unique_ptr<Seam> inner, CallLog log)
      : inner_(std::move(inner)), log_(std::move(log)) {}

 protected:
  std::unique_ptr<Seam> inner_;
  CallLog log_;
};

class LoggedItems : public LoggedSeam<OutlookItems>, OutlookItemEvents {
 public:
  using LoggedSeam::LoggedSeam;

  std::unique_ptr<OutlookItems> Restrict(std::string_view filter) override {
    log_("Restrict");
    return std::make_unique<LoggedItems>(inner_->Restrict(filter), log_);
  }
  void Sort(std::string_view property) override { inner_->Sort(property); }
  void IncludeRecurrences(bool include) override { inner_->IncludeRecurrences(include); }
  std::unique_ptr<OutlookItem> GetFirst() override { return Call("GetFirst", inner_->GetFirst()); }
  std::unique_ptr<OutlookItem> GetNext() override { return Call("GetNext", inner_->GetNext()); }
  std::unique_ptr<OutlookItem> Find(std::string_view filter) override {
    return Call("Find", inner_->Find(filter));
  }
  std::unique_ptr<OutlookItem> FindNext() override { return Call("FindNext", inner_->FindNext()); }
  std::unique_ptr<OutlookItem> Add(std::string_view messageClass) override {
    return Call("Add", inner_->Add(messageClass));
  }
  void Connect(OutlookItemEvents* events) override {
    log_("Connect");
    events_ = events;
    inner_->Connect(events == nullptr ? nullptr : this);
  }
  bool IsConnected(bool /*ask*/) override {
    try {
      log_("");
      return true;
    } catch (const Error&) {
      return false;
    }
  }

 private:
  void ItemAdd(OutlookItem& item) override {
    if (IsConnected(true)) events_->ItemAdd(item);
  }
  void ItemChange(OutlookItem& item) override {
    if (IsConnected(true)) events_->ItemChange(item);
  }
  void ItemRemove() override {
    if (IsConnected(true)) events_->ItemRemove();
  }
  std::unique_ptr<OutlookItem> Call(const char* name, std::unique_ptr<OutlookItem> item) {
    log_(name);
    return item;
  }

  OutlookItemEvents* events_ = nullptr;
};

class LoggedFolder : public LoggedSeam<OutlookFolder> {
 public:
  using LoggedSeam::LoggedSeam;

  std::string Name() override { return inner_->Name(); }
  std::string EntryID() override { return inner_->EntryID(); }
  std::string StoreID() override { return inner_->StoreID(); }
  int DefaultItemType() override { return inner_->DefaultItemType(); }
  std::unique_ptr<OutlookFolder> Folder(std::string_view name) override {
    return Logged(inner_->Folder(name), log_);
  }
  std::unique_ptr<OutlookItems> Items() override {
    log_("Items");
    return std::make_unique<LoggedItems>(inner_->Items(), log_);
  }
  bool ReplaceCategory(std::string_view from, std::string_view to) override {
    return inner_->ReplaceCategory(from, to);
  }
  std::shared_ptr<const void> Hold() override { return inner_->Hold(); }
  static std::unique_ptr<OutlookFolder> Logged(std::unique_ptr<OutlookFolder> folder,
                                               const CallLog& log) {
    return folder ? std::make_unique<LoggedFolder>(std::move(folder), log) : nullptr;
  }
};

class LoggedNamespace : public LoggedSeam<OutlookNamespace> {
 public:
  using LoggedSeam::LoggedSeam;

  std::unique_ptr<OutlookFolder> Folder(std::string_view name) override {
    log_("Folder");
    return LoggedFolder::Logged(inner_->Folder(name), log_);
  }
  std::unique_ptr<OutlookFolder> GetDefaultFolder(int kind) override {
    log_("GetDefaultFolder");
    return LoggedFolder::Logged(inner_->GetDefaultFolder(kind), log_);
  }
  std::unique_ptr<OutlookFolder> GetFolderFromID(std::string_view entryId,
                                                 std::string_view storeId) override {
    log_("GetFolderFromID");
    return LoggedFolder::Logged(inner_->GetFolderFromID(entryId, storeId), log_);
  }
  std::unique_ptr<OutlookItem> GetItemFromID(std::string_view entryId,
                                             std::string_view storeId) override {
    log_("GetItemFromID");
    return inner_->GetItemFromID(entryId, storeId);
  }
};

class LoggedOutlook : public OutlookApplication {
 public:
  explicit LoggedOutlook(OutlookApplication& inner) : inner_(inner) {}

  std::vector<std::string> calls;
  /// The call of this name fails with number 440.
  std::string failing;

  /// The program ends, and all that it gave with it, until somebody starts it.
  void End() {
    running_ = false;
    ++program_;
  }
  void Begin() { running_ = true; }

  std::string Version() override { return inner_.Version(); }
  std::string CurrentUserName() override {
    Log("CurrentUserName");
    return inner_.CurrentUserName();
  }
  bool IsRunning() override { return running_; }
  std::unique_ptr<OutlookNamespace> GetNamespace(std::string_view type) override {
    Log("GetNamespace");
    Begin();
    return std::make_unique<LoggedNamespace>(
        inner_.GetNamespace(type), [this, mine = program_](const std::string& call) {
          if (mine != program_) throw Error(errors::CalendarFailed, "The program has ended.");
          if (!call.empty()) Log(call);
        });
  }

 private:
  void Log(const std::string& call) {
    calls.push_back(call);
    if (call == failing) throw Error(errors::CalendarFailed, call + " was refused.");
  }

  OutlookApplication& inner_;
  bool running_ = true;
  int program_ = 0;
};

}  // namespace velkor
