#pragma once

#include "schemac/model/module_builder.h"
#include "schemac/model/type.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Schemac::Sema {

/// The class tree that a type belongs to.
enum class Family : std::uint8_t { Data, Fault, Managed, Enum, Scalar };

Family FamilyOf(const Model::Type& type);

/// "a data type", "a fault", "a managed type", "an enumeration", "a built-in type".
std::string_view Article(Family family);

/// What a type of the family derives from when it names no base.
const Model::Type& RootOf(Family family, const Model::ModuleBuilder& module);

/// Names of a cycle as text: "a -> b -> a". The middle of a long one is left out.
std::string ChainText(const std::vector<std::string_view>& names);

/// The same for the nodes of a cycle; `nameOf` gives the name of one.
template <typename Node, typename NameOf>
std::string Chain(const std::vector<const Node*>& cycle, NameOf nameOf) {
    std::vector<std::string_view> names;
    names.reserve(cycle.size());
    for (const Node* node : cycle) {
        names.push_back(nameOf(*node));
    }
    return ChainText(names);
}

} // namespace Schemac::Sema
