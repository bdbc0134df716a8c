#pragma once

#include "tavik/export.h"

#include <string_view>

namespace Tavik {

/// What makes the name of a property that no description flags a secret's: such a name has one of these in
/// it, in whatever case, and whatever stands between its letters and digits. Written in lower case.
inline constexpr std::string_view kSecretWords[] = {
    "password",   "passwd",    "pwd",           "passphrase",    "secret", "privatekey",
    "privkey",    "apikey",    "accesskey",     "encryptionkey", "token",  "cookie",
    "credential", "sessionid", "authorization", "ticket",
};

/// Whether the name is a secret's by `kSecretWords`. Whatever prints for people hides the whole value then.
TAVIK_API bool IsSecretName(std::string_view name);

} // namespace Tavik
