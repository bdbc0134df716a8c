#include "tavik/type/type_index.h"

#include <cstring>

namespace Tavik {

namespace {

constexpr std::uint64_t kMultiplier = 0x9e3779b97f4a7c15; ///< odd, its bits being in no order

/// A descriptor is known by where its name stands, as copies of it have that in common. The product's high
/// bits depend on all bits of the address.
std::uint32_t Hash(const TypeInfo& info) {
    const std::uint64_t address = reinterpret_cast<std::uintptr_t>(info.name);
    return static_cast<std::uint32_t>(address * kMultiplier >> 32);
}

/// Takes eight bytes at a time; the last ones overlap where there are more than eight.
std::uint32_t Hash(std::string_view name) {
    std::uint64_t word = 0;
    std::uint64_t hash = name.size();
    const char* text = name.data();
    if (name.size() < sizeof(word)) {
        for (const char c : name) {
            word = word << 8 | static_cast<unsigned char>(c);
        }
    } else {
        const char* const last = text + name.size() - sizeof(word);
        for (; text < last; text += sizeof(word)) {
            std::memcpy(&word, text, sizeof(word));
            hash = (hash ^ word) * kMultiplier;
        }
        std::memcpy(&word, last, sizeof(word));
    }
    hash = (hash ^ word) * kMultiplier;
    return static_cast<std::uint32_t>((hash ^ hash >> 32) * kMultiplier >> 32);
}

} // namespace

struct TypeIndex::Name {
    explicit Name(std::string_view name) : text(name), hash(Hash(name)) {}

    std::string_view text;
    std::uint32_t hash;
};

void TypeIndex::ReserveMore(std::size_t count) {
    const std::size_t total = m_types.size() + count;
    m_types.reserve(total);
    m_byInfo.Reserve(total);
    m_byName.Reserve(total);
    m_byWireName.Reserve(total);
}

Type* TypeIndex::Add(Type* type) {
    const auto position = static_cast<std::uint32_t>(m_types.size());
    const Name name(type->GetName());
    const Name wireName(type->GetWireName());
    m_types.push_back({type, name.text, wireName.text});
    if (FindRecord(type->GetInfo()) == nullptr) {
        m_byInfo.Add(Hash(type->GetInfo()), position);
    }
    if (Type* const named = Get(FindName(name))) {
        return named;
    }
    if (Type* const wired = Get(FindWireName(wireName))) {
        return wired;
    }
    m_byName.Add(name.hash, position);
    m_byWireName.Add(wireName.hash, position);
    return nullptr;
}

void TypeIndex::AddFreeNames() {
    const auto position = static_cast<std::uint32_t>(m_types.size() - 1);
    const Name name(m_types[position].name);
    const Name wireName(m_types[position].wireName);
    if (FindName(name) == HashPositions::kNone) {
        m_byName.Add(name.hash, position);
    }
    if (FindWireName(wireName) == HashPositions::kNone) {
        m_byWireName.Add(wireName.hash, position);
    }
}

Type* TypeIndex::Get(std::uint32_t position) const {
    return position == HashPositions::kNone ? nullptr : m_types[position].type;
}

Type* TypeIndex::FindRecord(const TypeInfo& info) const {
    return Get(m_byInfo.Find(
        Hash(info), [&](std::uint32_t position) { return &m_types[position].type->GetInfo() == &info; }));
}

Type* TypeIndex::FindByInfo(const TypeInfo* info) const {
    if (info == nullptr) {
        return nullptr;
    }
    Type* const type = FindRecord(*info);
    return type != nullptr ? type : Get(m_byInfo.Find(Hash(*info), [&](std::uint32_t position) {
        return MayBeSameType(m_types[position].type->GetInfo(), *info);
    }));
}

std::uint32_t TypeIndex::FindName(const Name& name) const {
    return m_byName.Find(
        name.hash, [&](std::uint32_t position) { return m_types[position].name == name.text; });
}

std::uint32_t TypeIndex::FindWireName(const Name& wireName) const {
    return m_byWireName.Find(
        wireName.hash, [&](std::uint32_t position) { return m_types[position].wireName == wireName.text; });
}

Type* TypeIndex::FindByName(std::string_view name) const {
    return Get(FindName(Name(name)));
}

Type* TypeIndex::FindByWireName(std::string_view wireName) const {
    return Get(FindWireName(Name(wireName)));
}

std::vector<std::string> TypeIndex::GetNames() const {
    std::vector<std::string> names;
    names.reserve(2 * m_types.size());
    for (const Entry& entry : m_types) {
        if (FindByName(entry.name) == entry.type) {
            names.emplace_back(entry.name);
        }
        if (FindByWireName(entry.wireName) == entry.type) {
            names.emplace_back(entry.wireName);
        }
    }
    return names;
}

} // namespace Tavik
