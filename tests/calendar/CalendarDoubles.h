// tests/calendar/CalendarDoubles.h: a calendar's writer and its listener, as tests script them.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "calendar/CalendarFolder.h"
#include "platform/Outlook.h"
#include "values/Error.h"

namespace velkor {

/// Keeps what it was asked to write, or refuses.
class ScriptedWriter : public CalendarWriter {
 public:
  CalendarItem WriteNew(const CalendarItem& item, bool /*reminder*/) override {
    Note("new " + item.fields.subject);
    CalendarItem saved = item;
    saved.entryId = "file " + std::to_string(++count_);
    return saved;
  }
  CalendarItem WriteChange(const CalendarItem& after, const ItemChange& /*change*/) override {
    Note("change " + after.fields.subject);
    return after;
  }
  void WriteDeletion(const CalendarItem& item) override { Note("delete " + item.fields.subject); }
  void WriteCategory(std::string_view from, std::string_view to, Date /*now*/) override {
    Note("category " + std::string(from) + " to " + std::string(to));
  }
  std::shared_ptr<const void> Hold() override { return std::make_shared<bool>(true); }
  void Refresh() override {
    if (onRefresh) onRefresh();
  }

  std::vector<std::string> written;
  bool refuses = false;
  std::function<void()> onRefresh;

 private:
  void Note(const std::string& text) {
    if (refuses) throw Error(errors::CalendarFailed, "The disk is full.", "Calendar");
    written.push_back(text);
  }
  int count_ = 0;
};

class EventLog : public OutlookItemEvents {
 public:
  void ItemAdd(OutlookItem& item) override { Note("add " + item.Subject()); }
  void ItemChange(OutlookItem& item) override { Note("change " + item.Subject()); }
  void ItemRemove() override { Note("remove"); }
  std::vector<std::string> Take() { return std::exchange(events_, {}); }

  std::function<void()> inEvent;

 private:
  void Note(const std::string& text) {
    events_.push_back(text);
    if (inEvent) inEvent();
  }
  std::vector<std::string> events_;
};

}  // namespace velkor
