#include "tests/tools/tool_runner.h"

#include <fstream>
#include <sstream>

namespace ToolTests {

RunResult RunTool(const std::vector<std::string>& arguments, std::string_view input) {
    return RunProgram(MORVANE_PROGRAM, arguments, input);
}

std::string Example(const std::string& name) {
    return EXAMPLES_FOLDER "/" + name;
}

std::string ReadFile(const std::filesystem::path& path) {
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

} // namespace ToolTests
