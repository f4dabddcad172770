// hosts/Passwords.cpp: memory first, then the key store.
#include "hosts/Passwords.h"

namespace velkor {

void Passwords::Find(const std::string& user, const std::string& host, OnFound onFound) {
  const auto known = known_.find({user, host});
  if (known != known_.end()) {
    onFound(std::optional(known->second));
    return;
  }
  store_.Find(user, host, [this, user, host, onFound](const KeyStoreAnswer& answer) {
    // What was remembered meanwhile is newer.
    if (answer.password) {
      known_.try_emplace({user, host}, answer.password);
      kept_.insert({user, host});
    }
    const auto now = known_.find({user, host});
    onFound(now == known_.end() ? std::nullopt : std::optional(now->second));
  });
}

void Passwords::Remember(const std::string& user, const std::string& host,
                         const std::string& password, bool keep,
                         std::function<void(const std::string&)> onEnd) {
  known_[{user, host}] = password;
  const auto end = [onEnd = std::move(onEnd)](const KeyStoreAnswer& answer) {
    if (onEnd) onEnd(answer.trouble);
  };
  if (keep) {
    kept_.insert({user, host});
    store_.Keep(user, host, password, end);
  } else if (kept_.erase({user, host}) > 0) {
    store_.Forget(user, host, end);
  } else {
    end({});
  }
}

void Passwords::Forget(const std::string& user, const std::string& host) {
  known_[{user, host}] = std::nullopt;
}

}  // namespace velkor
