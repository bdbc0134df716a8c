#include "tavik/type/builtin_types.h"

#include "pellum/object/block_cache.h"
#include "tavik/descriptor/builtin.h"
#include "tavik/fault/method_fault.h"
#include "tavik/fault/runtime_faults.h"
#include "tavik/property_collector_stub.h"
#include "tavik/type/data_object_type.h"
#include "tavik/type/managed_object_type.h"
#include "tavik/type/type_of.h"
#include "tavik/value/data_array.h"
#include "tavik/value/primitive.h"
#include "tavik/value/scalar_array.h"

#include <algorithm>
#include <new>

namespace Tavik {

namespace {

using Orlin::Fault::InvalidArgument;
using Orlin::Fault::InvalidRequest;
using Orlin::Fault::ManagedObjectNotFound;
using Orlin::Fault::SystemError;
using Orlin::Query::PropertyCollector;

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

Type* MakeAny() {
    return new AnyType(gAnyTypeInfo);
}

bool IsAlwaysSet(const Any* /*object*/, int /*index*/) {
    return true;
}

template <class T>
DataObject* Create() {
    void* storage = Pellum::AllocateZeroedBlock(sizeof(T));
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
constexpr DataTypeInfo kInvalidArgument =
    DescribeData<InvalidArgument>(Orlin::gOrlinFaultInvalidArgumentTypeInfo, &gOrlinRuntimeFaultTypeInfo);
constexpr DataTypeInfo kInvalidRequest =
    DescribeData<InvalidRequest>(Orlin::gOrlinFaultInvalidRequestTypeInfo, &gOrlinRuntimeFaultTypeInfo);
constexpr DataTypeInfo kManagedObjectNotFound = DescribeData<ManagedObjectNotFound>(
    Orlin::gOrlinFaultManagedObjectNotFoundTypeInfo, &gOrlinRuntimeFaultTypeInfo);
constexpr DataTypeInfo kSystemError =
    DescribeData<SystemError>(Orlin::gOrlinFaultSystemErrorTypeInfo, &gOrlinRuntimeFaultTypeInfo);

constexpr ManagedTypeInfo DescribeManaged(
    const TypeInfo& type, const TypeInfo* base, DispatchFunction dispatch, StubFactoryFunction createStub) {
    return {&type, base, kNoProperties, kNoMethods, nullptr, dispatch, createStub, nullptr};
}

/// There is nothing to call: looks at the target, like other dispatch functions.
void DispatchPropertyCollector(
    ManagedObject* target, int /*index*/, Arguments& /*arguments*/, Pellum::Ref<Any>& /*result*/) {
    if (target != nullptr && dynamic_cast<PropertyCollector*>(target) == nullptr) {
        Pellum::ThrowTypeMismatchException(typeid(PropertyCollector), typeid(*target));
    }
}

ManagedObject* CreatePropertyCollectorStub(MoRef* reference, StubAdapter* adapter, RequestContext* context) {
    return new (std::nothrow) Orlin::Query::PropertyCollectorStub(reference, adapter, context);
}

constexpr ManagedTypeInfo kManagedObject =
    DescribeManaged(gOrlinManagedObjectTypeInfo, nullptr, nullptr, nullptr);
constexpr ManagedTypeInfo kPropertyCollector = DescribeManaged(
    Orlin::gOrlinQueryPropertyCollectorTypeInfo, &gOrlinManagedObjectTypeInfo, &DispatchPropertyCollector,
    &CreatePropertyCollectorStub);

template <class T, const TypeInfo& info>
Type* MakeScalar() {
    return new ScalarType<T>(info);
}

template <const DataTypeInfo& info>
Type* MakeData() {
    return CreateDataObjectType(&info);
}

template <class T, const DataTypeInfo& info, int httpStatus>
Type* MakeOpenFault() {
    return CreateDataObjectType(&info, {&OpenContentOf<T>, httpStatus});
}

template <const ManagedTypeInfo& info>
Type* MakeManaged() {
    return CreateManagedObjectType(&info);
}

/// Every built-in type, each base before what derives from it.
constexpr Type* (*kBuiltins[])() = {
    &MakeScalar<bool, gBoolTypeInfo>,
    &MakeScalar<signed char, gByteTypeInfo>,
    &MakeScalar<std::int32_t, gIntTypeInfo>,
    &MakeScalar<std::int64_t, gLongTypeInfo>,
    &MakeScalar<float, gFloatTypeInfo>,
    &MakeScalar<std::string, gStringTypeInfo>,
    &MakeScalar<Pellum::System::DateTime, gDateTimeTypeInfo>,
    &MakeScalar<std::vector<std::uint8_t>, gBinaryTypeInfo>,
    &MakeScalar<TypeName, gTypeNameTypeInfo>,
    &MakeScalar<PropertyPath, gPropertyPathTypeInfo>,
    &MakeAny,
    &MakeData<kDynamicData>,
    &MakeData<kMethodFault>,
    &MakeData<kRuntimeFault>,
    &MakeOpenFault<InvalidArgument, kInvalidArgument, 400>,
    &MakeOpenFault<InvalidRequest, kInvalidRequest, 400>,
    &MakeOpenFault<ManagedObjectNotFound, kManagedObjectNotFound, 404>,
    &MakeOpenFault<SystemError, kSystemError, 500>,
    &MakeManaged<kManagedObject>,
    &MakeManaged<kPropertyCollector>,
};

constexpr auto kLastKind = static_cast<std::size_t>(TypeKind::Managed);

struct BuiltinTypes {
    BuiltinTypes() {
        for (const auto make : kBuiltins) {
            Type* const type = all.emplace_back(make());
            const auto kind = static_cast<std::size_t>(type->GetKind());
            firstOfKind[kind] = firstOfKind[kind] != nullptr ? firstOfKind[kind] : type;
        }
    }

    /// The type of a record that is in the list.
    Type* Find(const TypeInfo& info) const {
        return *std::find_if(
            all.begin(), all.end(), [&](const Type* type) { return &type->GetInfo() == &info; });
    }

    std::vector<Type*> all;
    Type* firstOfKind[kLastKind + 1] = {}; ///< a scalar type, or the root of a class tree
};

const BuiltinTypes& Builtins() {
    // Never destroyed, like the registry.
    static const BuiltinTypes& types = *new BuiltinTypes;
    return types;
}

template <const TypeInfo& info>
DataObjectType* FindData() {
    static auto* const type = static_cast<DataObjectType*>(Builtins().Find(info));
    return type;
}

} // namespace

const std::vector<Type*>& GetBuiltinTypes() {
    return Builtins().all;
}

Type* GetBuiltinType(TypeKind kind) {
    const bool isScalarOrRoot = kind <= TypeKind::Any || kind == TypeKind::Managed;
    return isScalarOrRoot ? Builtins().firstOfKind[static_cast<std::size_t>(kind)] : nullptr;
}

template <>
DataObjectType* GetDoType<DynamicData>() {
    return FindData<gOrlinDynamicDataTypeInfo>();
}

template <>
DataObjectType* GetDoType<MethodFault>() {
    return FindData<gOrlinMethodFaultTypeInfo>();
}

template <>
DataObjectType* GetDoType<RuntimeFault>() {
    return FindData<gOrlinRuntimeFaultTypeInfo>();
}

template <>
DataObjectType* GetDoType<InvalidArgument>() {
    return FindData<Orlin::gOrlinFaultInvalidArgumentTypeInfo>();
}

template <>
DataObjectType* GetDoType<InvalidRequest>() {
    return FindData<Orlin::gOrlinFaultInvalidRequestTypeInfo>();
}

template <>
DataObjectType* GetDoType<ManagedObjectNotFound>() {
    return FindData<Orlin::gOrlinFaultManagedObjectNotFoundTypeInfo>();
}

template <>
DataObjectType* GetDoType<SystemError>() {
    return FindData<Orlin::gOrlinFaultSystemErrorTypeInfo>();
}

template <>
ManagedObjectType* GetMoType<Orlin::Query::PropertyCollector>() {
    static auto* const type =
        static_cast<ManagedObjectType*>(Builtins().Find(Orlin::gOrlinQueryPropertyCollectorTypeInfo));
    return type;
}

} // namespace Tavik
