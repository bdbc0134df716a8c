#pragma once

#include <string>
#include <vector>

#include "schemac/model/type.h"

namespace Schemac::Emit {

/// One accessor of a property. Declaration: result + " " + name + parameters + ";".
struct AccessorText {
    std::string result;     ///< "const std::string&"
    std::string name;       ///< "GetHostname"
    std::string parameters; ///< "(bool value)", "() const"
    std::string body;       ///< one statement: "return m_hostname;"
    bool isInline;          ///< whether it needs no more than the header knows
};

/// The accessors of a property of a data class, in the order of their declarations.
std::vector<AccessorText> AccessorsOf(const Model::Property& property, const Model::DataType& owner);

} // namespace Schemac::Emit
