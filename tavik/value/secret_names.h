#pragma once

#include "tavik/export.h"

#include <string_view>

namespace Tavik {

/// Whether a property that no description flags is taken for a secret because of its name: whatever prints
/// for people hides its whole value. True for names that contain one of
///
///     password  passwd  passphrase  secret  privateKey  token  cookie  credential  sessionId
///
/// in whatever case, with or without `_`, `-` and spaces between the letters. The list is here and in
/// `secret_names.cpp`, nowhere else.
TAVIK_API bool IsSecretName(std::string_view name);

} // namespace Tavik
