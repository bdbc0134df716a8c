#pragma once

#include "pellum/object/ref.h"
#include "tavik/type/data_object_type.h"
#include "tavik/value/any.h"
#include "tavik/value/data_object.h"
#include "tests/support/random_object.h"

#include <optional>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <vector>

/// Looks into values and changes them by their descriptors and field functions alone: what equality,
/// difference and clone are measured by.
namespace CatalogueTests {

/// A clone of an object.
Pellum::Ref<Tavik::DataObject> Clone(const Tavik::DataObject& object);

/// The path of every difference between two values, ".disk[2].size"; empty when they hold the same.
std::vector<std::string> FindDifferences(const Tavik::Any* a, const Tavik::Any* b);

/// The addresses of all objects, arrays, references and boxed values that a value is made of, but for the two
/// boxed booleans.
std::set<const Tavik::Any*> CollectParts(const Tavik::Any& value);

/// All objects inside of an object, itself included; borrowed.
std::vector<Tavik::DataObject*> CollectObjects(Tavik::DataObject& object);

/// Begins every text that `MarkSecrets` stores, and is in no other.
constexpr std::string_view kSecretMark = "s3cr3t-";

/// Gives every secret property inside of an object a text of its own; returns how many there are.
int MarkSecrets(Tavik::DataObject& object);

/// What has been done to a value.
struct Change {
    enum Kind {
        Set,     ///< something was unset and has a value now
        Unset,   ///< something optional is unset now
        Replaced ///< something has another value
    };

    Kind kind;
    std::string path; ///< where the value differs from what it was
};

/// Makes small changes to values. The same seed makes the same changes.
class Changer {
public:
    explicit Changer(unsigned seed)
        : m_random(TestSupport::RandomObjects::Fill::Some, seed), m_engine(seed) {}

    /// Changes one property, or one thing below it; nothing when the property can hold one value only.
    std::optional<Change> ChangeProperty(Tavik::DataObject& object, const Tavik::Property& property);

private:
    /// A change, and the value to store: the changed one or one in its place.
    struct Outcome {
        Change change;
        Pellum::Ref<Tavik::Any> value;
    };

    std::optional<Outcome> ChangeValue(Tavik::Any& value);
    std::optional<Change> ChangeObject(Tavik::DataObject& object);
    std::optional<Change> ChangeArray(Tavik::Any& value);

    /// True once in so many draws.
    bool Draw(unsigned of) { return m_engine() % of == 0; }

    TestSupport::RandomObjects m_random;
    std::mt19937 m_engine;
};

} // namespace CatalogueTests
