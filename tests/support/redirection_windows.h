#pragma once

#include <cstring>
#include <stdexcept>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace TestSupport {

/// While it lives, whoever calls one function comes to another one of the same type. For a function that no
/// thread is in. Of 32 bits only.
class Redirection {
public:
    template <class Function>
    Redirection(Function* from, Function* to) : m_code(reinterpret_cast<unsigned char*>(from)) {
        const std::ptrdiff_t distance = reinterpret_cast<unsigned char*>(to) - (m_code + kSize);
        unsigned char jump[kSize] = {0xE9};
        std::memcpy(jump + 1, &distance, sizeof(distance));
        std::memcpy(m_saved, m_code, kSize);
        Write(jump);
    }

    ~Redirection() { Write(m_saved); }

    Redirection(const Redirection&) = delete;
    Redirection& operator=(const Redirection&) = delete;

private:
    static_assert(sizeof(void*) == 4);
    static constexpr std::size_t kSize = 1 + sizeof(std::ptrdiff_t);

    void Write(const unsigned char* code) {
        DWORD access = 0;
        if (VirtualProtect(m_code, kSize, PAGE_EXECUTE_READWRITE, &access) == 0) {
            throw std::runtime_error("a function can not be redirected");
        }
        std::memcpy(m_code, code, kSize);
        VirtualProtect(m_code, kSize, access, &access);
        FlushInstructionCache(GetCurrentProcess(), m_code, kSize);
    }

    unsigned char* m_code;
    unsigned char m_saved[kSize];
};

} // namespace TestSupport
