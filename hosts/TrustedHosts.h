// hosts/TrustedHosts.h: the certificates that the user trusts although nobody vouches for them.
#pragma once

#include <map>
#include <string>

#include "platform/Settings.h"

namespace velkor {

/// Host to SHA-256 of its certificate, as CertificateFault has them. What makes no sense in the
/// settings counts as nothing.
std::map<std::string, std::string> TrustedHosts(Settings& settings);

/// From now on, in the place of any other certificate of this host. Throws what the settings throw.
void TrustHost(Settings& settings, const std::string& host, const std::string& sha256);

}  // namespace velkor
