#pragma once

#include "pellum/export.h"
#include "pellum/object/object.h"
#include "pellum/object/ref.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Pellum::System {

/// The calls that were active at one moment, innermost first.
///
/// Capturing only stores addresses; names are looked up when they are asked for. Immutable, so safe to share.
class PELLUM_API Backtrace : public ObjectImpl {
public:
    /// Calls further out than this are not recorded.
    static constexpr std::size_t kMaxFrames = 48;

    struct Frame {
        /// The return address.
        const void* address = nullptr;
        /// The demangled function; empty when its name is not known.
        std::string function;
        /// The file name, without folders, of the program or library that the address lies in; empty when
        /// unknown.
        std::string module;
        /// The address's distance from the module's start, or the address itself without a module.
        std::uintptr_t offset = 0;

        /// "function (module+0x1a2b)", or "module+0x1a2b" without a name.
        [[nodiscard]] PELLUM_API std::string ToString() const;
    };

    /// Records the calling thread's calls, the caller of this function first. Null when there is no memory
    /// for it.
    [[nodiscard, gnu::noinline]] static Ref<Backtrace> Capture() noexcept;

    /// Records the calls around the return address `place`, which comes first; that call alone where the
    /// others can not be reached. Null when there is no memory for it.
    [[nodiscard]] static Ref<Backtrace> CaptureFrom(const void* place) noexcept;

    /// Whether `CaptureFrom` has made this.
    [[nodiscard]] bool BeginsAtPlace() const noexcept { return m_beginsAtPlace; }

    [[nodiscard]] std::size_t GetFrameCount() const noexcept { return m_count; }

    /// Looks the names up anew at every call.
    [[nodiscard]] std::vector<Frame> GetFrames() const;

    /// One line a frame: "  #0 function (module+0x1a2b)\n".
    [[nodiscard]] std::string ToString() const override;

private:
    /// Leaves out what is further in than the return address `innermost`.
    explicit Backtrace(const void* innermost) noexcept;

    ~Backtrace() override;

    std::array<void*, kMaxFrames> m_addresses{};
    std::size_t m_count = 0;
    bool m_beginsAtPlace = false;
};

} // namespace Pellum::System
