#pragma once

#include "pellum/error/exception.h"
#include "pellum/object/ref.h"
#include "tavik/codec/json/errors.h"
#include "tavik/type/data_object_type.h"
#include "tavik/type/type_of.h"
#include "tavik/type/type_registry.h"
#include "tavik/value/any.h"
#include "tavik/value/cast.h"
#include "tavik_json/export.h"

#include <cstddef>
#include <string>
#include <string_view>

/// Values as JSON text, exactly: what `Encode` writes `Decode` reads back as an equal value.
///
/// An object is `{"$type": "<wire name>", ...}` with its set properties, inherited ones first. In a place
/// that may hold anything a scalar is `{"$type": "int", "value": 5}` and an array `{"$type": "int[]",
/// "value": [5]}`; a managed reference is `{"mo": "<wire name of its type>", "id": "..."}`. Both functions
/// may be called from any thread.
namespace Tavik {

class Type;
class Version;

namespace Json {

/// The deepest nesting that a decoder can be set to: the parser underneath it uses stack for every level.
inline constexpr std::size_t kMaxDepth = 1000;

struct EncodeOptions {
    /// Leaves out the properties that this version does not have and refuses the types that it does not have.
    /// Borrowed; null for no restriction.
    const Version* version = nullptr;
    /// Type of the place that the value stands in: a value of exactly this type is written without "$type".
    /// Borrowed; null for none.
    const Type* declaredType = nullptr;
    int indent = 0; ///< spaces a level; 0 writes one line
};

/// The value as JSON, secrets included. `value` is borrowed. Throws `EncodeError` for null and for what has
/// no form in JSON: text that is no UTF-8, infinite numbers, numbers that are no value of their enumeration,
/// null elements. That required properties are set is not checked: see `Validate`.
TAVIK_JSON_API std::string Encode(const Any* value, const EncodeOptions& options = {});

/// What a text may at most ask for.
struct DecodeLimits {
    std::size_t depth = 64; ///< objects and arrays inside each other; at most `kMaxDepth`
    std::size_t inputBytes = std::size_t{16} * 1024 * 1024; ///< length of the whole text
    std::size_t values = 1'000'000; ///< the value itself, every member and every element
};

struct DecodeOptions {
    /// The type that the value must have or derive from; the text need not name it then. Borrowed; null
    /// accepts whatever type the text names.
    const Type* expectedType = nullptr;
    /// Refuses the types and properties that this version does not have. Borrowed; null for no restriction.
    const Version* version = nullptr;
    /// Passes over properties that the type, or the version, does not have.
    bool lenient = false;
    DecodeLimits limits;
    /// Stands in front of error messages: a file's name.
    std::string sourceName;
};

/// The value that `text` is the JSON form of; never null. Throws `DecodeError` at the first thing that is
/// wrong, and `Pellum::Exception` for a depth limit above `kMaxDepth`, for which a release build needs 128
/// KiB of stack.
TAVIK_JSON_API Pellum::Ref<Any> Decode(std::string_view text, const DecodeOptions& options = {});

/// Like `Decode`, for a value of the data object class `T` or derived from it.
template <class T>
Pellum::Ref<T> DecodeAs(std::string_view text, DecodeOptions options = {}) {
    TypeRegistry::Instance().Load(); // the class knows its type from then on
    options.expectedType = GetDoType<T>();
    if (options.expectedType == nullptr) {
        throw Pellum::Exception("the library of the expected class has not registered its types");
    }
    return Pellum::Ref<T>(CastReference<T>(Decode(text, options).Get()));
}

} // namespace Json
} // namespace Tavik
