// tools/ColourCalendar.h: a calendar in memory with a colour store over it.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "calendar/EmbeddedOutlook.h"
#include "categories/ColourStore.h"
#include "platform/MessageBoxes.h"
#include "platform/headless/HeadlessSeams.h"

namespace velkor {

/// Messages that nobody sees, kept for the answer.
class UnseenMessages : public MessageBoxes {
 public:
  MessageAnswer Show(const Message& message) override {
    told.push_back(message.text);
    return MessageAnswer::Ok;
  }

  std::vector<std::string> told;
};

class ColourCalendar {
 public:
  /// The planner title whose record the cases speak of.
  static constexpr std::string_view Title = "Default";

  void Add(const std::string& subject, const std::string& body);
  ColourStore& Colours() { return colours_; }
  /// Of a planner title; empty when there is no record.
  std::string BodyOf(std::string_view title);

  HeadlessSeams seams;
  UnseenMessages messages;
  /// How often the store went to the calendar.
  int visits = 0;

  Platform AsPlatform() { return seams.On(outlook_, messages); }

 private:
  std::unique_ptr<OutlookFolder> OpenFolder();

  CalendarStore store_{"store"};
  CalendarFolder& folder_ = store_.AddFolder("Calendar", "folder", outlook::ItemTypeAppointment);
  EmbeddedOutlook outlook_{store_, seams.locale, {.userName = "probe"}};
  ColourStore colours_{[this] {
                         ++visits;
                         return OpenFolder();
                       },
                       seams.locale, messages};
};

}  // namespace velkor
