#include "tests/tools/tool_runner.h"

#include "pellum/text/path_name.h"

#include <stdexcept>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <psapi.h>

namespace ToolTests {

namespace {

std::wstring Widen(const std::string& utf8) {
    return Pellum::ToPath(utf8).wstring();
}

/// As the program's run-time takes it apart: backslashes count double in front of quotation marks only.
std::wstring Quote(const std::wstring& word) {
    std::wstring quoted = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t c : word) {
        if (c == L'"') {
            quoted.append(backslashes + 1, L'\\');
        }
        backslashes = c == L'\\' ? backslashes + 1 : 0;
        quoted += c;
    }
    return quoted.append(backslashes, L'\\') + L'"';
}

/// A handle that is closed, and that a child inherits if it is one of a file.
class Handle {
public:
    explicit Handle(HANDLE handle) : m_handle(handle) {}

    Handle(const std::filesystem::path& path, DWORD access, DWORD creation) {
        SECURITY_ATTRIBUTES inherited{sizeof(inherited), nullptr, TRUE};
        m_handle = CreateFileW(
            path.c_str(), access, FILE_SHARE_READ, &inherited, creation, FILE_ATTRIBUTE_NORMAL, nullptr);
    }

    ~Handle() { CloseHandle(m_handle); }

    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    HANDLE Get() const { return m_handle; }

private:
    HANDLE m_handle;
};

} // namespace

RunResult RunProgram(
    const std::string& program, const std::vector<std::string>& arguments, std::string_view input) {
    const TemporaryFolder folder;
    folder.Write("in", input);
    std::wstring line = Quote(Widen(program));
    for (const std::string& argument : arguments) {
        line += L' ' + Quote(Widen(argument));
    }
    const auto start = std::chrono::steady_clock::now();
    PROCESS_INFORMATION child{};
    {
        const Handle in(folder.GetPath() / "in", GENERIC_READ, OPEN_EXISTING);
        const Handle out(folder.GetPath() / "out", GENERIC_WRITE, CREATE_ALWAYS);
        const Handle err(folder.GetPath() / "err", GENERIC_WRITE, CREATE_ALWAYS);
        STARTUPINFOW startUp{};
        startUp.cb = sizeof(startUp);
        startUp.dwFlags = STARTF_USESTDHANDLES;
        startUp.hStdInput = in.Get();
        startUp.hStdOutput = out.Get();
        startUp.hStdError = err.Get();
        if (CreateProcessW(
                nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startUp, &child)
            == 0) {
            throw std::runtime_error("cannot start " + program);
        }
    }
    const Handle thread(child.hThread);
    const Handle process(child.hProcess);
    WaitForSingleObject(process.Get(), INFINITE);
    RunResult result;
    result.duration =
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
    DWORD exitCode = 0;
    GetExitCodeProcess(process.Get(), &exitCode);
    result.exitCode = static_cast<int>(exitCode);
    PROCESS_MEMORY_COUNTERS memory{};
    GetProcessMemoryInfo(process.Get(), &memory, sizeof(memory));
    result.peakKiB = static_cast<long>(memory.PeakWorkingSetSize / 1024);
    result.out = ReadFile(folder.GetPath() / "out");
    result.err = ReadFile(folder.GetPath() / "err");
    return result;
}

RunResult RunToolAtTerminal(
    const std::vector<std::string>& /*arguments*/, int /*columns*/,
    const std::vector<std::string>& /*variables*/) {
    throw std::runtime_error("there is no terminal to be had");
}

} // namespace ToolTests
