// hosts/yearplan/window/ServerQuestions.h: what a server makes necessary to ask: whether it is the
// right one, and for a password.
#pragma once

#include <optional>
#include <string>

#include "hosts/yearplan/window/LoginFields.h"

class QWidget;

namespace velkor {

/// What a server shows of itself; dates as people write them.
struct ShownCertificate {
  std::string host = {};
  /// Hexadecimal digits of its SHA-256.
  std::string fingerprint = {};
  std::string subject = {};
  std::string issuer = {};
  std::string from = {};
  std::string until = {};
  /// Why it is not simply believed.
  std::string reason = {};
  /// Another one of this host was trusted before.
  bool changed = false;
};

/// Whether to trust it for its host from now on; no is the answer to a key pressed in haste.
bool AskToTrust(QWidget* parent, const ShownCertificate& certificate);

/// @param why    a sentence; empty for the usual one
/// @param login  the user that is known, and no password
/// @return none after Cancel
std::optional<ServerLogin> AskForPassword(QWidget* parent, const std::string& host,
                                          const ServerLogin& login, const std::string& why = {});

}  // namespace velkor
