#include "schemac/driver/compile.h"
#include "schemac/dump/dump.h"
#include "schemac/emit/emitters.h"
#include "schemac/emit/output.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <map>
#include <regex>
#include <stdexcept>
#include <string>
#include <vector>

#include <unistd.h>

namespace {

enum ExitCode : int { kOk = 0, kSchemaErrors = 1, kUsageError = 2 };

constexpr const char* kCpp = "cpp";
constexpr const char* kProto = "proto";

struct Arguments {
    Schemac::CompileOptions compile;
    std::vector<std::string> kinds{kCpp}; ///< of output
    std::string package;                  ///< of protobuf
    std::string outputDirectory;
    std::string depfile;
    std::string stamp;
    bool dump = false;
    bool check = false;
};

void Emit(const Schemac::Model::Module& module, const Arguments& arguments) {
    const std::string& library = arguments.compile.library;
    // Nothing is written unless everything can be.
    std::map<std::string, Schemac::Emit::OutputSet> outputs;
    for (const std::string& kind : arguments.kinds) {
        if (kind == kCpp) {
            outputs[library] = {};
            Schemac::Emit::EmitCpp(module, outputs[library]);
        } else {
            // An owner of its own: it must not take the C++ for what an earlier run left behind.
            Schemac::Emit::OutputSet& output = outputs[library + "-" + kind] = {};
            Schemac::Emit::EmitProto(module, arguments.package, output);
        }
    }
    for (const auto& [owner, output] : outputs) {
        output.WriteTo(arguments.outputDirectory, owner);
    }
    if (!arguments.depfile.empty()) {
        std::vector<std::string> inputs = arguments.compile.files;
        inputs.insert(inputs.end(), arguments.compile.imports.begin(), arguments.compile.imports.end());
        Schemac::Emit::WriteIfChanged(arguments.depfile, Schemac::Emit::DepfileText(arguments.stamp, inputs));
    }
    if (!arguments.stamp.empty()) {
        // Always written: its time tells the build that the outputs are up to date, changed or not.
        std::ofstream stamp(arguments.stamp, std::ios::trunc);
        stamp << "schemac\n";
        stamp.close();
        if (!stamp) {
            throw std::runtime_error("cannot write '" + arguments.stamp + "'");
        }
    }
}

int Run(const Arguments& arguments) {
    Schemac::SourceManager sources;
    Schemac::Reporter reporter;
    const auto module = Schemac::Compile(arguments.compile, sources, reporter);
    if (module == nullptr) {
        Schemac::PrintOptions options;
        options.useColour = isatty(STDERR_FILENO) == 1 && std::getenv("NO_COLOR") == nullptr;
        Schemac::PrintDiagnostics(reporter, sources, options, std::cerr);
        return kSchemaErrors;
    }
    if (arguments.dump) {
        std::cout << Schemac::DumpModule(*module);
    } else if (!arguments.check) {
        Emit(*module, arguments);
    }
    return kOk;
}

bool IsPackageName(const std::string& name) {
    static const std::regex kPackage("[A-Za-z][A-Za-z0-9_]*(\\.[A-Za-z][A-Za-z0-9_]*)*");
    return std::regex_match(name, kPackage);
}

} // namespace

int main(int argc, char** argv) {
    Arguments arguments;
    CLI::App app("Compiles the schema of a type library to C++ or protobuf.", "schemac");
    app.add_option("files", arguments.compile.files, "Schema files of the library, in the order of its types")
        ->required()
        ->type_name("FILE");
    app.add_option("--library", arguments.compile.library, "Name of the library")->type_name("NAME");
    app.add_option(
           "--source-root", arguments.compile.sourceRoot, "Folder that paths in the output are relative to")
        ->type_name("DIR");
    app.add_option(
           "--import", arguments.compile.imports, "Schema file of another library, which this one refers to")
        ->type_name("FILE")
        ->allow_extra_args(false);
    auto* emit = app.add_option("--emit", arguments.kinds, "What to write: cpp, proto; may be given again")
                     ->type_name("KIND")
                     ->allow_extra_args(false)
                     ->check(CLI::IsMember({kCpp, kProto}))
                     ->capture_default_str();
    app.add_option(
           "--package", arguments.package, "Package of the protobuf, unless that is called like the library")
        ->type_name("NAME")
        ->needs(emit);
    auto* out = app.add_option("--out", arguments.outputDirectory, "Folder to write to")->type_name("DIR");
    auto* stamp =
        app.add_option("--stamp", arguments.stamp, "File to write when all is done")->type_name("FILE");
    app.add_option(
           "--depfile", arguments.depfile, "Make rule to write: the stamp depends on the schema files")
        ->type_name("FILE")
        ->needs(stamp);
    auto* dump =
        app.add_flag("--dump", arguments.dump, "Print the resolved schema as JSON and write nothing");
    auto* check = app.add_flag("--check", arguments.check, "Only look for errors");
    dump->excludes(check)->excludes(out);
    check->excludes(out);
    app.footer("Exit codes: 0 done, 1 errors in the schema or in writing, 2 wrong usage.");
    try {
        app.parse(argc, argv);
        if (!arguments.dump && !arguments.check && out->count() == 0) {
            throw CLI::RequiredError("--out, --dump or --check");
        }
        if (arguments.package.empty()) {
            arguments.package = arguments.compile.library;
        }
        if (out->count() != 0 && std::count(arguments.kinds.begin(), arguments.kinds.end(), kProto) != 0
            && !IsPackageName(arguments.package)) {
            throw CLI::ValidationError(
                "--package", "'" + arguments.package + "' is no name of a protobuf package");
        }
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? kOk : kUsageError;
    }
    try {
        return Run(arguments);
    } catch (const std::exception& error) {
        std::cerr << "schemac: error: " << error.what() << '\n';
        return kSchemaErrors;
    }
}
