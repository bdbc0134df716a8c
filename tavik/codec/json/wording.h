#pragma once

#include "tavik/type/type.h"

#include <string>
#include <string_view>
#include <vector>

namespace Tavik {

class Version;

namespace Json {

/// Thrown inside the decoder: what is wrong with the text that was just read. Where, is known further up.
struct Refusal {
    std::string reason;
};

/// What a place of a document may hold.
struct Place {
    const Type* type = nullptr; ///< of the value, or of an array's elements; null or `anyType` for any value
    bool isArray = false;

    bool HoldsAnything() const { return type == nullptr || (type->GetKind() == TypeKind::Any && !isArray); }

    /// Whether objects stand here that need not name their type.
    bool HoldsObject() const {
        return type != nullptr && !isArray
            && (type->GetKind() == TypeKind::Data || type->GetKind() == TypeKind::Fault);
    }

    bool HoldsReference() const {
        return type != nullptr && !isArray && type->GetKind() == TypeKind::Managed;
    }

    /// Whether a scalar stands here that need not name its type.
    bool HoldsScalar() const {
        return type != nullptr && !isArray
            && (type->GetKind() < TypeKind::Any || type->GetKind() == TypeKind::Enum);
    }
};

/// What belongs in a place: "an int", "an object of type MorvaneComputerSpec", "an array of string".
std::string DescribeExpected(const Place& place);
/// "expected <what belongs in the place>, found <found>".
std::string ExpectedButFound(const Place& place, std::string_view found);
/// A name out of a document in quotes, escaped, and cut where it is long. Not for the content of strings,
/// which may be secret.
std::string Quote(std::string_view name);
/// `; did you mean "near"?`, or nothing when no candidate is near.
std::string DidYouMean(std::string_view name, const std::vector<std::string>& candidates);
/// "is not part of version X; it was introduced by Y". `introduced` may be null.
std::string NotPartOf(const Version& version, const Version* introduced);

} // namespace Json
} // namespace Tavik
