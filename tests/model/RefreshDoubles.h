// tests/model/RefreshDoubles.h: what surrounds a background refresh, for tests of it.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "model/EventCollection.h"
#include "model/EventFields.h"
#include "model/EventView.h"
#include "model/Planner.h"
#include "platform/MessageBoxes.h"
#include "platform/Outlook.h"
#include "platform/headless/HeadlessSeams.h"
#include "view/span/CategoryFilter.h"

namespace velkor {

class StatusPlanner : public Planner {
 public:
  std::vector<Colour> statuses;

  void ReportStatus(Colour colour) override { statuses.push_back(colour); }
  bool RefreshOutstanding() const override { return false; }
  void CancelRefresh() override {}
  void StartRefresh(bool) override {}
};

class CountingView : public EventView {
 public:
  int reloads = 0;

  const EventCollection& Events() const override { throw std::logic_error("not asked for"); }
  EventFields Fields() const override { throw std::logic_error("not asked for"); }
  const CategoryFilter& Filter() const override { throw std::logic_error("not asked for"); }
  void ChangeEvents(const std::function<void(EventCollection&)>&) override {}
  void ReloadEvents() override { ++reloads; }
  void RewriteCache() override {}
  void ReloadCategories() override {}
};

/// A message box that stays open while `whileOpen` runs.
class OpenMessageBoxes : public MessageBoxes {
 public:
  std::vector<std::string> texts;
  std::function<void()> whileOpen;

  MessageAnswer Show(const Message& message) override {
    texts.push_back(message.text);
    EXPECT_EQ(message.title, "");
    EXPECT_EQ(message.buttons, MessageButtons::Ok);
    if (const auto once = std::exchange(whileOpen, nullptr)) once();
    return MessageAnswer::Ok;
  }
};

class NoOutlook : public OutlookApplication {
 public:
  std::string Version() override { return {}; }
  std::string CurrentUserName() override { return {}; }
  std::unique_ptr<OutlookNamespace> GetNamespace(std::string_view) override { return nullptr; }
};

/// The scripted seams but for those that matter to a refresh.
struct RefreshSeams {
  HeadlessSeams seams;
  NoOutlook outlook;
  OpenMessageBoxes boxes;

  Platform With(CacheUtilities& utilities, Shell& shell) {
    const Platform on = seams.On(outlook, boxes);
    return {utilities, on.clock,    on.dialogs, on.environment, on.files,    on.forms,    on.inputs,
            on.locale, on.messages, on.outlook, on.progress,    on.registry, on.settings, shell};
  }
};

}  // namespace velkor
