#pragma once

#include <gmock/gmock.h>

#include <cstdint>
#include <string>

#ifdef _WIN32
#define WIN32_LEAN_AND_MEAN
#include <windows.h>
#endif

namespace TestSupport {

/// Matches a place, as `Where` tells it, in a function of the program that is exported: by its name, or by
/// its address on Windows, where backtraces have no names.
template <class Function>
testing::Matcher<std::string> IsIn(
    [[maybe_unused]] Function* function, [[maybe_unused]] const std::string& name) {
#ifdef _WIN32
    constexpr std::uintptr_t kMostCode = 256;
    const auto begin = reinterpret_cast<std::uintptr_t>(function)
                     - reinterpret_cast<std::uintptr_t>(GetModuleHandleA(nullptr));
    const auto offset = [](const std::string& place) {
        const std::size_t mark = place.find(".exe+0x");
        return mark == std::string::npos ? std::uintptr_t{0}
                                         : std::stoul(place.substr(mark + 5), nullptr, 16);
    };
    return testing::ResultOf(offset, testing::AllOf(testing::Gt(begin), testing::Lt(begin + kMostCode)));
#else
    return testing::StartsWith(name + '(');
#endif
}

/// The name that backtraces have for a program of the tests.
inline std::string ModuleOfProgram(const std::string& name) {
#ifdef _WIN32
    return name + ".exe";
#else
    return name;
#endif
}

} // namespace TestSupport
