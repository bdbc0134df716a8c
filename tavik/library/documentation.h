#pragma once

namespace Tavik {

/// One text from a library's schema, for tools that explain types. Kept out of the libraries themselves.
struct Documentation {
    const char* type;   ///< dotted name
    const char* member; ///< property, method, "method.parameter" or tag; null for the type itself
    const char* text;   ///< lines separated by line feeds
};

} // namespace Tavik
