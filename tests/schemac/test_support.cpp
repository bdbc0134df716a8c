#include "tests/schemac/test_support.h"

#include "schemac/driver/compile.h"
#include "schemac/parse/parser.h"
#include "schemac/sema/analyse.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace Schemac::Test {

namespace fs = std::filesystem;

fs::path DataFolder() {
    return SCHEMAC_TEST_DIR;
}

std::string ReadFile(const fs::path& path) {
    std::ifstream stream(path, std::ios::binary);
    if (!stream) {
        throw std::runtime_error("cannot read " + path.string());
    }
    std::ostringstream content;
    content << stream.rdbuf();
    return content.str();
}

void WriteFile(const fs::path& path, const std::string& content) {
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << content;
}

std::unique_ptr<Compiled> CompileText(const std::string& text) {
    auto compiled = std::make_unique<Compiled>();
    const std::uint32_t file = compiled->sources.AddText("api/test.tavik", text);
    std::vector<Sema::InputFile> files;
    files.push_back({Parse(compiled->sources, file, compiled->reporter), "api/test.tavik", false});
    if (!compiled->reporter.HasErrors()) {
        compiled->module = Sema::Analyse("test", files, compiled->reporter);
    }
    return compiled;
}

std::unique_ptr<Compiled> CompileFiles(
    const fs::path& root, const std::vector<fs::path>& files, const std::vector<fs::path>& imports) {
    auto compiled = std::make_unique<Compiled>();
    CompileOptions options;
    options.library = "test";
    options.sourceRoot = root;
    for (const fs::path& file : files) {
        options.files.push_back(file.string());
    }
    for (const fs::path& file : imports) {
        options.imports.push_back(file.string());
    }
    compiled->module = Compile(options, compiled->sources, compiled->reporter);
    return compiled;
}

std::string ErrorText(const Compiled& compiled) {
    std::string text;
    for (const Diagnostic* diagnostic : compiled.reporter.Sorted()) {
        text += ErrorCode(diagnostic->number) + ": " + diagnostic->text + "\n";
    }
    return text;
}

} // namespace Schemac::Test
