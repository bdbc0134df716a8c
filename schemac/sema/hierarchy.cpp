#include "schemac/diagnostic/catalogue.h"
#include "schemac/sema/cycle.h"
#include "schemac/sema/describe.h"
#include "schemac/sema/steps.h"

#include <string>
#include <unordered_map>

namespace Schemac::Sema {

void BreakVersionCycles(Program& program) {
    std::unordered_map<const Model::Version*, Model::Version*> owned;
    for (const VersionEntry& entry : program.versions) {
        owned.emplace(entry.version, entry.version);
    }
    CycleFinder<Model::Version> finder;
    const auto next = [](const Model::Version& version) { return version.includes; };
    const auto found = [&](const std::vector<const Model::Version*>& cycle) {
        const std::string chain =
            Chain(cycle, [](const Model::Version& version) { return std::string_view(version.fullName); });
        program.reporter.Report(cycle.front()->span, Diagnostics::kIncludeCycle, chain);
        std::erase(owned.at(cycle.back())->includes, cycle.front());
    };
    for (const VersionEntry& entry : program.versions) {
        finder.Walk(*entry.version, next, found);
    }
}

void BreakInheritanceCycles(Program& program) {
    std::unordered_map<const Model::Type*, const TypeEntry*> entries;
    for (const TypeEntry& entry : program.types) {
        entries.emplace(entry.type, &entry);
    }
    CycleFinder<Model::Type> finder;
    const auto next = [](const Model::Type& type) {
        const Model::Type* base = type.Base();
        return base != nullptr ? std::vector<const Model::Type*>{base} : std::vector<const Model::Type*>{};
    };
    const auto found = [&](const std::vector<const Model::Type*>& cycle) {
        const std::string chain =
            Chain(cycle, [](const Model::Type& type) { return std::string_view(type.dottedName); });
        program.reporter.Report(cycle.front()->span, Diagnostics::kInheritanceCycle, chain);
        const TypeEntry& last = *entries.at(cycle.back());
        const Model::Type& root = RootOf(FamilyOf(*last.type), program.module);
        if (Model::DataType* data = last.Data()) {
            data->base = &root;
        } else if (Model::ManagedType* managed = last.Managed()) {
            managed->base = &root;
        }
    };
    for (const TypeEntry& entry : program.types) {
        finder.Walk(*entry.type, next, found);
    }
}

} // namespace Schemac::Sema
