#pragma once

#include "schemac/diagnostic/reporter.h"
#include "schemac/model/module.h"
#include "schemac/source/source_manager.h"
#include "tests/support/temporary_folder.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace Schemac::Test {

/// Folder of this test's data, in the source tree.
std::filesystem::path DataFolder();

std::string ReadFile(const std::filesystem::path& path);
void WriteFile(const std::filesystem::path& path, const std::string& content);

using TestSupport::TemporaryFolder;

/// A compiled schema and everything that was said of it.
struct Compiled {
    SourceManager sources;
    Reporter reporter;
    std::unique_ptr<const Model::Module> module;
};

/// Compiles a text that is in no file, as "api/test.tavik".
std::unique_ptr<Compiled> CompileText(const std::string& text);

/// Compiles files; `root` is the source root.
std::unique_ptr<Compiled> CompileFiles(
    const std::filesystem::path& root, const std::vector<std::filesystem::path>& files,
    const std::vector<std::filesystem::path>& imports = {});

/// All errors with codes, one a line; empty when there are none.
std::string ErrorText(const Compiled& compiled);

} // namespace Schemac::Test
