#pragma once

#include "tavik/codec/json/wording.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace Tavik {

class Version;

namespace Json {

/// Finds types by wire name as the registry does, those that were found before in less time.
class TypeFinder {
public:
    /// Borrowed; null when there is none.
    const Type* Find(std::string_view wireName);

private:
    static constexpr std::size_t kSlotBits = 6;
    std::array<const Type*, std::size_t{1} << kSlotBits> m_found{};
};

/// The type that the value of a "$type" member names in a place whose declaration is `declared`: of a scalar,
/// a data object or an array. Throws `Refusal` when there is no such type, it does not fit the place, or
/// `version` (null for no restriction) does not have it.
Place ReadValueType(
    std::string_view wireName, const Place& declared, const Version* version, TypeFinder& types);
/// The managed type that the value of a "mo" member names. Throws `Refusal` likewise.
const Type* ReadReferredType(
    std::string_view wireName, const Place& declared, const Version* version, TypeFinder& types);
/// Throws `Refusal` when `version` (null for no restriction) does not have the type.
void CheckVersion(const Type& type, const Version* version);

} // namespace Json
} // namespace Tavik
