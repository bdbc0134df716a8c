#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>
#include <string_view>

/// Memory as a foreign runtime sees it: addresses, symbols and bytes, and no class of this project.
namespace LayoutTests {

inline constexpr bool kIs32Bit = sizeof(void*) == 4;

/// An address, and what is read relative to it.
class Raw {
public:
    explicit Raw(const void* address) : m_bytes(static_cast<const std::byte*>(address)) {}

    const void* Address(std::size_t offset = 0) const { return m_bytes + offset; }

    template <class T>
    T Read(std::size_t offset) const {
        T value;
        std::memcpy(&value, m_bytes + offset, sizeof(value));
        return value;
    }

    unsigned Byte(std::size_t offset) const { return Read<std::uint8_t>(offset); }

    std::uint32_t Word(std::size_t offset) const { return Read<std::uint32_t>(offset); }

    const void* Pointer(std::size_t offset) const { return Read<const void*>(offset); }

    /// The function at an address that was read.
    template <class Function>
    static Function* AsFunction(const void* address) {
        Function* function = nullptr;
        static_assert(sizeof(function) == sizeof(address));
        std::memcpy(&function, &address, sizeof(function));
        return function;
    }

private:
    const std::byte* m_bytes;
};

/// How a record is written down: the width of each field in its order, 'p' for a pointer, 'w' for a 32-bit
/// word, 'b' for a byte.
///
/// Fields are called by the offsets that they have where pointers have 32 bits. On wider hosts each field is
/// aligned to its own width; the order stays.
class Form {
public:
    consteval Form(std::string_view widths, std::size_t size32) : m_widths(widths) {
        if (Find('\0', 0, 4).end != size32) {
            throw std::logic_error("the widths do not make up that size");
        }
    }

    /// Where the field is in this process. Throws for an offset at which no field of that width begins.
    constexpr std::size_t At(char width, std::size_t offset32) const {
        const Place place = Find(width, offset32, 4);
        if (!place.isFound) {
            throw std::logic_error("no such field at " + std::to_string(offset32));
        }
        return Find(width, offset32, sizeof(void*)).start;
    }

    constexpr std::size_t Size() const { return Find('\0', 0, sizeof(void*)).end; }

private:
    struct Place {
        bool isFound;
        std::size_t start; ///< of the field
        std::size_t end;   ///< of the record
    };

    constexpr Place Find(char width, std::size_t offset32, std::size_t pointerSize) const {
        Place place{false, 0, 0};
        std::size_t other = 0; // the offset where pointers have 32 bits
        for (const char field : m_widths) {
            const std::size_t size = field == 'b' ? 1 : (field == 'w' ? 4 : pointerSize);
            place.end = (place.end + size - 1) / size * size;
            if (field == width && other == offset32) {
                place.isFound = true;
                place.start = place.end;
            }
            place.end += size;
            other += field == 'b' ? 1 : 4;
        }
        place.end = (place.end + pointerSize - 1) / pointerSize * pointerSize;
        return place;
    }

    std::string_view m_widths;
};

inline constexpr Form kTypeInfo("wppp", 16);
inline constexpr Form kProperty("pwpwp", 20);
inline constexpr Form kDataTypeInfo("pppppppppppw", 48);
inline constexpr Form kEnumTypeInfo("pp", 8);
inline constexpr Form kManagedTypeInfo("pppppppp", 32);
inline constexpr Form kMethod(
    "pppw"
    "pwpwp"
    "pppw"
    "bbbb",
    56);
inline constexpr Form kVersion("pppwppww", 32);
inline constexpr Form kInclusion("pp", 8);
inline constexpr Form kVersions("pppwpppppwwwwwwwww", 72);

/// A record in memory. Offsets are those that its fields have where pointers have 32 bits.
class Record {
public:
    Record(const Form& form, const void* address) : m_form(&form), m_memory(address) {}

    const void* Address() const { return m_memory.Address(); }

    const void* Pointer(std::size_t offset) const { return m_memory.Pointer(m_form->At('p', offset)); }

    std::uint32_t Word(std::size_t offset) const { return m_memory.Word(m_form->At('w', offset)); }

    unsigned Byte(std::size_t offset) const { return m_memory.Byte(m_form->At('b', offset)); }

    /// The text that a field points to, borrowed; empty for null.
    std::string_view Text(std::size_t offset) const {
        const void* text = Pointer(offset);
        return text == nullptr ? std::string_view() : static_cast<const char*>(text);
    }

    template <class Function>
    Function* FunctionAt(std::size_t offset) const {
        return Raw::AsFunction<Function>(Pointer(offset));
    }

    /// The record that begins with the pointer at `offset`.
    Record Inline(const Form& form, std::size_t offset) const {
        return {form, m_memory.Address(m_form->At('p', offset))};
    }

    /// The record that many places further in an array.
    Record Next(std::size_t count = 1) const { return {*m_form, m_memory.Address(count * m_form->Size())}; }

private:
    const Form* m_form;
    Raw m_memory;
};

/// The address of what a loaded library exports under that path, "Morvane::orlinNamespaceId"; null when there
/// is none. A function takes no parameters, and has its "()" behind the path.
const void* FindSymbol(std::string_view path);

/// The exported record of the type with that dotted name, of this library or of one that it stands on.
const void* FindTypeInfo(std::string_view name);

} // namespace LayoutTests
