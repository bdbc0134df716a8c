#include "tests/tools/tool_runner.h"

#include <array>
#include <cstdlib>
#include <stdexcept>

#include <fcntl.h>
#include <pty.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace ToolTests {

namespace {

/// Runs in the child.
[[noreturn]] void Execute(const std::string& program, const std::vector<std::string>& arguments) {
    std::vector<char*> words{const_cast<char*>(program.c_str())};
    for (const std::string& argument : arguments) {
        words.push_back(const_cast<char*>(argument.c_str()));
    }
    words.push_back(nullptr);
    execv(program.c_str(), words.data());
    _exit(127);
}

/// Becomes the program; runs in the child.
[[noreturn]] void Become(
    const std::string& program, const std::vector<std::string>& arguments, const TemporaryFolder& folder) {
    const auto redirect = [&folder](const char* name, int flags, int target) {
        const int file = open((folder.GetPath() / name).c_str(), flags, 0600);
        if (file < 0 || dup2(file, target) < 0) {
            _exit(126);
        }
    };
    redirect("in", O_RDONLY, STDIN_FILENO);
    redirect("out", O_WRONLY | O_CREAT | O_TRUNC, STDOUT_FILENO);
    redirect("err", O_WRONLY | O_CREAT | O_TRUNC, STDERR_FILENO);
    Execute(program, arguments);
}

} // namespace

RunResult RunProgram(
    const std::string& program, const std::vector<std::string>& arguments, std::string_view input) {
    const TemporaryFolder folder;
    folder.Write("in", input);
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child < 0) {
        throw std::runtime_error("cannot start " + program);
    }
    if (child == 0) {
        Become(program, arguments, folder);
    }
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    RunResult result;
    result.duration =
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
    result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    result.out = ReadFile(folder.GetPath() / "out");
    result.err = ReadFile(folder.GetPath() / "err");
    result.peakKiB = usage.ru_maxrss;
    return result;
}

RunResult RunToolAtTerminal(
    const std::vector<std::string>& arguments, int columns, const std::vector<std::string>& variables) {
    winsize size{};
    size.ws_row = 24;
    size.ws_col = static_cast<unsigned short>(columns);
    int terminal = -1;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, &size);
    if (child < 0) {
        throw std::runtime_error("there is no terminal to be had");
    }
    if (child == 0) {
        for (const char* name : {"COLUMNS", "NO_COLOR"}) {
            unsetenv(name);
        }
        setenv("TERM", "xterm", 1);
        for (const std::string& variable : variables) {
            putenv(const_cast<char*>(variable.c_str()));
        }
        Execute(MORVANE_PROGRAM, arguments);
    }
    RunResult result;
    std::array<char, 4096> buffer{};
    for (ssize_t count = 0; (count = read(terminal, buffer.data(), buffer.size())) > 0;) {
        result.out.append(buffer.data(), static_cast<std::size_t>(count));
    }
    close(terminal);
    int status = 0;
    waitpid(child, &status, 0);
    result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    std::erase(result.out, '\r');
    return result;
}

} // namespace ToolTests
