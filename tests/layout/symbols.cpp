#include "tests/layout/raw_memory.h"

#include "tests/support/dotted_names.h"

#include <algorithm>
#include <map>

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace LayoutTests {

using TestSupport::ToPath;

namespace {

/// "Morvane::orlinNamespaceId" as the compilers write it.
std::string Mangle(std::string_view path) {
    std::string mangled = "_ZN";
    const bool isFunction = path.ends_with("()");
    path.remove_suffix(isFunction ? 2 : 0);
    while (!path.empty()) {
        const std::string_view part = path.substr(0, path.find("::"));
        mangled += std::to_string(part.size()) + std::string(part);
        path.remove_prefix(std::min(path.size(), part.size() + 2));
    }
    return mangled + (isFunction ? "Ev" : "E");
}

} // namespace

const void* FindSymbol(std::string_view path) {
    const std::string mangled = Mangle(path);
#ifdef _WIN32
    for (const char* library : {"libmorvaneTypes.dll", "libzabro.dll", "libtavik.dll"}) {
        const FARPROC found = GetProcAddress(GetModuleHandleA(library), mangled.c_str());
        if (found != nullptr) {
            return reinterpret_cast<const void*>(found);
        }
    }
    return nullptr;
#else
    return dlsym(RTLD_DEFAULT, mangled.c_str());
#endif
}

const void* FindTypeInfo(std::string_view name) {
    // Some of the runtime's own are called otherwise.
    static const std::map<std::string_view, std::string_view> own = {
        {"boolean", "Bool"},
        {"anyType", "Any"},
        {"orlin.DynamicData", "OrlinDynamicData"},
        {"orlin.MethodFault", "OrlinMethodFault"},
        {"orlin.RuntimeFault", "OrlinRuntimeFault"},
        {"orlin.ManagedObject", "OrlinManagedObject"},
    };
    const auto found = own.find(name);
    const std::size_t dot = name.find('.');
    const bool isOwn = found != own.end() || dot == std::string_view::npos;
    return FindSymbol(
        (isOwn ? "Tavik" : ToPath(name.substr(0, dot), "")) + "::g"
        + (found != own.end() ? std::string(found->second) : ToPath(name, "")) + "TypeInfo");
}

} // namespace LayoutTests
