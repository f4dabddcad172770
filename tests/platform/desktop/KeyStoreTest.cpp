// tests/platform/desktop/KeyStoreTest.cpp: a system without a store for passwords says so.
#include "platform/desktop/KeyStore.h"

#include <gmock/gmock.h>

#include <QEventLoop>

namespace velkor {
namespace {

using testing::HasSubstr;

class KeyStoreCase : public testing::Test {
 protected:
  KeyStoreCase() { qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/no/such/bus"); }
  ~KeyStoreCase() override { qputenv("DBUS_SESSION_BUS_ADDRESS", before_); }

 private:
  QByteArray before_ = qgetenv("DBUS_SESSION_BUS_ADDRESS");
};

TEST_F(KeyStoreCase, WithoutAStoreNothingIsFoundOrKeptAndItSaysWhy) {
  KeyStore store;
  QEventLoop loop;
  std::vector<KeyStoreAnswer> answers;
  const auto take = [&](const KeyStoreAnswer& answer) {
    answers.push_back(answer);
    if (answers.size() == 2) loop.quit();
  };
  store.Find("u", "h", take);
  store.Keep("u", "h", "p", take);
  EXPECT_TRUE(answers.empty());
  loop.exec();
  for (const KeyStoreAnswer& answer : answers) {
    EXPECT_EQ(answer.password, std::nullopt);
    EXPECT_THAT(answer.trouble, HasSubstr("store for passwords"));
  }
}

TEST_F(KeyStoreCase, AfterItsEndNothingIsTold) {
  QEventLoop loop;
  {
    KeyStore store;
    store.Find("u", "h", [](const KeyStoreAnswer&) { FAIL(); });
  }
  KeyStore later;
  later.Find("u", "h", [&](const KeyStoreAnswer&) { loop.quit(); });
  loop.exec();
}

}  // namespace
}  // namespace velkor
