#include "tavik/type/builtin_types.h"

#include "tavik/descriptor/builtin.h"
#include "tavik/fault/method_fault.h"
#include "tavik/type/data_object_type.h"
#include "tavik/type/managed_object_type.h"
#include "tavik/type/type_of.h"
#include "tavik/value/data_array.h"
#include "tavik/value/primitive.h"
#include "tavik/value/scalar_array.h"

#include <new>

namespace Tavik {

namespace {

template <class T>
class ScalarType final : public Type {
public:
    explicit ScalarType(const TypeInfo& info) : Type(&info) {}

    ArrayBase* NewArray() const override {
        if constexpr (std::is_same_v<T, bool>) {
            return nullptr;
        } else {
            return new (std::nothrow) Array<T>;
        }
    }

    Any* Box(const void* value) const override {
        const T& plain = *static_cast<const T*>(value);
        if constexpr (std::is_same_v<T, bool>) {
            return Primitive<bool>::Factory::Get(plain);
        } else {
            return new Primitive<T>(plain);
        }
    }
};

class AnyType final : public Type {
public:
    explicit AnyType(const TypeInfo& info) : Type(&info) {}

    ArrayBase* NewArray() const override { return new (std::nothrow) Array<Pellum::Ref<Any>>; }
};

bool IsAlwaysSet(const Any* /*object*/, int /*index*/) {
    return true;
}

template <class T>
DataObject* Create() {
    void* storage = AllocateZeroed(sizeof(T));
    return storage == nullptr ? nullptr : KeepStorage(::new (storage) T);
}

template <class T>
DataArrayBase* CreateArray() {
    return new (std::nothrow) DataArray<T>;
}

constexpr PropertyDescriptor kNoProperties[] = {{}};
constexpr MethodDescriptor kNoMethods[] = {{}};

/// The record of a built-in data type, none of which has properties.
template <class T>
constexpr DataTypeInfo DescribeData(const TypeInfo& type, const TypeInfo* base) {
    return {&type,   base,         kNoProperties, nullptr,    nullptr,         nullptr,
            nullptr, &IsAlwaysSet, nullptr,       &Create<T>, &CreateArray<T>, 0};
}

constexpr DataTypeInfo kDynamicData = DescribeData<DynamicData>(gOrlinDynamicDataTypeInfo, nullptr);
constexpr DataTypeInfo kMethodFault =
    DescribeData<MethodFault>(gOrlinMethodFaultTypeInfo, &gOrlinDynamicDataTypeInfo);
constexpr DataTypeInfo kRuntimeFault =
    DescribeData<RuntimeFault>(gOrlinRuntimeFaultTypeInfo, &gOrlinMethodFaultTypeInfo);
constexpr ManagedTypeInfo kManagedObject = {
    &gOrlinManagedObjectTypeInfo, nullptr, kNoProperties, kNoMethods, nullptr, nullptr, nullptr, nullptr};

struct BuiltinTypes {
    ScalarType<bool> boolean{gBoolTypeInfo};
    ScalarType<signed char> byte{gByteTypeInfo};
    ScalarType<std::int32_t> int32{gIntTypeInfo};
    ScalarType<std::int64_t> int64{gLongTypeInfo};
    ScalarType<float> float32{gFloatTypeInfo};
    ScalarType<std::string> string{gStringTypeInfo};
    ScalarType<Pellum::System::DateTime> dateTime{gDateTimeTypeInfo};
    ScalarType<std::vector<std::uint8_t>> binary{gBinaryTypeInfo};
    ScalarType<TypeName> typeName{gTypeNameTypeInfo};
    ScalarType<PropertyPath> propertyPath{gPropertyPathTypeInfo};
    AnyType any{gAnyTypeInfo};
    DataObjectType dynamicData{&kDynamicData};
    DataObjectType methodFault{&kMethodFault};
    DataObjectType runtimeFault{&kRuntimeFault};
    ManagedObjectType managedObject{&kManagedObject};
    std::vector<Type*> all{&boolean, &byte,        &int32,       &int64,        &float32,
                           &string,  &dateTime,    &binary,      &typeName,     &propertyPath,
                           &any,     &dynamicData, &methodFault, &runtimeFault, &managedObject};
};

BuiltinTypes& Builtins() {
    // Never destroyed, like the registry.
    static BuiltinTypes& types = *new BuiltinTypes;
    return types;
}

} // namespace

const std::vector<Type*>& GetBuiltinTypes() {
    return Builtins().all;
}

Type* GetBuiltinType(TypeKind kind) {
    if (kind == TypeKind::Managed) {
        return &Builtins().managedObject;
    }
    // The scalar kinds are numbered in the order of the list, from 1.
    const auto number = static_cast<std::size_t>(kind);
    return number >= 1 && kind <= TypeKind::Any ? Builtins().all[number - 1] : nullptr;
}

template <>
DataObjectType* GetDoType<DynamicData>() {
    return &Builtins().dynamicData;
}

template <>
DataObjectType* GetDoType<MethodFault>() {
    return &Builtins().methodFault;
}

template <>
DataObjectType* GetDoType<RuntimeFault>() {
    return &Builtins().runtimeFault;
}

} // namespace Tavik
