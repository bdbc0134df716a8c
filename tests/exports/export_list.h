#pragma once

#include <compare>
#include <set>
#include <string>
#include <vector>

/// The lists of exports that the build writes, and the names in them.
namespace ExportTests {

#if defined(_WIN32)
constexpr bool kIsWindows = true;
#else
constexpr bool kIsWindows = false;
#endif

/// Something that a library exports. What differs only in parameters, or as constructors do, is the same.
struct Export {
    /// What of a class it is: "vtable for ", "typeinfo for "; empty for what has a name itself.
    std::string kind;
    /// The qualified name, without result and parameters.
    std::string entity;

    friend auto operator<=>(const Export&, const Export&) = default;
};

/// The scopes that a qualified name stands in, and itself: "A::B<C::D>::E" gives that, "A::B<C::D>" and "A".
std::vector<std::string> ScopesOf(const std::string& entity);

/// What a library exports. Throws `std::runtime_error` when there is no list of it.
std::set<Export> ReadExportList(const std::string& library);

/// Whether it is a template of the C++ library that the compiler leaves in libraries that use it, where it
/// does so.
bool IsLeftByCompiler(const Export& found);

} // namespace ExportTests
