// hosts/Passwords.h: the passwords of this run, and those that the system's key store has.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "platform/desktop/KeyStore.h"

namespace velkor {

class Passwords {
 public:
  /// Told later or at once.
  using OnFound = std::function<void(const std::optional<std::string>&)>;

  /// None: the password of this run, or none.
  void Find(const std::string& user, const std::string& host, OnFound onFound);
  /// For this run; in the key store, too, when it is to be kept.
  /// @param onEnd  told why the key store could not keep it, a sentence for people; empty: it did
  void Remember(const std::string& user, const std::string& host, const std::string& password,
                bool keep, std::function<void(const std::string& trouble)> onEnd = {});
  /// The server does not take it.
  void Forget(const std::string& user, const std::string& host);

 private:
  using Account = std::pair<std::string, std::string>;

  KeyStore store_;
  /// None: known to be wrong.
  std::map<Account, std::optional<std::string>> known_;
  /// Those that the key store has.
  std::set<Account> kept_;
};

}  // namespace velkor
