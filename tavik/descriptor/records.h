#pragma once

#include "pellum/object/ref.h"

#include <cstddef>
#include <cstdint>
#include <vector>

/// The records by which a type library describes its types to the runtime.
///
/// They are a binary format: plain structs in constant storage, read field by field. Where pointers are 32
/// bits wide the sizes and offsets are exactly those that `layout.h` asserts; on wider hosts the order is the
/// same and the widths are natural. Every pointer is borrowed from the describing library, which is never
/// unloaded.
namespace Tavik {

class Any;
class DataArrayBase;
class DataObject;
class InternalVersion;
class ManagedMethod;
class ManagedObject;
class MoRef;
class NamespaceId;
class OfficialVersion;
class RequestContext;
class StubAdapter;

/// What a type is. The values below `Enum` are the runtime's own built-in types.
enum class TypeKind : std::uint32_t {
    Boolean = 0x01,
    Byte = 0x02,
    Int = 0x03,
    Long = 0x04,
    Float = 0x05,
    String = 0x06,
    DateTime = 0x07,
    Binary = 0x08,
    TypeName = 0x09,
    PropertyPath = 0x0A,
    Any = 0x0B,
    Array = 0x0E,
    Enum = 0x0F,
    Data = 0x10,
    Fault = 0x11,
    Managed = 0x12,
};

/// Bits of `PropertyDescriptor::flags`.
enum PropertyFlags : std::uint32_t {
    kArrayFlag = 0x1,    ///< multi-valued
    kOptionalFlag = 0x2, ///< may be unset
    kManagedFlag = 0x4,  ///< on every property of a managed type and on nothing else
    kSecretFlag = 0x200, ///< a password, key or similar: never shown or logged
};

/// Identity of one type. Programs may have a copy of a library's record, which the linker makes where code of
/// theirs names one; its texts are the library's.
struct TypeInfo {
    TypeKind kind;
    const char* name;     ///< dotted name, "morvane.ComputerSpec.LiveComputerLocation"
    const char* wireName; ///< name in messages, "MorvaneComputerSpecLiveComputerLocation"
    const char* version;  ///< name of the API version that introduced the type
};

/// Whether two records may be of one type: the same one, or a library's own and a program's copy of it. So
/// may those of two types in one program that have all of that in common, whose texts the linker has merged.
constexpr bool MayBeSameType(const TypeInfo& a, const TypeInfo& b) {
    return a.kind == b.kind && a.name == b.name && a.wireName == b.wireName && a.version == b.version;
}

/// One property, method parameter or method result. Lists end with a row whose name is null.
struct PropertyDescriptor {
    const TypeInfo* type; ///< the element type; null for a method without result
    std::uint32_t flags;  ///< `PropertyFlags`
    const char* name;
    std::uint32_t reserved; ///< always zero
    const char* version;    ///< name of the API version that introduced the property

    constexpr bool IsArray() const { return (flags & kArrayFlag) != 0; }

    constexpr bool IsOptional() const { return (flags & kOptionalFlag) != 0; }

    constexpr bool IsSecret() const { return (flags & kSecretFlag) != 0; }
};

/// The field functions of a data type. `index` counts the type's own properties from 0; an index that is none
/// of them is a fail-fast trap in all but `IsSetFunction`. The object is always of the described class or
/// derived from it. A value is passed as the address of the property's plain type (`std::string`,
/// `std::int32_t`, `bool`, ...), and for enumerations as the address of the 32-bit number.

/// Copies the value to `*out` and returns `out`. References are copied counted into a `Pellum::Ref`. An unset
/// optional string must not be read.
using GetFunction = void* (*)(const Any* object, int index, void* out);
/// Borrowed address of the value; for a reference, array or optional string the held pointer itself. Null
/// when unset.
using FieldPointerFunction = const void* (*)(const Any* object, int index);
/// Assigns from `*in`; for a reference or array `in` is the `Any*` itself, of which a count is taken. Throws
/// `Pellum::TypeMismatchException`, with nothing changed, when that object is not of the property's class.
using SetFunction = void (*)(Any* object, int index, const void* in);
/// Exchanges the property with `*other`, which has the property's storage form (`Pellum::Optional<T>`,
/// `Pellum::Ref<T>`).
using SwapFunction = void (*)(Any* object, int index, void* other);
/// Whether the property holds a value; true for what can not be unset and for an index out of range.
using IsSetFunction = bool (*)(const Any* object, int index);
/// Makes an optional property unset; a fail-fast trap for a required one.
using ResetFunction = void (*)(Any* object, int index);
/// A new object of the type, zero-filled and default-constructed, created with no count; null when out of
/// memory.
using CreateFunction = DataObject* (*)();
/// A new empty array of the type, created with no count; null when out of memory.
using CreateArrayFunction = DataArrayBase* (*)();

/// One data object or fault type.
struct DataTypeInfo {
    const TypeInfo* type;
    const TypeInfo* base;
    const PropertyDescriptor* properties; ///< own properties only; may be an empty list
    GetFunction get;                      ///< null, like the next three and `reset`, without own properties
    FieldPointerFunction fieldPointer;
    SetFunction set;
    SwapFunction swap;
    IsSetFunction isSet;
    ResetFunction reset; ///< null without an optional property
    CreateFunction create;
    CreateArrayFunction createArray;
    std::uint32_t reserved; ///< always zero
};

/// One enumeration. The position of a tag in the list is its integer value.
struct EnumTypeInfo {
    const TypeInfo* type;
    const char* const* values; ///< tags in declared order, null-terminated
};

/// One method of a managed type. Tables end with a row whose name is null.
struct MethodDescriptor {
    const char* name;
    const char* wireName;
    const char* privilege; ///< privilege needed to call the method, null when none is declared
    std::uint32_t reserved0;
    PropertyDescriptor result; ///< named "result"; its type is null for a method without result
    const PropertyDescriptor* parameters;
    const TypeInfo* const* faults; ///< declared faults, null-terminated
    const char* version;
    std::uint32_t reserved1;
    std::uint8_t reserved2;
    std::uint8_t longRunning; ///< 1 on the long-running conversion methods
    std::uint8_t credentials; ///< 1 on the methods that carry credentials or register peers
    std::uint8_t reserved3;
};

/// Index of the property of that name, inherited properties first; -1 when there is none.
using PropertyIndexFunction = int (*)(const char* name, std::size_t length);
/// Calls method `index` (methods first, then property getters) of a server object.
using DispatchFunction = void (*)(
    ManagedObject* target, int index, std::vector<Pellum::Ref<Any>>& arguments, Pellum::Ref<Any>& result);
/// A new client stub, created with no count; null when out of memory.
using StubFactoryFunction =
    ManagedObject* (*)(MoRef* reference, StubAdapter* adapter, RequestContext* context);

/// One managed object type.
struct ManagedTypeInfo {
    const TypeInfo* type;
    const TypeInfo* base;
    const PropertyDescriptor* properties;
    const MethodDescriptor* methods;
    PropertyIndexFunction propertyIndex; ///< null for a type without properties
    DispatchFunction dispatch;
    StubFactoryFunction createStub;
    ManagedMethod** methodObjects; ///< one per own method, then one per own property; filled by the runtime
};

/// One API version.
struct VersionRecord {
    const char* name;          ///< "morvane.version.version2"
    const char* namespaceName; ///< "morvane"
    const char* label;         ///< "2.0"
    std::uint32_t reserved0;
    const char* taskType; ///< dotted name of the namespace's task type
    const char* taskNamespace;
    std::uint32_t reserved1;
    std::uint32_t flags; ///< `VersionFlags`
};

/// Bits of `VersionRecord::flags`.
enum VersionFlags : std::uint32_t {
    kFirstVersionFlag = 0x2,
    kOfficialVersionFlag = 0x4,
};

/// `version` includes all of `included`.
struct VersionInclusion {
    const char* version;
    const char* included;
};

/// The versions of one namespace and how they include each other.
struct OrlinVersions {
    const char* namespaceName = nullptr;
    NamespaceId* namespaceId = nullptr;        ///< filled by the runtime
    const char* const* dependencies = nullptr; ///< namespaces that the inclusions refer to
    std::uint32_t reserved0 = 0;
    const VersionRecord* versions = nullptr; ///< newest first
    const VersionInclusion* inclusions = nullptr;
    const OfficialVersion** officialVersions = nullptr; ///< `officialCount` entries, filled by the runtime
    const InternalVersion** internalVersions = nullptr; ///< `versionCount` entries, filled by the runtime
    const OfficialVersion** releaseCandidateVersion = nullptr; ///< one entry, filled by the runtime
    std::uint32_t versionCount = 0;
    std::uint32_t officialCount = 0;
    std::uint32_t inclusionCount = 0;
    std::uint32_t dependencyCount = 0;
    std::uint32_t reserved1 = 0;
    std::uint32_t reserved2 = 0;
    std::uint32_t index0 = 0;
    std::uint32_t index1 = 0;
    std::uint32_t reserved3 = 0;
};

} // namespace Tavik
