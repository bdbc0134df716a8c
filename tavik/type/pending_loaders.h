#pragma once

#include <atomic>

namespace Tavik {

class TypeInfoLoader;

/// The libraries that have registered and are not loaded yet, newest first. Constant-initialised, so that a
/// library may register before anything of this one has run.
extern constinit std::atomic<TypeInfoLoader*> gPendingLoaders;

} // namespace Tavik
