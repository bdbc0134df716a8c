#pragma once

#include "schemac/model/version.h"
#include "schemac/source/span.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Schemac::Model {

struct BuiltinType;
struct DataType;
struct EnumType;
struct ManagedType;
struct SourceFile;

enum class TypeKind : std::uint8_t { Builtin, Data, Fault, Enum, Managed };

/// The types that the runtime brings along: scalars first, then the roots of the class trees.
enum class BuiltinKind : std::uint8_t {
    String,
    Int,
    Long,
    Boolean,
    Byte,
    Float,
    DateTime,
    Binary,
    TypeName,
    PropertyPath,
    AnyType,
    DynamicData,
    MethodFault,
    RuntimeFault,
    ManagedObject,
};

/// What every type has. All pointers are borrowed from the module, which outlives them.
struct Type {
    Type(const Type&) = delete;
    Type& operator=(const Type&) = delete;
    virtual ~Type() = default;

    const TypeKind kind;
    std::string name;                   ///< last component: "LiveComputerLocation"
    std::string dottedName;             ///< "morvane.ComputerSpec.LiveComputerLocation"
    std::string wireName;               ///< name in the serialised form
    std::vector<std::string> classPath; ///< {"Morvane", "ComputerSpec", "LiveComputerLocation"}
    std::string doc;                    ///< text of the `///` lines, one line each, without the slashes
    const Version* version = nullptr;   ///< version that introduced the type
    const Type* enclosing = nullptr;    ///< the type that this one is nested in, null at top level
    const SourceFile* file = nullptr;   ///< null for a built-in type
    std::vector<const Type*> nested;    ///< base before derived, else as written
    bool isImported = false;            ///< described by another library
    Span span;                          ///< the declared name

    /// The outermost type around this one; the type itself at top level.
    const Type& TopLevel() const;

    bool IsNested() const { return enclosing != nullptr; }

    bool IsBuiltin() const { return kind == TypeKind::Builtin; }

    /// Data or fault type of a schema, so that AsData gives it.
    bool IsDataOrFault() const { return kind == TypeKind::Data || kind == TypeKind::Fault; }

    /// A built-in number, boolean, text, time or the like: not an object, and not anyType.
    bool IsScalar() const;
    /// A managed object, of a schema or the runtime's root: properties of it hold a reference.
    bool IsManaged() const;
    /// This very built-in type.
    bool Is(BuiltinKind builtin) const;

    /// What a data, fault or managed type derives from; null for an enumeration or a built-in type.
    const Type* Base() const;

    /// This type as the more special one, null when it is not of that kind.
    const BuiltinType* AsBuiltin() const;
    const DataType* AsData() const;
    const EnumType* AsEnum() const;
    const ManagedType* AsManaged() const;

protected:
    explicit Type(TypeKind typeKind) : kind(typeKind) {}
};

struct BuiltinType final : Type {
    explicit BuiltinType(BuiltinKind builtinKind) : Type(TypeKind::Builtin), builtin(builtinKind) {}

    const BuiltinKind builtin;
};

/// A property, a parameter, or the result of a method: the three are described by one record.
struct Property {
    std::string name;           ///< wire name; "result" for a method's result
    const Type* type = nullptr; ///< element type; null for the result of a method without one
    bool isArray = false;
    bool isOptional = false;
    bool isSecret = false;
    const Version* version = nullptr; ///< own version, or the one taken over from the type or method
    std::string doc;
    Span span; ///< the declared name

    /// True when the value is a reference to a managed object (or an array of them).
    bool IsReference() const { return type != nullptr && type->IsManaged(); }
};

/// A data object type or a fault type.
struct DataType final : Type {
    /// `typeKind` is Data or Fault.
    explicit DataType(TypeKind typeKind) : Type(typeKind) {}

    /// A data or fault type, or one of the built-in roots. Never null once resolved.
    const Type* base = nullptr;
    std::vector<Property> properties; ///< own properties, in written order
    bool isOpen = false;              ///< contents are not described here
    int httpStatus = 0; ///< of a fault: that of the response which carries it; 0 for that of the base

    bool IsFault() const { return kind == TypeKind::Fault; }

    /// Whether objects carry open content that the base has no place for.
    bool AddsOpenContent() const;
};

struct EnumTag {
    std::string name; ///< as in the serialised form
    std::string doc;
    Span span;
};

struct EnumType final : Type {
    EnumType() : Type(TypeKind::Enum) {}

    std::vector<EnumTag> tags; ///< in written order; the position is the value
};

struct Method {
    std::string name;                 ///< "login"
    std::string wireName;             ///< "MorvaneLogin"
    std::string privilege;            ///< empty when none is declared
    const Version* version = nullptr; ///< own version, or the type's
    Property result;                  ///< type is null for a method without result
    std::vector<Property> parameters;
    std::vector<const Type*> faults; ///< declared faults (schema types or a built-in root), in written order
    bool isLongRunning = false;
    bool carriesCredentials = false;
    std::string doc;
    Span span; ///< the declared name

    bool HasResult() const { return result.type != nullptr; }
};

struct ManagedType final : Type {
    ManagedType() : Type(TypeKind::Managed) {}

    /// A managed type, or the built-in root. Never null once resolved.
    const Type* base = nullptr;
    std::vector<Property> properties; ///< own properties, in written order
    std::vector<Method> methods;      ///< own methods, in written order
};

} // namespace Schemac::Model
