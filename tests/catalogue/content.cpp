#include "tests/catalogue/content.h"

#include "tavik/type/enum_type.h"
#include "tavik/value/mo_ref.h"
#include "tavik/value/primitive.h"
#include "tavik/value/property_diff_set.h"
#include "tavik/value/scalar_array.h"
#include "tests/catalogue/catalogue.h"
#include "tests/support/plain_value.h"

#include <functional>

namespace CatalogueTests {

namespace {

using Pellum::Ref;
using Tavik::Any;
using Tavik::TypeKind;

bool HoldsCounted(const Tavik::Type& elementType) {
    return elementType.GetKind() >= TypeKind::Data || elementType.GetKind() == TypeKind::Any;
}

const void* GetElement(const Tavik::ArrayBase& array, std::size_t index) {
    const auto* objects = dynamic_cast<const Tavik::DataArrayBase*>(&array);
    return objects != nullptr ? static_cast<const Any*>(objects->GetElement(index))
                              : dynamic_cast<const Tavik::ScalarArrayBase&>(array)._GetElementPointer(index);
}

bool ArePlainEqual(const Tavik::Type& type, const void* a, const void* b) {
    bool equal = false;
    TestSupport::WithPlainType(type.GetKind(), [&]<class T>(std::type_identity<T>) {
        equal = *static_cast<const T*>(a) == *static_cast<const T*>(b);
    });
    return equal;
}

class Comparison {
public:
    std::vector<std::string> differences;

    void Compare(const Any* a, const Any* b, const std::string& path) {
        if (a == nullptr || b == nullptr || typeid(*a) != typeid(*b)) {
            Expect(a == b, path);
        } else if (const auto* object = dynamic_cast<const Tavik::DataObject*>(a)) {
            CompareObjects(*object, static_cast<const Tavik::DataObject&>(*b), path);
        } else if (const auto* array = dynamic_cast<const Tavik::ArrayBase*>(a)) {
            CompareArrays(*array, static_cast<const Tavik::ArrayBase&>(*b), path);
        } else if (const auto* reference = dynamic_cast<const Tavik::MoRef*>(a)) {
            const auto& other = static_cast<const Tavik::MoRef&>(*b);
            Expect(
                reference->GetId() == other.GetId() && &reference->GetTypeInfo() == &other.GetTypeInfo(),
                path);
        } else {
            ComparePlain(
                *a->_GetType(), static_cast<const Tavik::PrimitiveBase&>(*a)._GetValuePointer(),
                static_cast<const Tavik::PrimitiveBase&>(*b)._GetValuePointer(), path);
        }
    }

private:
    void Expect(bool equal, const std::string& path) {
        if (!equal) {
            differences.push_back(path);
        }
    }

    void ComparePlain(const Tavik::Type& type, const void* a, const void* b, const std::string& path) {
        Expect(a != nullptr && b != nullptr ? ArePlainEqual(type, a, b) : a == b, path);
    }

    void CompareObjects(const Tavik::DataObject& a, const Tavik::DataObject& b, const std::string& path) {
        const Tavik::DataObjectType& type = *a._GetDataType();
        if (type.IsOpen()) {
            // Only the objects themselves know what they carry.
            Tavik::PropertyDiffSet carried;
            a._DiffProperties(&b, path, carried);
            differences.insert(differences.end(), carried.begin(), carried.end());
            EXPECT_EQ(a._IsEqual(&b, false), carried.IsEmpty());
            return;
        }
        for (const Tavik::Property* property : type.GetProperties()) {
            const std::string place = path + '.' + property->GetName();
            if (property->IsCounted()) {
                Compare(property->GetCounted(&a), property->GetCounted(&b), place);
            } else {
                ComparePlain(
                    *property->GetType(), property->GetFieldPointer(&a), property->GetFieldPointer(&b),
                    place);
            }
        }
    }

    void CompareArrays(const Tavik::ArrayBase& a, const Tavik::ArrayBase& b, const std::string& path) {
        const Tavik::Type& type = *a._GetElementType();
        for (std::size_t i = 0; i < std::max(a.GetLength(), b.GetLength()); ++i) {
            const std::string place = path + '[' + std::to_string(i) + ']';
            const void* elementA = i < a.GetLength() ? GetElement(a, i) : nullptr;
            const void* elementB = i < b.GetLength() ? GetElement(b, i) : nullptr;
            if (HoldsCounted(type)) {
                Compare(static_cast<const Any*>(elementA), static_cast<const Any*>(elementB), place);
            } else {
                ComparePlain(type, elementA, elementB, place);
            }
        }
    }
};

void VisitParts(const Any& value, const std::function<void(const Any&)>& visit) {
    if (dynamic_cast<const Tavik::Primitive<bool>*>(&value) == nullptr) { // there are two, for all
        visit(value);
    }
    if (const auto* object = dynamic_cast<const Tavik::DataObject*>(&value)) {
        for (const Tavik::Property* property : object->_GetDataType()->GetProperties()) {
            if (property->IsCounted() && property->IsSet(object)) {
                VisitParts(*property->GetCounted(object), visit);
            }
        }
    } else if (const auto* array = dynamic_cast<const Tavik::ArrayBase*>(&value)) {
        for (std::size_t i = 0; HoldsCounted(*array->_GetElementType()) && i < array->GetLength(); ++i) {
            VisitParts(*static_cast<const Any*>(GetElement(*array, i)), visit);
        }
    }
}

/// Gives a plain value another one; false when its type has one only.
template <class T>
bool ChangePlain(T& value, const Tavik::Type& type) {
    if constexpr (std::is_same_v<T, bool>) {
        value = !value;
    } else if constexpr (std::is_floating_point_v<T>) {
        value = value == 0 ? T{1} : -value;
    } else if constexpr (std::is_integral_v<T>) {
        if (const auto* enumeration = dynamic_cast<const Tavik::EnumType*>(&type)) {
            const auto count = static_cast<T>(enumeration->GetTags().size());
            value = static_cast<T>((value + 1) % count);
            return count > 1;
        }
        value = static_cast<T>(value ^ 1);
    } else if constexpr (std::is_same_v<T, Pellum::System::DateTime>) {
        value = Pellum::System::DateTime::FromUtcTime(value.GetUtcTime() + 1);
    } else if constexpr (std::is_same_v<T, std::string> || std::is_same_v<T, std::vector<std::uint8_t>>) {
        value.push_back('x');
    } else {
        value = T(value.GetText() + 'x');
    }
    return true;
}

/// Calls `store` with the address of a changed copy of a plain value, if there is one.
bool StoreChanged(
    const Tavik::Type& type, const void* plain, const std::function<void(const void* changed)>& store) {
    bool hasChanged = false;
    TestSupport::WithPlainType(type.GetKind(), [&]<class T>(std::type_identity<T>) {
        T copy = *static_cast<const T*>(plain);
        hasChanged = ChangePlain(copy, type);
        if (hasChanged) {
            store(&copy);
        }
    });
    return hasChanged;
}

/// Appends an element of the array to it again: a copy, because elements move when the array grows.
void AppendCopy(Tavik::ScalarArrayBase& array, const Tavik::Type& type, const void* element) {
    if (HoldsCounted(type)) {
        array._Append(element);
        return;
    }
    TestSupport::WithPlainType(type.GetKind(), [&]<class T>(std::type_identity<T>) {
        const T copy = *static_cast<const T*>(element);
        // Or the compiler guesses at arrays of larger elements and warns of them.
        const void* volatile place = &copy;
        array._Append(place);
    });
}

} // namespace

Ref<Tavik::DataObject> Clone(const Tavik::DataObject& object) {
    return Ref<Tavik::DataObject>(dynamic_cast<Tavik::DataObject*>(object._Clone()));
}

std::vector<std::string> FindDifferences(const Any* a, const Any* b) {
    Comparison comparison;
    comparison.Compare(a, b, "");
    return comparison.differences;
}

std::set<const Any*> CollectParts(const Any& value) {
    std::set<const Any*> parts;
    VisitParts(value, [&](const Any& part) { parts.insert(&part); });
    return parts;
}

std::vector<Tavik::DataObject*> CollectObjects(Tavik::DataObject& object) {
    std::vector<Tavik::DataObject*> objects;
    VisitParts(object, [&](const Any& part) {
        if (auto* found = dynamic_cast<Tavik::DataObject*>(const_cast<Any*>(&part))) {
            objects.push_back(found);
        }
    });
    return objects;
}

int MarkSecrets(Tavik::DataObject& object) {
    int count = 0;
    for (Tavik::DataObject* part : CollectObjects(object)) {
        for (const Tavik::Property* property : part->_GetDataType()->GetProperties()) {
            if ((property->GetFlags() & Tavik::kSecretFlag) != 0) {
                EXPECT_EQ(property->GetType()->GetKind(), TypeKind::String) << property->GetName();
                const std::string text = std::string(kSecretMark) + std::to_string(++count);
                property->Set(part, &text);
            }
        }
    }
    return count;
}

std::optional<Change> Changer::ChangeProperty(Tavik::DataObject& object, const Tavik::Property& property) {
    const std::string path = std::string(".") + property.GetName();
    if (!property.IsSet(&object)) {
        m_random.SetRandom(object, property);
        return Change{Change::Set, path};
    }
    if (property.IsOptional() && Draw(4)) {
        property.Reset(&object);
        return Change{Change::Unset, path};
    }
    if (!property.IsCounted()) {
        const bool hasChanged =
            StoreChanged(*property.GetType(), property.GetFieldPointer(&object), [&](const void* changed) {
                property.Set(&object, changed);
            });
        return hasChanged ? std::optional(Change{Change::Replaced, path}) : std::nullopt;
    }
    if (auto outcome = ChangeValue(const_cast<Any&>(*property.GetCounted(&object)))) {
        property.Set(&object, outcome->value.Get());
        return Change{outcome->change.kind, path + outcome->change.path};
    }
    if (property.IsOptional()) {
        property.Reset(&object);
        return Change{Change::Unset, path};
    }
    property.Set(&object, nullptr);
    return Change{Change::Replaced, path};
}

std::optional<Changer::Outcome> Changer::ChangeValue(Any& value) {
    const auto inPlace = [&](const std::optional<Change>& change) {
        return change ? std::optional(Outcome{*change, Ref<Any>(&value)}) : std::nullopt;
    };
    if (auto* object = dynamic_cast<Tavik::DataObject*>(&value)) {
        return inPlace(ChangeObject(*object));
    }
    if (dynamic_cast<Tavik::ArrayBase*>(&value) != nullptr) {
        return inPlace(ChangeArray(value));
    }
    Ref<Any> changed;
    if (const auto* reference = dynamic_cast<const Tavik::MoRef*>(&value)) {
        changed = new Tavik::MoRef(&reference->GetTypeInfo(), reference->GetId() + 'x');
    } else {
        const Tavik::Type& type = *value._GetType();
        StoreChanged(
            type, dynamic_cast<const Tavik::PrimitiveBase&>(value)._GetValuePointer(),
            [&](const void* plain) { changed = type.Box(plain); });
    }
    return changed ? std::optional(Outcome{{Change::Replaced, ""}, changed}) : std::nullopt;
}

std::optional<Change> Changer::ChangeObject(Tavik::DataObject& object) {
    if (object._GetDataType()->IsOpen()) {
        return std::nullopt;
    }
    const auto& properties = object._GetDataType()->GetProperties();
    const std::size_t first = m_engine();
    for (std::size_t i = 0; i < properties.size(); ++i) {
        if (auto change = ChangeProperty(object, *properties[(first + i) % properties.size()])) {
            return change;
        }
    }
    return std::nullopt;
}

std::optional<Change> Changer::ChangeArray(Any& value) {
    auto& array = dynamic_cast<Tavik::ArrayBase&>(value);
    const Tavik::Type& type = *array._GetElementType();
    const std::size_t index = m_engine() % array.GetLength();
    const std::string place = '[' + std::to_string(index) + ']';
    const void* element = GetElement(array, index);
    auto* objects = dynamic_cast<Tavik::DataArrayBase*>(&value);
    auto* scalars = dynamic_cast<Tavik::ScalarArrayBase*>(&value);
    if (!Draw(3)) {
        if (objects != nullptr) {
            if (const auto change = ChangeObject(*objects->GetElement(index))) {
                return Change{change->kind, place + change->path};
            }
        } else if (!HoldsCounted(type)) {
            const bool hasChanged = StoreChanged(type, element, [&](const void* changed) {
                TestSupport::WithPlainType(type.GetKind(), [&]<class T>(std::type_identity<T>) {
                    *static_cast<T*>(const_cast<void*>(element)) = *static_cast<const T*>(changed);
                });
            });
            if (hasChanged) {
                return Change{Change::Replaced, place};
            }
        } else if (auto* references = dynamic_cast<Tavik::Array<Ref<Tavik::MoRef>>*>(&value)) {
            const auto outcome = ChangeValue(*(*references)[index]);
            (*references)[index] = dynamic_cast<Tavik::MoRef*>(outcome->value.Get());
            return Change{Change::Replaced, place};
        }
    }
    // One element more, equal to another one.
    const std::string end = '[' + std::to_string(array.GetLength()) + ']';
    if (objects != nullptr) {
        const Ref<Tavik::Any> copy(objects->GetElement(index)->_Clone());
        objects->AppendChecked(copy.Get());
    } else {
        AppendCopy(*scalars, type, element);
    }
    return Change{Change::Replaced, end};
}

} // namespace CatalogueTests
