#pragma once

#include "tavik/export.h"

#include <string_view>

namespace Tavik {

/// What makes the name of a property that no description flags a secret's: such a name has one of these in
/// it, in whatever case, and with or without `_`, `-` and spaces between the letters. Written in lower case.
inline constexpr std::string_view kSecretWords[] = {
    "password", "passwd", "passphrase", "secret", "privatekey", "token", "cookie", "credential", "sessionid",
};

/// Whether the name is a secret's by `kSecretWords`. Whatever prints for people hides the whole value then.
TAVIK_API bool IsSecretName(std::string_view name);

} // namespace Tavik
