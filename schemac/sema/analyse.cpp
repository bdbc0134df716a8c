#include "schemac/sema/analyse.h"

#include "schemac/sema/steps.h"

namespace Schemac::Sema {

namespace {

enum class Runs { Always, WithoutErrors };

struct Step {
    void (*run)(Program&);
    Runs when;
};

constexpr Step kSteps[] = {
    {DeclareVersions, Runs::Always}, {DeclareTypes, Runs::Always},
    {ResolveIncludes, Runs::Always}, {BreakVersionCycles, Runs::Always},
    {ResolveBases, Runs::Always},    {BreakInheritanceCycles, Runs::Always},
    {ResolveMembers, Runs::Always},  {ResolveEnumOrder, Runs::Always},
    {ApplyRules, Runs::Always},      {CheckHeaders, Runs::WithoutErrors},
};

} // namespace

std::unique_ptr<const Model::Module> Analyse(
    const std::string& library, const std::vector<InputFile>& files, Reporter& reporter) {
    Model::ModuleBuilder module(library);
    Program program{files, module, reporter};
    for (const Step& step : kSteps) {
        if (step.when == Runs::Always || !reporter.HasErrors()) {
            step.run(program);
        }
    }
    return reporter.HasErrors() ? nullptr : module.Finish();
}

} // namespace Schemac::Sema
