#pragma once

#include "schemac/diagnostic/reporter.h"
#include "schemac/model/module.h"
#include "schemac/source/source_manager.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace Schemac {

/// What to compile.
struct CompileOptions {
    std::string library;
    std::filesystem::path sourceRoot = "."; ///< paths in the model are relative to it
    std::vector<std::string> files;         ///< the library's own schema, in the order of the model
    std::vector<std::string> imports;       ///< schema of other libraries that the own one refers to
};

/// Reads, parses, resolves and checks. Null when there was an error; all errors are in `reporter`. All files
/// are parsed before anything is resolved, and nothing is resolved when one could not be parsed.
std::unique_ptr<const Model::Module> Compile(
    const CompileOptions& options, SourceManager& sources, Reporter& reporter);

} // namespace Schemac
