// Writes a function that calls the asynchronous form of every method and getter of a schema's managed types.
//
// Usage: emit_async_calls OUTPUT LIBRARY ROOT FILE... [--import FILE...]

#include "schemac/diagnostic/reporter.h"
#include "schemac/driver/compile.h"
#include "schemac/emit/operations.h"
#include "schemac/emit/output.h"
#include "schemac/model/naming.h"

#include <iostream>

namespace {

std::string Calls(const Schemac::Model::ManagedType& type) {
    using namespace Schemac;
    std::string text = "    {\n        const auto stub = caller.Begin<" + Naming::QualifiedClassName(type)
                     + ", " + Naming::StubClass(type) + ">();\n";
    for (const Emit::Operation& operation : Emit::OperationsOf(type)) {
        text += "        stub->" + operation.function + "(";
        for (std::size_t i = 0; i < operation.parameters->size(); ++i) {
            text += "{}, ";
        }
        text += "caller.completion, caller.item);\n        caller.Check(" + std::to_string(operation.index)
              + ", " + std::to_string(operation.parameters->size()) + ", "
              + (operation.IsGetter() ? "nullptr"
                                      : Naming::QualifiedClassName(type)
                                            + "::" + Naming::MethodConstant(operation.method->name))
              + ");\n";
    }
    return text + "    }\n";
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    Schemac::CompileOptions options{arguments.at(1), arguments.at(2), {}, {}};
    auto* files = &options.files;
    for (std::size_t i = 3; i < arguments.size(); ++i) {
        if (arguments[i] == "--import") {
            files = &options.imports;
        } else {
            files->push_back(arguments[i]);
        }
    }
    Schemac::SourceManager sources;
    Schemac::Reporter reporter;
    const auto module = Schemac::Compile(options, sources, reporter);
    if (module == nullptr) {
        std::cerr << "the schema has errors\n";
        return 1;
    }
    std::string includes = "#include \"tests/managed/async_caller.h\"\n";
    std::string calls;
    for (const Schemac::Model::ManagedType* type : module->ManagedTypes()) {
        includes += "#include \"" + Schemac::Naming::StubHeaderPath(*type) + "\"\n";
        calls += Calls(*type);
    }
    Schemac::Emit::WriteIfChanged(
        arguments.at(0), includes + "\nvoid CallAll(AsyncCaller& caller) {\n" + calls + "}\n");
    return 0;
}
