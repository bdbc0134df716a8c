#include "tools/morvane/demo/examples_folder.h"

#include "pellum/error/exception.h"

#include <filesystem>
#include <system_error>

#ifdef _WIN32
#include <cstdlib>
#endif

namespace Tool {

namespace {

std::filesystem::path GetProgramFolder() {
#ifdef _WIN32
    return std::filesystem::path(_pgmptr).parent_path();
#else
    std::error_code ignored;
    return std::filesystem::read_symlink("/proc/self/exe", ignored).parent_path();
#endif
}

} // namespace

std::string FindExamplesFolder() {
    for (const std::filesystem::path& folder :
         {GetProgramFolder() / MORVANE_EXAMPLES_FROM_PROGRAM,
          std::filesystem::path(MORVANE_SOURCE_EXAMPLES)}) {
        std::error_code ignored;
        if (std::filesystem::is_directory(folder, ignored)) {
            return folder.lexically_normal().string();
        }
    }
    throw Pellum::Exception(
        "the examples are not installed with this program; --examples says where they are");
}

} // namespace Tool
