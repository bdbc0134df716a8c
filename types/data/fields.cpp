#include "types/data/fields.h"

#include "pellum/error/fail_fast.h"
#include "pellum/text/equal.h"
#include "pellum/text/text_cache.h"
#include "tavik/value/clone.h"
#include "tavik/value/compare.h"
#include "tavik/value/copy_properties.h"
#include "tavik/value/open_content.h"
#include "tavik/value/property_diff_set.h"
#include "types/data/field_functions.h"

#include <cstdint>
#include <cstring>
#include <type_traits>

namespace Morvane::Support {

namespace {

using Tavik::FieldLayout;
using Tavik::GetMember;
using Tavik::WithStorage;

FieldLayout Checked(const FieldTable& table, int index) {
    if (static_cast<unsigned>(index)
        >= static_cast<unsigned>(table.count)) { // negative ones are too large then
        Pellum::FailFast(Pellum::kBadPropertyIndex);
    }
    return table.fields[index];
}

/// Whether two members that hold no references are equal.
bool AreEqualFields(Tavik::FieldForm form, const void* a, const void* b) {
    return WithStorage(form, [&](auto storage) {
        if constexpr (Tavik::kIsCounted<decltype(storage)>) {
            return a == b;
        } else {
            return storage.Equal(a, b);
        }
    });
}

bool IsSet(Tavik::FieldForm form, const void* member) {
    return WithStorage(form, [&](auto storage) { return storage.IsSet(member); });
}

Tavik::OpenContent* ContentOf(const FieldTable& table, Tavik::Any& object) {
    return table.content(static_cast<Tavik::DataObject*>(&object));
}

const Tavik::OpenContent* ContentOf(const FieldTable& table, const Tavik::Any& object) {
    return ContentOf(table, const_cast<Tavik::Any&>(object));
}

constexpr std::size_t kWordSize = sizeof(Word);

Word LoadWord(const char* at) {
    Word word = 0;
    std::memcpy(&word, at, kWordSize);
    return word;
}

const Tavik::Any* AsValue(Word word) {
    return reinterpret_cast<const Tavik::Any*>(word);
}

const std::string* HeldText(Word word) {
    return reinterpret_cast<const std::string*>(word);
}

const std::string* TextAt(const char* member) {
    return reinterpret_cast<const std::string*>(member);
}

std::string* TextAt(char* member) {
    return reinterpret_cast<std::string*>(member);
}

/// Goes from the first word of a required text, which begins `at` bytes from the object's start, to its last.
void GoToEndOfText(const FieldWord*& word, std::size_t& at) {
    word += kStringWords - 1;
    at += (kStringWords - 1) * kWordSize;
}

/// Whether two texts are equal, of which `form` says how they are held.
bool AreEqualTexts(WordForm form, const char* mine, const char* others) {
    if (form == WordForm::String) {
        return Pellum::AreEqual(*TextAt(mine), *TextAt(others));
    }
    const Word left = LoadWord(mine);
    const Word right = LoadWord(others);
    return left == 0 || right == 0 ? left == right : Pellum::AreEqual(*HeldText(left), *HeldText(right));
}

/// Calls `function` with the index of each own property in the word that `word` describes and that begins
/// `at` bytes from the object's start, until it answers false; whether it never did.
template <class Function>
bool ForFieldsIn(const FieldTable& table, FieldWord word, std::size_t at, Function function) {
    const std::size_t end = at + kWordSize;
    for (int i = word.field; i < table.count && (i == word.field || table.fields[i].offset < end); ++i) {
        if (!function(i)) {
            return false;
        }
    }
    return true;
}

// Out of the loops over words, which the few properties of this kind would make slower for all others.
[[gnu::noinline]] void CopyOneByOne(
    const FieldTable& table, FieldWord word, std::size_t at, Tavik::Any& target, const Tavik::Any& source) {
    ForFieldsIn(table, word, at, [&](int index) {
        const FieldLayout field = table.fields[index];
        WithStorage(field.form, [&](auto storage) {
            storage.Copy(GetMember(&target, field), GetMember(&source, field));
        });
        return true;
    });
}

/// Copies the own properties to a new object of the class.
void CopyOwnFields(const FieldTable& table, Tavik::Any& target, const Tavik::Any& source) {
    const WordMap map = table.map;
    const char* const from = reinterpret_cast<const char*>(&source);
    char* const to = reinterpret_cast<char*>(&target);
    std::size_t at = map.first * kWordSize;
    for (const FieldWord *word = map.words, *end = word + map.count; word < end; ++word, at += kWordSize) {
        const WordForm form = word->form;
        const Word value = LoadWord(from + at);
        if (form == WordForm::Bytes) {
            std::memcpy(to + at, &value, kWordSize);
        } else if (form == WordForm::String) {
            Pellum::CopyText(*TextAt(to + at), *TextAt(from + at));
            GoToEndOfText(word, at);
        } else if (form == WordForm::OptionalString) {
            if (value != 0) {
                reinterpret_cast<Pellum::Optional<std::string>*>(to + at)->SetValue(*HeldText(value));
            }
        } else if (form == WordForm::Reference) {
            if (value != 0) {
                Tavik::CloneInto(to + at, AsValue(value));
            }
        } else if (form == WordForm::Fields) {
            CopyOneByOne(table, *word, at, target, source);
        }
    }
}

void CopyFields(const FieldTable& table, Tavik::Any& target, const Tavik::Any& source) {
    for (const FieldTable* part = &table; part != nullptr; part = part->base) {
        if (part->foreignBase != nullptr) {
            Tavik::CopyProperties(
                part->foreignBase, static_cast<Tavik::DataObject&>(target),
                static_cast<const Tavik::DataObject&>(source));
        }
        if (part->content != nullptr) {
            *ContentOf(*part, target) = *ContentOf(*part, source);
        }
        CopyOwnFields(*part, target, source);
    }
}

[[gnu::noinline]] bool AreEqualOneByOne(
    const FieldTable& table, FieldWord word, std::size_t at, const Tavik::Any& a, const Tavik::Any& b,
    bool partial) {
    return ForFieldsIn(table, word, at, [&](int index) {
        const FieldLayout field = table.fields[index];
        const void* others = GetMember(&b, field);
        return AreEqualFields(field.form, GetMember(&a, field), others)
            || (partial && table.properties[index].IsOptional() && !IsSet(field.form, others));
    });
}

bool AreOwnFieldsEqual(const FieldTable& table, const Tavik::Any& a, const Tavik::Any& b, bool partial) {
    const WordMap map = table.map;
    const char* const mine = reinterpret_cast<const char*>(&a);
    const char* const others = reinterpret_cast<const char*>(&b);
    std::size_t at = map.first * kWordSize;
    for (const FieldWord *word = map.words, *end = word + map.count; word < end; ++word, at += kWordSize) {
        const WordForm form = word->form;
        const Word left = LoadWord(mine + at);
        const Word right = LoadWord(others + at);
        if (left == right && IsEqualAsWord(form)) {
            continue;
        }
        if (form == WordForm::String) {
            if (!Pellum::AreEqual(*TextAt(mine + at), *TextAt(others + at))) {
                return false;
            }
            GoToEndOfText(word, at);
        } else if (form == WordForm::OptionalString) {
            if (left == 0 || right == 0) { // not both, as the words differ
                if (!partial || right != 0) {
                    return false;
                }
            } else if (!Pellum::AreEqual(*HeldText(left), *HeldText(right))) {
                return false;
            }
        } else if (form == WordForm::Reference) {
            const std::uint32_t flags = table.properties[word->field].flags;
            if (!Tavik::AreEqualAnysInt(AsValue(left), AsValue(right), flags, partial)) {
                return false;
            }
        } else if (form != WordForm::None && !AreEqualOneByOne(table, *word, at, a, b, partial)) {
            return false;
        }
    }
    return true;
}

void AppendName(std::string& path, const Tavik::PropertyDescriptor& property) {
    path += '.';
    path += property.name;
}

/// Adds what differs in one property; `path` is that of the object, and may be changed.
void DiffField(
    const FieldTable& table, int index, const Tavik::Any& a, const Tavik::Any& b, std::string& path,
    Tavik::PropertyDiffSet& diffs) {
    const FieldLayout field = table.fields[index];
    const Tavik::PropertyDescriptor& property = table.properties[index];
    const void* mine = GetMember(&a, field);
    const void* others = GetMember(&b, field);
    const bool isCounted = field.form == Tavik::FieldForm::Object || field.form == Tavik::FieldForm::Array;
    if (!isCounted && AreEqualFields(field.form, mine, others)) {
        return;
    }
    AppendName(path, property);
    if (isCounted) {
        Tavik::DiffValues(Tavik::LoadRef(mine), Tavik::LoadRef(others), path, property.flags, diffs);
    } else {
        diffs.Add(path);
    }
}

} // namespace

Tavik::Any* CloneData(const FieldTable& table, const Tavik::Any& source) {
    const auto fill = [](Tavik::Any& copy, const Tavik::Any& from, const void* context) {
        CopyFields(*static_cast<const FieldTable*>(context), copy, from);
    };
    return Tavik::FillClone(table.create(), source, fill, &table);
}

bool AreFieldsEqual(const FieldTable& table, const Tavik::Any* a, const Tavik::Any* b, bool partial) {
    for (const FieldTable* part = &table; part != nullptr; part = part->base) {
        if (part->content != nullptr && !ContentOf(*part, *a)->IsEqual(*ContentOf(*part, *b), partial)) {
            return false;
        }
        if (!AreOwnFieldsEqual(*part, *a, *b, partial)) {
            return false;
        }
    }
    return true;
}

void DiffFields(
    const FieldTable& table, const Tavik::Any* a, const Tavik::Any* b, const std::string& prefix,
    Tavik::PropertyDiffSet& diffs) {
    if (table.base != nullptr) {
        DiffFields(*table.base, a, b, prefix, diffs);
    }
    if (table.content != nullptr) {
        ContentOf(table, *a)->Diff(*ContentOf(table, *b), prefix, diffs);
    }
    std::string path = prefix;
    int next = 0; // property to be looked at: one may lie in two words
    const WordMap map = table.map;
    const char* const mine = reinterpret_cast<const char*>(a);
    const char* const others = reinterpret_cast<const char*>(b);
    std::size_t at = map.first * kWordSize;
    for (const FieldWord *word = map.words, *end = word + map.count; word < end; ++word, at += kWordSize) {
        const WordForm form = word->form;
        const Word left = LoadWord(mine + at);
        const Word right = LoadWord(others + at);
        if (form == WordForm::String || form == WordForm::OptionalString) {
            const bool isSame = left == right && IsEqualAsWord(form);
            if (!isSame && !AreEqualTexts(form, mine + at, others + at)) {
                path.resize(prefix.size());
                AppendName(path, table.properties[word->field]);
                diffs.Add(path);
            }
        } else if (form == WordForm::Fields || (left != right && form != WordForm::None)) {
            ForFieldsIn(table, *word, at, [&](int index) {
                if (index >= next) {
                    next = index + 1;
                    path.resize(prefix.size());
                    DiffField(table, index, *a, *b, path, diffs);
                }
                return true;
            });
        }
        if (form == WordForm::String) {
            GoToEndOfText(word, at);
        }
    }
}

void* GetField(const FieldTable& table, const void* object, int index, void* out) {
    const FieldLayout field = Checked(table, index);
    WithStorage(field.form, [&](auto storage) { storage.Get(GetMember(object, field), out); });
    return out;
}

const void* GetFieldPointer(const FieldTable& table, const void* object, int index) {
    const FieldLayout field = Checked(table, index);
    return Tavik::GetPointer(field.form, GetMember(object, field));
}

void SetField(const FieldTable& table, void* object, int index, const void* in) {
    const FieldLayout field = Checked(table, index);
    WithStorage(field.form, [&](auto storage) {
        if constexpr (Tavik::kIsCounted<decltype(storage)>) {
            table.checks[index](const_cast<Tavik::Any*>(static_cast<const Tavik::Any*>(in)));
        }
        storage.Set(GetMember(object, field), in);
    });
}

void SwapField(const FieldTable& table, void* object, int index, void* other) {
    const FieldLayout field = Checked(table, index);
    WithStorage(field.form, [&](auto storage) { storage.Swap(GetMember(object, field), other); });
}

bool IsFieldSet(const FieldTable& table, const void* object, int index) {
    if (index < 0 || index >= table.count) {
        return true;
    }
    const FieldLayout field = table.fields[index];
    return IsSet(field.form, GetMember(object, field));
}

bool IsAlwaysSet(const Tavik::Any* /*object*/, int /*index*/) {
    return true;
}

void ResetField(const FieldTable& table, void* object, int index) {
    const FieldLayout field = Checked(table, index);
    WithStorage(field.form, [&](auto storage) {
        if constexpr (requires(void* member) { storage.Reset(member); }) {
            if (table.properties[index].IsOptional()) {
                storage.Reset(GetMember(object, field));
                return;
            }
        }
        Pellum::FailFast(Pellum::kBadPropertyIndex);
    });
}

} // namespace Morvane::Support
