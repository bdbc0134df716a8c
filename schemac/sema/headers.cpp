#include "schemac/diagnostic/catalogue.h"
#include "schemac/model/header_needs.h"
#include "schemac/model/naming.h"
#include "schemac/sema/cycle.h"
#include "schemac/sema/describe.h"
#include "schemac/sema/steps.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Schemac::Sema {

namespace {

void CheckHeaderPaths(Program& program) {
    std::unordered_map<std::string, const Model::Type*> taken;
    for (const TypeEntry& entry : program.types) {
        if (entry.type->IsNested()) {
            continue;
        }
        std::vector<std::string> paths{Naming::HeaderPath(*entry.type)};
        if (entry.type->IsManaged()) {
            paths.push_back(Naming::StubHeaderPath(*entry.type));
        }
        for (const std::string& path : paths) {
            const auto [found, isNew] = taken.emplace(path, entry.type);
            if (!isNew) {
                program.reporter
                    .Report(entry.type->span, Diagnostics::kHeaderClash, entry.type->dottedName, path)
                    .AddNote(found->second->span, Diagnostics::kFirstDeclaredHere);
            }
        }
    }
}

void CheckHeaderCycles(Program& program) {
    CycleFinder<Model::Type> finder;
    const auto next = [](const Model::Type& type) { return Model::CollectHeaderNeeds(type).includes; };
    const auto found = [&](const std::vector<const Model::Type*>& cycle) {
        const std::string chain =
            Chain(cycle, [](const Model::Type& type) { return std::string_view(type.dottedName); });
        program.reporter.Report(cycle.front()->span, Diagnostics::kHeaderCycle, chain);
    };
    for (const TypeEntry& entry : program.types) {
        if (!entry.type->IsNested() && !entry.type->isImported) {
            finder.Walk(*entry.type, next, found);
        }
    }
}

} // namespace

void CheckHeaders(Program& program) {
    CheckHeaderPaths(program);
    CheckHeaderCycles(program);
}

} // namespace Schemac::Sema
