#include "tests/exports/export_list.h"

#include <cxxabi.h>

#include <cstdlib>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string_view>

namespace ExportTests {

namespace {

/// Those of which a class has one or more. What constructs a base within another class belongs to that class.
constexpr std::string_view kKinds[] = {
    "vtable for ",
    "VTT for ",
    "typeinfo for ",
    "typeinfo name for ",
    "virtual thunk to ",
    "non-virtual thunk to ",
    "covariant return thunk to ",
};
constexpr std::string_view kConstruction = "construction vtable for ";
constexpr std::string_view kConstructionIn = "-in-";

std::string Demangle(const std::string& name) {
    const std::unique_ptr<char, decltype(&std::free)> text(
        abi::__cxa_demangle(name.c_str(), nullptr, nullptr, nullptr), &std::free);
    return text != nullptr ? text.get() : name;
}

/// Calls `visit(position)` for every character that is in no template's arguments.
template <class Visit>
void ForEachOutside(std::string_view text, Visit visit) {
    int depth = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        depth -= text[at] == '>' ? 1 : 0;
        if (depth == 0) {
            visit(at);
        }
        depth += text[at] == '<' ? 1 : 0;
    }
}

/// A function's name without its parameters, and without its result, which templates are written with.
std::string WithoutSignature(std::string_view text) {
    std::size_t end = text.size();
    ForEachOutside(text, [&](std::size_t at) { end = text[at] == '(' && at < end ? at : end; });
    text = text.substr(0, end);
    std::size_t start = 0;
    ForEachOutside(text, [&](std::size_t at) { start = text[at] == ' ' ? at + 1 : start; });
    return std::string(text.substr(start));
}

Export Parse(const std::string& name) {
    const std::string demangled = Demangle(name);
    std::string_view text = demangled;
    if (text.starts_with(kConstruction)) {
        const std::size_t in = text.find(kConstructionIn);
        return {std::string(kConstruction), std::string(text.substr(in + kConstructionIn.size()))};
    }
    for (const std::string_view kind : kKinds) {
        if (text.starts_with(kind)) {
            return {std::string(kind), WithoutSignature(text.substr(kind.size()))};
        }
    }
    return {"", WithoutSignature(text)};
}

} // namespace

std::vector<std::string> ScopesOf(const std::string& entity) {
    std::vector<std::string> scopes{entity};
    ForEachOutside(entity, [&](std::size_t at) {
        if (entity.compare(at, 2, "::") == 0) {
            scopes.push_back(entity.substr(0, at));
        }
    });
    return scopes;
}

std::set<Export> ReadExportList(const std::string& library) {
    const std::string path = std::string(MORVANE_EXPORTS_DIR) + "/" + library + ".txt";
    std::ifstream file(path);
    if (!file) {
        throw std::runtime_error("cannot read " + path);
    }
    std::set<Export> exports;
    for (std::string line; std::getline(file, line);) {
        exports.insert(Parse(line));
    }
    return exports;
}

bool IsLeftByCompiler(const Export& found) {
#if defined(_WIN32) || (defined(NDEBUG) && !defined(__clang__))
    static_cast<void>(found);
    return false;
#else
    return found.entity.starts_with("std::") || found.entity.starts_with("__gnu_cxx::");
#endif
}

} // namespace ExportTests
