#include "pellum/text/demangle.h"

#include <cstdlib>
#include <memory>

#include <cxxabi.h>

namespace Pellum {

std::string Demangle(const char* mangled) {
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> name(
        abi::__cxa_demangle(mangled, nullptr, nullptr, &status), &std::free);
    return name != nullptr ? name.get() : mangled;
}

std::string Demangle(const std::type_info& type) {
    return Demangle(type.name());
}

} // namespace Pellum
