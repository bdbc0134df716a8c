#include "schemac/emit/emitters.h"

#include <memory>
#include <vector>

#include "schemac/emit/documentation_emitter.h"
#include "schemac/emit/header_emitter.h"
#include "schemac/emit/proto_emitter.h"
#include "schemac/emit/source_emitter.h"
#include "schemac/emit/stub_emitter.h"
#include "schemac/emit/tables_emitter.h"

namespace Schemac::Emit {

namespace {

std::vector<std::unique_ptr<Emitter>> CppEmitters() {
    std::vector<std::unique_ptr<Emitter>> emitters;
    emitters.push_back(std::make_unique<HeaderEmitter>());
    emitters.push_back(std::make_unique<StubEmitter>());
    emitters.push_back(std::make_unique<SourceEmitter>());
    emitters.push_back(std::make_unique<TablesEmitter>());
    emitters.push_back(std::make_unique<DocumentationEmitter>());
    return emitters;
}

} // namespace

void EmitCpp(const Model::Module& module, OutputSet& output) {
    for (const auto& emitter : CppEmitters()) {
        emitter->Emit(module, output);
    }
}

void EmitProto(const Model::Module& module, const std::string& package, OutputSet& output) {
    ProtoEmitter(package).Emit(module, output);
}

} // namespace Schemac::Emit
