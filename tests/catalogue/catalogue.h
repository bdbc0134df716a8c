#pragma once

#include "tavik/type/data_object_type.h"
#include "tavik/type/enum_type.h"
#include "tavik/type/managed_object_type.h"
#include "tavik/type/version.h"
#include "tavik/value/data_object.h"
#include "tests/support/random_object.h"

#include <functional>
#include <string_view>
#include <vector>

/// All that the libraries of types have registered (the interface, the infrastructure and the tests' own),
/// and objects of these types to test with. All is borrowed.
namespace CatalogueTests {

using DataTypes = std::vector<const Tavik::DataObjectType*>;

/// The types of all libraries, library by library in slot order.
const std::vector<const Tavik::Type*>& GetTypes();
const DataTypes& GetDataTypes();
std::vector<const Tavik::EnumType*> GetEnumTypes();
std::vector<const Tavik::ManagedObjectType*> GetManagedTypes();
/// Whether the descriptor records lead from one type to the other.
bool Derives(const Tavik::DataObjectType& type, const Tavik::Type& base);
/// A data type that is not `declared` and does not derive from it; `number` chooses.
const Tavik::DataObjectType& GetUnrelatedType(const Tavik::Type& declared, std::size_t number);

/// The versions of the interface, oldest first; 9.0 stands last but does not include 6.8.
constexpr std::size_t kVersionCount = 11;
const Tavik::Version& GetVersion(std::size_t number);
/// Whether a version has what `introduced`, a version's full name, has brought.
bool Has(std::size_t number, std::string_view introduced);

/// An object to test with. `seed` is different for each.
struct Subject {
    const Tavik::DataObjectType& type;
    Pellum::Ref<Tavik::DataObject> object;
    unsigned seed;
};

using Fill = TestSupport::RandomObjects::Fill;

/// Calls `check` with an object of every data type, filled that far; gives up after some failures. Each round
/// gives other objects.
void ForEachObject(Fill fill, const std::function<void(const Subject&)>& check, unsigned round = 0);
/// With several objects of every type: one with the least that is valid, a full one, and random ones.
void ForEachObject(const std::function<void(const Subject&)>& check);

} // namespace CatalogueTests
