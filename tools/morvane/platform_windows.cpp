#include "tools/morvane/platform.h"

#include <memory>
#include <new>

#include <fcntl.h>
#include <io.h>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <shellapi.h>

namespace Tool {

namespace {

HANDLE GetHandle(std::FILE* stream) {
    return reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
}

/// What is no Unicode becomes U+FFFD.
std::string ToUtf8(const wchar_t* text) {
    const int size = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text, -1, utf8.data(), size, nullptr, nullptr);
    utf8.pop_back(); // the null character
    return utf8;
}

} // namespace

std::vector<std::string> GetArguments(int /*argc*/, char** /*argv*/) {
    // `main` gets them in the code page of the system, which lacks most characters.
    int count = 0;
    const std::unique_ptr<wchar_t*, decltype(&LocalFree)> words(
        CommandLineToArgvW(GetCommandLineW(), &count), &LocalFree);
    if (words == nullptr) {
        throw std::bad_alloc();
    }
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i) {
        arguments.push_back(ToUtf8(words.get()[i]));
    }
    return arguments;
}

void PrepareOutput() {
    for (std::FILE* stream : {stdout, stderr}) {
        _setmode(_fileno(stream), _O_BINARY);
        DWORD mode = 0;
        if (GetConsoleMode(GetHandle(stream), &mode) != 0) {
            SetConsoleOutputCP(CP_UTF8);
            SetConsoleMode(GetHandle(stream), mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
        }
    }
}

bool IsTerminal(std::FILE* stream) {
    return _isatty(_fileno(stream)) != 0;
}

std::optional<std::size_t> GetTerminalWidth(std::FILE* stream) {
    CONSOLE_SCREEN_BUFFER_INFO info{};
    if (GetConsoleScreenBufferInfo(GetHandle(stream), &info) == 0) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(info.srWindow.Right - info.srWindow.Left + 1);
}

std::filesystem::path GetProgramFolder() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return std::filesystem::path(path).parent_path();
        }
        path.resize(2 * path.size());
    }
}

} // namespace Tool
