#pragma once

#include "schemac/source/span.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// A schema file as it is written, before any name in it is looked up.
namespace Schemac::Syntax {

struct Name {
    std::string text;
    Span span;
};

/// "UserSession", "morvane.params.X" or "Zabro::Fault::NotFound".
struct QualifiedName {
    std::vector<std::string> parts;
    bool isClassPath = false; ///< written with '::'
    Span span;

    /// As written.
    std::string Text() const;
};

/// A property, a parameter, or (without name) the result of a method. A flag's span is valid when it is
/// written.
struct PropertyDecl {
    std::string doc;
    Name name;
    QualifiedName type;
    Span array;
    Span optional;
    Span secret;
    std::optional<QualifiedName> since;
};

struct MethodDecl {
    std::string doc;
    Name name;
    std::vector<PropertyDecl> parameters;
    std::optional<PropertyDecl> result;
    std::optional<Name> wire;
    std::optional<QualifiedName> since;
    std::optional<QualifiedName> resultSince;
    std::optional<Name> privilege;
    std::vector<QualifiedName> faults;
    Span longRunning; ///< valid when the clause is written
    Span credentials; ///< valid when the clause is written
};

struct TagDecl {
    std::string doc;
    Name name;
};

enum class TypeDeclKind : std::uint8_t { Data, Fault, Enum, Managed };

struct TypeDecl {
    TypeDeclKind kind = TypeDeclKind::Data;
    std::string doc;
    bool isOpen = false;
    Name name;
    std::optional<QualifiedName> base;
    std::optional<Name> wire;           ///< always there in a file without errors
    std::optional<QualifiedName> since; ///< always there in a file without errors
    std::optional<Name> httpStatus;     ///< digits
    std::vector<PropertyDecl> properties;
    std::vector<MethodDecl> methods;
    std::vector<TagDecl> tags;
    std::vector<std::unique_ptr<TypeDecl>> nested;
};

struct VersionDecl {
    std::string doc;
    Name name;
    std::optional<Name> label;
    std::vector<QualifiedName> includes;
};

/// `order enum A, B;`
struct OrderDecl {
    Span span;
    std::vector<QualifiedName> names;
};

/// A `namespace` line and what it counts for.
struct NamespaceBlock {
    QualifiedName name;
    std::vector<VersionDecl> versions;
    std::vector<OrderDecl> enumOrders;
    std::vector<std::unique_ptr<TypeDecl>> types;
};

struct File {
    std::uint32_t id = 0; ///< number in the SourceManager
    std::vector<NamespaceBlock> blocks;
};

} // namespace Schemac::Syntax
