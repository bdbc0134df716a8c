#include "tavik/type/type_info_loader.h"

#include "tavik/type/pending_loaders.h"

#ifdef _WIN32
#define WIN32_LEAN_AND_MEAN
#include <windows.h>
#endif

namespace Tavik {

namespace {

/// What a library has registered stays in use until the process ends, so the library has to stay, too.
/// Elsewhere than on Windows the linker marks libraries so.
void KeepLoaded([[maybe_unused]] LoaderFunction load) noexcept {
#ifdef _WIN32
    HMODULE module = nullptr;
    GetModuleHandleExA(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
        reinterpret_cast<LPCSTR>(load), &module);
#endif
}

} // namespace

TypeInfoLoader::TypeInfoLoader(const OrlinVersions* versions, LoaderFunction load) noexcept
    : m_versions(versions), m_load(load), m_next(gPendingLoaders.load(std::memory_order_relaxed)) {
    KeepLoaded(load);
    while (!gPendingLoaders.compare_exchange_weak(m_next, this, std::memory_order_acq_rel)) {}
}

} // namespace Tavik
