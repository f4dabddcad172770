// hosts/yearplan/window/ServerQuestions.h: what a server makes necessary to ask: whether it is the
// right one, and for a password.
#pragma once

#include <optional>
#include <string>

#include "calendar/net/NetworkFault.h"
#include "hosts/yearplan/window/LoginFields.h"

class QWidget;

namespace velkor {

/// Whether to trust a certificate for its host from now on; no is the answer to a key pressed in
/// haste.
bool AskToTrust(QWidget* parent, const CertificateFault& certificate);

/// @param why    a sentence; empty for the usual one
/// @param login  the user that is known, and no password
/// @return none after Cancel
std::optional<ServerLogin> AskForPassword(QWidget* parent, const std::string& host,
                                          const ServerLogin& login, const std::string& why = {});

}  // namespace velkor
