// tests/model/RefreshDoubles.h: what surrounds a background refresh, for tests of it.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/MessageBoxes.h"
#include "platform/Outlook.h"
#include "platform/headless/HeadlessSeams.h"
#include "values/Error.h"

namespace velkor {

/// A message box that stays open while `whileOpen` runs.
class OpenMessageBoxes : public MessageBoxes {
 public:
  std::vector<std::string> texts;
  std::function<void()> whileOpen;
  /// To a file error.
  MessageAnswer answer = MessageAnswer::Ok;

  MessageAnswer Show(const Message& message) override {
    texts.push_back(message.text);
    if (message.title == "File Error") return answer;
    EXPECT_EQ(message.title, "");
    EXPECT_EQ(message.buttons, MessageButtons::Ok);
    if (const auto once = std::exchange(whileOpen, nullptr)) once();
    return MessageAnswer::Ok;
  }
};

/// A calendar program that refuses the session.
class NoOutlook : public OutlookApplication {
 public:
  std::string Version() override { return {}; }
  std::string CurrentUserName() override { return {}; }
  bool IsRunning() override { return false; }
  std::unique_ptr<OutlookNamespace> GetNamespace(std::string_view) override {
    throw Error(1234, "network");
  }
};

/// The scripted seams but for those that matter to a refresh.
struct RefreshSeams {
  HeadlessSeams seams;
  NoOutlook outlook;
  OpenMessageBoxes boxes;

  Platform With(CacheUtilities& utilities, Shell& shell) {
    const Platform on = seams.On(outlook, boxes);
    return {utilities,   on.clock,      on.dialogs,  on.environment, on.files,   on.forms,
            on.inputs,   on.locale,     on.messages, on.outlook,     on.printer, on.progress,
            on.registry, on.scrollBars, on.settings, shell};
  }
};

}  // namespace velkor
