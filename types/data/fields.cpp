#include "types/data/fields.h"

#include "pellum/error/fail_fast.h"
#include "tavik/value/clone.h"
#include "tavik/value/compare.h"
#include "tavik/value/copy_properties.h"
#include "tavik/value/open_content.h"
#include "tavik/value/property_diff_set.h"
#include "types/data/field_functions.h"

namespace Morvane::Support {

namespace {

const void* At(const void* object, const Field& field) {
    return static_cast<const char*>(object) + field.offset;
}

void* At(void* object, const Field& field) {
    return static_cast<char*>(object) + field.offset;
}

const Field& Checked(const FieldTable& table, int index) {
    if (index < 0 || index >= table.count) {
        Pellum::FailFast(Pellum::kBadPropertyIndex);
    }
    return table.fields[index];
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
    for (int i = 0; i < table.count; ++i) {
        const Field& field = table.fields[i];
        field.storage->copy(At(&target, field), At(&source, field));
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
    for (int i = 0; i < table.count; ++i) {
        const Field& field = table.fields[i];
        const Tavik::PropertyDescriptor& property = table.properties[i];
        const void* mine = At(a, field);
        const void* others = At(b, field);
        if (field.storage->equal == nullptr) {
            if (!Tavik::AreEqualAnysInt(
                    Tavik::LoadRef(mine), Tavik::LoadRef(others), property.flags, partial)) {
                return false;
            }
        } else if (
            !field.storage->equal(mine, others)
            && !(partial && property.IsOptional() && !field.storage->isSet(others))) {
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
    for (int i = 0; i < table.count; ++i) {
        const Field& field = table.fields[i];
        const void* mine = At(a, field);
        const void* others = At(b, field);
        if (field.storage->equal == nullptr) {
            Tavik::DiffAnyPropertiesInt(
                Tavik::LoadRef(mine), Tavik::LoadRef(others), prefix, field.suffix, table.properties[i].flags,
                diffs);
        } else if (!field.storage->equal(mine, others)) {
            diffs.Add(prefix + field.suffix);
        }
    }
}

void* GetField(const FieldTable& table, const void* object, int index, void* out) {
    const Field& field = Checked(table, index);
    field.storage->get(At(object, field), out);
    return out;
}

const void* GetFieldPointer(const FieldTable& table, const void* object, int index) {
    const Field& field = Checked(table, index);
    return field.storage->pointer(At(object, field));
}

void SetField(const FieldTable& table, void* object, int index, const void* in) {
    const Field& field = Checked(table, index);
    field.storage->set(At(object, field), in, field.check);
}

void SwapField(const FieldTable& table, void* object, int index, void* other) {
    const Field& field = Checked(table, index);
    field.storage->swap(At(object, field), other);
}

bool IsFieldSet(const FieldTable& table, const void* object, int index) {
    if (index < 0 || index >= table.count) {
        return true;
    }
    const Field& field = table.fields[index];
    return field.storage->isSet(At(object, field));
}

bool IsAlwaysSet(const Tavik::Any* /*object*/, int /*index*/) {
    return true;
}

void ResetField(const FieldTable& table, void* object, int index) {
    const Field& field = Checked(table, index);
    if (!table.properties[index].IsOptional()) {
        Pellum::FailFast(Pellum::kBadPropertyIndex);
    }
    field.storage->reset(At(object, field));
}

} // namespace Morvane::Support
