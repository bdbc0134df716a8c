#include "tools/morvane/platform.h"

#include <sys/ioctl.h>
#include <unistd.h>

namespace Tool {

std::vector<std::string> GetArguments(int argc, char** argv) {
    return {argv + (argc > 0 ? 1 : 0), argv + argc};
}

void PrepareOutput() {}

bool IsTerminal(std::FILE* stream) {
    return isatty(fileno(stream)) == 1;
}

std::optional<std::size_t> GetTerminalWidth(std::FILE* stream) {
    winsize size{};
    if (ioctl(fileno(stream), TIOCGWINSZ, &size) != 0 || size.ws_col == 0) {
        return std::nullopt;
    }
    return size.ws_col;
}

std::filesystem::path GetProgramFolder() {
    std::error_code ignored;
    return std::filesystem::read_symlink("/proc/self/exe", ignored).parent_path();
}

} // namespace Tool
