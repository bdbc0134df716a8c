#pragma once

#include "schemac/diagnostic/reporter.h"
#include "schemac/model/module.h"
#include "schemac/sema/program.h"

#include <memory>
#include <string>
#include <vector>

namespace Schemac::Sema {

/// Resolves and checks the files of a library. Null when there was an error; all errors are in `reporter`.
std::unique_ptr<const Model::Module> Analyse(
    const std::string& library, const std::vector<InputFile>& files, Reporter& reporter);

} // namespace Schemac::Sema
