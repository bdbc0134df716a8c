#include "tavik/codec/json/json.h"
#include "tavik/managed/managed_method.h"
#include "tavik/type/type_registry.h"
#include "tavik/value/mo_ref.h"
#include "tavik/value/validate.h"
#include "tests/catalogue/catalogue.h"
#include "tests/catalogue/document.h"

#include <gmock/gmock.h>

/// Every managed type: its methods and how its properties are found by name.
namespace {

using namespace CatalogueTests;
using Tavik::ManagedMethod;
using Tavik::ManagedObjectType;
using Tavik::PropertyDescriptor;

void ForEachManagedType(const std::function<void(const ManagedObjectType&)>& check) {
    for (const ManagedObjectType* type : GetManagedTypes()) {
        SCOPED_TRACE(type->GetName());
        check(*type);
    }
}

/// The names of a type's properties, inherited ones first.
std::vector<std::string> GetPropertyNames(const ManagedObjectType& type) {
    std::vector<std::string> names;
    const Tavik::Type* base = Tavik::TypeRegistry::Instance().FindByInfo(type.GetManagedTypeInfo().base);
    if (const auto* managed = dynamic_cast<const ManagedObjectType*>(base)) {
        names = GetPropertyNames(*managed);
    }
    const PropertyDescriptor* row = type.GetManagedTypeInfo().properties;
    for (; row != nullptr && row->name != nullptr; ++row) {
        names.emplace_back(row->name);
    }
    return names;
}

template <class Row>
std::size_t CountRows(const Row* rows) {
    std::size_t count = 0;
    while (rows != nullptr && rows[count].name != nullptr) {
        ++count;
    }
    return count;
}

TEST(CatalogueManagedTypes, FindPropertiesByName) {
    std::size_t without = 0;
    ForEachManagedType([&](const ManagedObjectType& type) {
        const auto find = type.GetManagedTypeInfo().propertyIndex;
        const std::vector<std::string> names = GetPropertyNames(type);
        ASSERT_EQ(find == nullptr, names.empty());
        if (find == nullptr) {
            ++without;
            return;
        }
        for (const std::string& name : names) {
            // Of two declarations of one name the most derived one counts.
            const auto last = std::find(names.rbegin(), names.rend(), name).base() - 1;
            EXPECT_EQ(find(name.data(), name.size()), last - names.begin()) << name;
            // The name need not end where it is stored.
            const std::string longer = name + "Info";
            EXPECT_EQ(find(longer.data(), name.size()), last - names.begin()) << name;
            const std::string upper = static_cast<char>(name[0] - 'a' + 'A') + name.substr(1);
            const std::string shorter = name.substr(0, name.size() - 1);
            for (const std::string& unknown :
                 {longer, shorter, name.substr(1), name + '\0', upper, std::string()}) {
                const bool isKnown = std::find(names.begin(), names.end(), unknown) != names.end();
                EXPECT_EQ(find(unknown.data(), unknown.size()) != -1, isKnown) << unknown;
            }
        }
    });
    EXPECT_GE(without, 10U);
}

TEST(CatalogueManagedTypes, HaveAMethodObjectForEveryMethodAndProperty) {
    ForEachManagedType([](const ManagedObjectType& type) {
        const Tavik::ManagedTypeInfo& record = type.GetManagedTypeInfo();
        const std::size_t methods = CountRows(record.methods);
        const std::size_t properties = CountRows(record.properties);
        ASSERT_EQ(type.GetMethodObjects().size(), methods + properties);
        EXPECT_EQ(type.GetOwnMethodCount(), methods);
        for (std::size_t i = 0; i < methods + properties; ++i) {
            const ManagedMethod& object = *type.GetMethodObjects()[i];
            const bool isGetter = i >= methods;
            EXPECT_EQ(record.methodObjects[i], &object);
            EXPECT_EQ(object.GetIndex(), static_cast<int>(i));
            EXPECT_EQ(&object.GetOwner(), &type);
            EXPECT_EQ(object.IsPropertyGetter(), isGetter);
            EXPECT_EQ(object.GetMethodDescriptor(), isGetter ? nullptr : record.methods + i);
            EXPECT_EQ(object.GetPropertyDescriptor(), isGetter ? record.properties + (i - methods) : nullptr);
            EXPECT_EQ(
                object.GetName(),
                std::string(isGetter ? record.properties[i - methods].name : record.methods[i].name));
        }
    });
}

TEST(CatalogueManagedTypes, AreReferredToByVersionsThatHaveThem) {
    std::size_t refused = 0;
    ForEachManagedType([&](const ManagedObjectType& type) {
        const Pellum::Ref<Tavik::Any> reference(new Tavik::MoRef(&type.GetInfo(), "r-1"));
        const std::string text = "{\"mo\": " + Quoted(type.GetWireName()) + ", \"id\": \"r-1\"}";
        EXPECT_TRUE(Tavik::Json::Decode(text)->_IsEqual(reference.Get(), false));
        for (std::size_t number = 0; number < kVersionCount; ++number) {
            SCOPED_TRACE(GetVersion(number).GetName());
            Tavik::Json::EncodeOptions encode;
            encode.version = &GetVersion(number);
            Tavik::Json::DecodeOptions decode;
            decode.version = encode.version;
            if (Has(number, type.GetInfo().version)) {
                EXPECT_EQ(Tavik::Json::Encode(reference.Get(), encode), text);
                EXPECT_NO_THROW(Tavik::Json::Decode(text, decode));
                EXPECT_THAT(Tavik::Validate(reference.Get(), encode.version), testing::IsEmpty());
                continue;
            }
            ++refused;
            EXPECT_THROW(Tavik::Json::Encode(reference.Get(), encode), Tavik::Json::EncodeError);
            EXPECT_THROW(Tavik::Json::Decode(text, decode), Tavik::Json::DecodeError);
            EXPECT_EQ(Tavik::Validate(reference.Get(), encode.version).size(), 1U);
        }
    });
    EXPECT_GT(refused, 10U);
}

} // namespace
