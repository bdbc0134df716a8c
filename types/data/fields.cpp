#include "types/data/fields.h"

#include "pellum/error/fail_fast.h"
#include "pellum/text/equal.h"
#include "tavik/value/clone.h"
#include "tavik/value/compare.h"
#include "tavik/value/copy_properties.h"
#include "tavik/value/open_content.h"
#include "tavik/value/property_diff_set.h"
#include "types/data/field_functions.h"

#include <cstdint>
#include <cstring>

namespace Morvane::Support {

namespace {

using Tavik::FieldLayout;
using Tavik::GetMember;
using Tavik::WithStorage;

FieldLayout Checked(const FieldTable& table, int index) {
    if (index < 0 || index >= table.count) {
        Pellum::FailFast(Pellum::kBadPropertyIndex);
    }
    return table.fields[index];
}

bool AreEqualBytes(const void* a, const void* b, std::size_t size) {
    return Pellum::AreEqual({static_cast<const char*>(a), size}, {static_cast<const char*>(b), size});
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

Tavik::OpenContent* ContentOf(const FieldTable& table, Tavik::Any& object) {
    return table.content(static_cast<Tavik::DataObject*>(&object));
}

const Tavik::OpenContent* ContentOf(const FieldTable& table, const Tavik::Any& object) {
    return ContentOf(table, const_cast<Tavik::Any&>(object));
}

void CopyFields(const FieldTable& table, Tavik::Any& target, const Tavik::Any& source) {
    if (table.base != nullptr) {
        CopyFields(*table.base, target, source);
    } else if (table.foreignBase != nullptr) {
        Tavik::CopyProperties(
            table.foreignBase, static_cast<Tavik::DataObject&>(target),
            static_cast<const Tavik::DataObject&>(source));
    }
    if (table.content != nullptr) {
        *ContentOf(table, target) = *ContentOf(table, source);
    }
    for (int i = 0; i < table.count; i += table.fields[i].runFields) {
        const FieldLayout field = table.fields[i];
        void* member = GetMember(&target, field);
        const void* from = GetMember(&source, field);
        if (field.runFields > 1) {
            std::memcpy(member, from, field.runBytes);
        } else {
            WithStorage(field.form, [&](auto storage) { storage.Copy(member, from); });
        }
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
    if (table.base != nullptr && !AreFieldsEqual(*table.base, a, b, partial)) {
        return false;
    }
    if (table.content != nullptr && !ContentOf(table, *a)->IsEqual(*ContentOf(table, *b), partial)) {
        return false;
    }
    for (int i = 0; i < table.count; i += table.fields[i].runFields) {
        const FieldLayout field = table.fields[i];
        const void* mine = GetMember(a, field);
        const void* others = GetMember(b, field);
        if (field.runFields > 1) {
            if (!AreEqualBytes(mine, others, field.runBytes)) {
                return false;
            }
            continue;
        }
        const bool isEqual = WithStorage(field.form, [&](auto storage) {
            if constexpr (Tavik::kIsCounted<decltype(storage)>) {
                const Tavik::Any* left = Tavik::LoadRef(mine);
                const Tavik::Any* right = Tavik::LoadRef(others);
                return left == right
                    || Tavik::AreEqualAnysInt(left, right, table.properties[i].flags, partial);
            } else {
                return storage.Equal(mine, others)
                    || (partial && table.properties[i].IsOptional() && !storage.IsSet(others));
            }
        });
        if (!isEqual) {
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
    const auto pathOf = [&](const Tavik::PropertyDescriptor& property) -> const std::string& {
        path.resize(prefix.size());
        path += '.';
        path += property.name;
        return path;
    };
    for (int i = 0; i < table.count; ++i) {
        const FieldLayout field = table.fields[i];
        const Tavik::PropertyDescriptor& property = table.properties[i];
        const void* mine = GetMember(a, field);
        const void* others = GetMember(b, field);
        if (field.form == Tavik::FieldForm::Object || field.form == Tavik::FieldForm::Array) {
            const Tavik::Any* left = Tavik::LoadRef(mine);
            const Tavik::Any* right = Tavik::LoadRef(others);
            if (left != right) {
                Tavik::DiffValues(left, right, pathOf(property), property.flags, diffs);
            }
        } else if (!AreEqualFields(field.form, mine, others)) {
            diffs.Add(pathOf(property));
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
    return WithStorage(field.form, [&](auto storage) { return storage.Pointer(GetMember(object, field)); });
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
    return WithStorage(field.form, [&](auto storage) { return storage.IsSet(GetMember(object, field)); });
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
