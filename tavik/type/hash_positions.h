#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace Tavik {

/// Finds positions in a list by a hash of what stands there. Holds neither the list nor keys, so that it is
/// small, and filling it takes no memory for each entry. Not synchronised.
class HashPositions {
public:
    static constexpr std::uint32_t kNone = 0xffffffff;

    /// Makes room for that many positions.
    void Reserve(std::size_t count) {
        std::size_t size = kLeastSize;
        while (size / 2 < count) {
            size *= 2;
        }
        if (size > m_slots.size()) {
            Rehash(size);
        }
    }

    /// The position that was added with `hash` and for which `isSame(position)` is true, or `kNone`.
    template <class IsSame>
    std::uint32_t Find(std::uint32_t hash, const IsSame& isSame) const {
        if (m_slots.empty()) {
            return kNone;
        }
        std::size_t at = GetHome(hash);
        while (m_slots[at].position != kNone && (m_slots[at].hash != hash || !isSame(m_slots[at].position))) {
            at = GetNext(at);
        }
        return m_slots[at].position;
    }

    void Add(std::uint32_t hash, std::uint32_t position) {
        if (++m_count > m_slots.size() / 2) {
            Reserve(m_count);
        }
        Put({hash, position});
    }

private:
    static constexpr std::size_t kLeastSize = 16;

    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t position = kNone;
    };

    void Put(const Slot& slot) {
        std::size_t at = GetHome(slot.hash);
        while (m_slots[at].position != kNone) {
            at = GetNext(at);
        }
        m_slots[at] = slot;
    }

    void Rehash(std::size_t size) {
        const std::vector<Slot> old = std::exchange(m_slots, std::vector<Slot>(size));
        for (const Slot& slot : old) {
            if (slot.position != kNone) {
                Put(slot);
            }
        }
    }

    std::size_t GetHome(std::uint32_t hash) const { return hash & (m_slots.size() - 1); }

    std::size_t GetNext(std::size_t at) const { return (at + 1) & (m_slots.size() - 1); }

    std::vector<Slot> m_slots; ///< a power of two, half of it free; empty until something is added
    std::size_t m_count = 0;
};

} // namespace Tavik
