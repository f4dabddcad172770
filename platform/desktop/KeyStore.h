// platform/desktop/KeyStore.h: keeps passwords in the store for secrets that the user's system has.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

class QObject;

namespace velkor {

struct KeyStoreAnswer {
  /// None: there is no such password.
  std::optional<std::string> password = {};
  /// Why the store could not do it, a sentence for people; empty where it could.
  std::string trouble = {};
};

/// Passwords by user and host. Never in a file: a system without a store says so each time. All
/// answers come later from the event loop, none after the end of this. The system may ask the user
/// to open the store meanwhile; a store that says nothing for two minutes counts as none.
class KeyStore {
 public:
  using OnAnswer = std::function<void(const KeyStoreAnswer&)>;

  KeyStore();
  ~KeyStore();
  KeyStore(const KeyStore&) = delete;
  KeyStore& operator=(const KeyStore&) = delete;

  void Find(const std::string& user, const std::string& host, OnAnswer onAnswer);
  void Keep(const std::string& user, const std::string& host, const std::string& password,
            OnAnswer onAnswer);
  /// One that is not there is no fault.
  void Forget(const std::string& user, const std::string& host, OnAnswer onAnswer);

 private:
  /// What is delivered to it is not delivered after the end of this.
  std::unique_ptr<QObject> receiver_;
};

}  // namespace velkor
