#include "tools/morvane/demo/examples_folder.h"

#include "pellum/error/exception.h"
#include "pellum/text/path_name.h"
#include "tools/morvane/platform.h"

#include <filesystem>
#include <system_error>

namespace Tool {

std::string FindExamplesFolder() {
    for (const std::filesystem::path& folder :
         {GetProgramFolder() / MORVANE_EXAMPLES_FROM_PROGRAM,
          std::filesystem::path(MORVANE_SOURCE_EXAMPLES)}) {
        std::error_code ignored;
        if (std::filesystem::is_directory(folder, ignored)) {
            return Pellum::ToName(folder.lexically_normal());
        }
    }
    throw Pellum::Exception(
        "the examples are not installed with this program; --examples says where they are");
}

} // namespace Tool
