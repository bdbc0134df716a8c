#include "pellum/system/backtrace.h"

#include "pellum/text/demangle.h"

#include <algorithm>
#include <charconv>
#include <new>
#include <string_view>

#ifdef _WIN32
#include <unwind.h>

#include <windows.h>
#else
#include <dlfcn.h>
#include <execinfo.h>
#endif

namespace Pellum::System {

namespace {

std::string_view FileName(std::string_view path) {
    const std::size_t separator = path.find_last_of("/\\");
    return separator == std::string_view::npos ? path : path.substr(separator + 1);
}

std::string Hex(std::uintptr_t number) {
    char text[2 * sizeof(number)];
    const auto result = std::to_chars(std::begin(text), std::end(text), number, 16);
    return "0x" + std::string(text, result.ptr);
}

std::uintptr_t AddressValue(const void* address) {
    return reinterpret_cast<std::uintptr_t>(address);
}

#ifdef _WIN32

struct Capture {
    void** addresses;
    std::size_t capacity;
    std::size_t count = 0;
};

_Unwind_Reason_Code AddFrame(_Unwind_Context* context, void* argument) {
    auto& capture = *static_cast<Capture*>(argument);
    const std::uintptr_t address = _Unwind_GetIP(context);
    if (address == 0 || capture.count == capture.capacity) {
        return _URC_END_OF_STACK;
    }
    capture.addresses[capture.count++] = reinterpret_cast<void*>(address);
    return _URC_NO_REASON;
}

std::size_t CaptureAddresses(void** addresses, std::size_t capacity) noexcept {
    // By the tables that exceptions use, too: the system's function follows frame pointers, which optimised
    // code does not have.
    Capture capture{addresses, capacity};
    _Unwind_Backtrace(&AddFrame, &capture);
    return capture.count;
}

Backtrace::Frame Resolve(const void* address) {
    Backtrace::Frame frame{address, {}, {}, AddressValue(address)};
    HMODULE module = nullptr;
    constexpr DWORD kFlags =
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    if (GetModuleHandleExA(kFlags, static_cast<LPCSTR>(address), &module) != 0) {
        char path[MAX_PATH];
        const DWORD length = GetModuleFileNameA(module, path, MAX_PATH);
        frame.module = FileName({path, length});
        frame.offset -= AddressValue(module);
    }
    return frame;
}

#else

std::size_t CaptureAddresses(void** addresses, std::size_t capacity) noexcept {
    const int count = backtrace(addresses, static_cast<int>(capacity));
    return static_cast<std::size_t>(std::max(count, 0));
}

Backtrace::Frame Resolve(const void* address) {
    Backtrace::Frame frame{address, {}, {}, AddressValue(address)};
    // A call that never returns may be a function's last instruction: its return address belongs to the next
    // one.
    const void* call = static_cast<const char*>(address) - 1;
    Dl_info info{};
    if (dladdr(call, &info) != 0 && info.dli_fname != nullptr) {
        frame.module = FileName(info.dli_fname);
        frame.offset -= AddressValue(info.dli_fbase);
        if (info.dli_sname != nullptr) {
            frame.function = Demangle(info.dli_sname);
        }
    }
    return frame;
}

#endif

} // namespace

std::string Backtrace::Frame::ToString() const {
    const std::string place = module.empty() ? Hex(offset) : module + "+" + Hex(offset);
    return function.empty() ? place : function + " (" + place + ")";
}

Backtrace::Backtrace(const void* innermost) noexcept {
    m_count = CaptureAddresses(m_addresses.data(), m_addresses.size());
    const auto end = m_addresses.begin() + static_cast<std::ptrdiff_t>(m_count);
    const auto first = std::find(m_addresses.begin(), end, innermost);
    if (first != end) {
        std::move(first, end, m_addresses.begin());
        m_count = static_cast<std::size_t>(end - first);
    }
}

Backtrace::~Backtrace() = default;

Ref<Backtrace> Backtrace::Capture() noexcept {
    return new (std::nothrow) Backtrace(__builtin_return_address(0));
}

Ref<Backtrace> Backtrace::CaptureFrom(const void* place) noexcept {
    Ref<Backtrace> backtrace(new (std::nothrow) Backtrace(place));
    if (backtrace) {
        if (backtrace->m_count == 0 || backtrace->m_addresses.front() != place) {
            // A function further in has no unwind table.
            backtrace->m_addresses.front() = const_cast<void*>(place);
            backtrace->m_count = 1;
        }
        backtrace->m_beginsAtPlace = true;
    }
    return backtrace;
}

std::vector<Backtrace::Frame> Backtrace::GetFrames() const {
    std::vector<Frame> frames;
    frames.reserve(m_count);
    std::transform(
        m_addresses.begin(), m_addresses.begin() + static_cast<std::ptrdiff_t>(m_count),
        std::back_inserter(frames), Resolve);
    return frames;
}

std::string Backtrace::ToString() const {
    std::string text;
    std::size_t number = 0;
    for (const Frame& frame : GetFrames()) {
        text += "  #" + std::to_string(number++) + ' ' + frame.ToString() + '\n';
    }
    return text;
}

} // namespace Pellum::System
