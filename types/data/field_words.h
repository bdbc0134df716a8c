#pragma once

#include "tavik/descriptor/field_layout.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

/// The words of an object, as its class's own properties lie in them. Most words of two objects are the same
/// or nothing, so that copying and comparing by words is far less work than by properties.
///
/// A word may hold members of a base, or of a class derived from this one, beside its own. Copying it whole
/// is right all the same, as whatever shares a word is plain bytes that the copy is to have, too; where only
/// those others differ, the own properties are compared one by one, and are equal.
namespace Morvane::Support {

/// What is copied and compared at a time.
using Word = std::uintptr_t;

/// What there is to do about a word. The order counts: first those that are equal when their words are, and
/// `None` last, so that every other form comes before it.
enum class WordForm : std::uint8_t {
    Bytes,          ///< of properties that are equal when their bytes are, perhaps also when they are not
    Reference,      ///< one counted reference
    OptionalString, ///< one pointer
    String,         ///< begin of one property, which takes up `kStringWords`
    Fields,         ///< properties to be looked at one by one
    None,           ///< nothing: no own property, or the rest of one that its first word stands for
};

/// Whether there is nothing to look at where two objects have the same word.
constexpr bool IsEqualAsWord(WordForm form) {
    return form <= WordForm::OptionalString;
}

inline constexpr std::size_t kStringWords = sizeof(std::string) / sizeof(Word);
static_assert(sizeof(std::string) % sizeof(Word) == 0);

struct FieldWord {
    std::uint16_t field = 0; ///< the first property that lies in it, if any
    WordForm form = WordForm::None;
};

/// Where the own properties of a class begin and what their words are.
struct WordMap {
    const FieldWord* words; ///< borrowed; null when there are none
    std::uint16_t count;
    std::uint16_t first; ///< words before them
};

/// What there is to do about the words of a property of a form, if it does not share them. A float is not
/// always equal to itself.
constexpr WordForm WordFormOf(Tavik::FieldForm form) {
    using Form = Tavik::FieldForm;
    switch (form) {
    case Form::Byte:
    case Form::Int:
    case Form::Long:
    case Form::DateTime:
    case Form::OptionalBoolean:
    case Form::OptionalByte:
    case Form::OptionalInt:
    case Form::OptionalLong:
    case Form::OptionalDateTime: return WordForm::Bytes;
    case Form::Object:
    case Form::Array: return WordForm::Reference;
    case Form::String: return WordForm::String;
    case Form::OptionalString: return WordForm::OptionalString;
    default: return WordForm::Fields;
    }
}

constexpr std::size_t FirstWord(const Tavik::FieldLayout& field) {
    return field.offset / sizeof(Word);
}

constexpr std::size_t EndWord(const Tavik::FieldLayout& field) {
    return (field.offset + field.size + sizeof(Word) - 1) / sizeof(Word);
}

/// Words that the properties of a class take up. They are in the order of their places.
template <std::size_t kCount>
constexpr std::size_t CountWords(const std::array<Tavik::FieldLayout, kCount>& fields) {
    return EndWord(fields.back()) - FirstWord(fields.front());
}

/// What those words are.
template <std::size_t kWords, std::size_t kCount>
constexpr std::array<FieldWord, kWords> DescribeWords(const std::array<Tavik::FieldLayout, kCount>& fields) {
    static_assert(
        kCount <= UINT16_MAX && kWords <= UINT16_MAX,
        "FieldWord::field and WordMap::count have to hold them");
    std::array<FieldWord, kWords> words{};
    const std::size_t first = FirstWord(fields.front());
    for (std::size_t i = kCount; i-- > 0;) {
        const Tavik::FieldLayout& field = fields[i];
        if (i + 1 < kCount && field.offset >= fields[i + 1].offset) {
            throw "properties have to be in the order of their places"; // which ends the constant evaluation
        }
        const WordForm form = WordFormOf(field.form);
        const std::size_t begin = FirstWord(field) - first;
        for (std::size_t at = begin; at < EndWord(field) - first; ++at) {
            const WordForm next = words[at].form; // of the property behind, if that begins in this word, too
            const WordForm rest = at == begin || form == WordForm::Bytes ? form : WordForm::None;
            const bool isShared = next != WordForm::None && next != form;
            words[at] = {static_cast<std::uint16_t>(i), isShared ? WordForm::Fields : std::min(next, rest)};
        }
    }
    return words;
}

/// The map of a class, which borrows `words`.
template <std::size_t kWords, std::size_t kCount>
constexpr WordMap MakeWordMap(
    const std::array<FieldWord, kWords>& words, const std::array<Tavik::FieldLayout, kCount>& fields) {
    return {words.data(), kWords, static_cast<std::uint16_t>(FirstWord(fields.front()))};
}

} // namespace Morvane::Support
