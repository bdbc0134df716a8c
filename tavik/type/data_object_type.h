#pragma once

#include "pellum/http/response_code.h"
#include "tavik/descriptor/field_layout.h"
#include "tavik/type/type.h"
#include "tavik/value/field_storage.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

namespace Tavik {

class DataObjectType;
class OpenContent;
class TypeRegistry;

/// The types of numbers that properties are held in.
template <class T>
concept HeldNumber = std::is_arithmetic_v<T> && !std::is_same_v<T, bool> && requires {
    FieldFormOf<T>::kForm;
};

/// One property of a data object type, with the functions that reach it in an object.
class TAVIK_API Property {
public:
    const char* GetName() const { return m_descriptor->name; }

    /// The name with its length, for those who compare it often.
    std::string_view GetNameText() const { return m_name; }

    const PropertyDescriptor& GetDescriptor() const { return *m_descriptor; }

    std::uint32_t GetFlags() const { return m_descriptor->flags; }

    bool IsArray() const { return m_descriptor->IsArray(); }

    bool IsOptional() const { return m_descriptor->IsOptional(); }

    bool IsSecret() const { return m_descriptor->IsSecret(); }

    /// Whether the property holds a counted value: an array, a data object, a managed reference, an
    /// `anyType`.
    bool IsCounted() const { return m_counted; }

    /// The (element) type; null when the library that owns it is not loaded, which the registry reports as an
    /// error.
    const Type* GetType() const { return m_type; }

    /// The type that declares the property.
    const DataObjectType& GetOwner() const { return *m_owner; }

    int GetIndex() const { return m_index; }

    const Version* GetVersion() const { return m_version; }

    /// Whether the property is part of `version`; a null version stands for no restriction.
    bool IsPartOf(const Version* version) const { return version == nullptr || IsPartOf(*version); }

    /// What stands in front of the value in JSON, behind another member: `, "name": `. Borrowed; empty when
    /// the name is no UTF-8 text.
    std::string_view GetKeyText() const { return m_keyText; }

    /// Where objects of the owner's class hold the property, so that those who know the form need no call to
    /// reach it (see `field_storage.h`). Of form `Unknown` when the library does not say.
    FieldLayout GetLayout() const { return m_layout; }

    /// The field functions; `object` is of the owner's class or derived from it. See `records.h`.
    bool IsSet(const Any* object) const {
        return m_layout.form == FieldForm::Unknown ? IsSetByRecord(object)
                                                   : WithStorage(m_layout.form, [&](auto storage) {
                                                         return storage.IsSet(GetMember(object, m_layout));
                                                     });
    }

    const void* GetFieldPointer(const Any* object) const {
        return m_layout.form == FieldForm::Unknown ? GetFieldPointerByRecord(object)
                                                   : GetPointer(m_layout.form, GetMember(object, m_layout));
    }

    /// The same where the property is set; null where it is not.
    const void* GetFieldIfSet(const Any* object) const {
        // The pointers of known forms are null where the property is not set.
        return m_layout.form != FieldForm::Unknown || IsSet(object) ? GetFieldPointer(object) : nullptr;
    }

    /// The held value of a counted property, borrowed; null when unset.
    const Any* GetCounted(const Any* object) const {
        return static_cast<const Any*>(GetFieldPointer(object));
    }

    /// Copies the value to `*out`, which is of the property's plain type, and returns `out`. A text has to be
    /// set.
    void* Get(const Any* object, void* out) const;

    /// The same for a property of plain text, and of a number, inline where its place is known.
    void* Get(const Any* object, std::string* out) const {
        return m_layout.form == FieldForm::String ? GetInline<InlineStorage<std::string>>(object, out)
                                                  : Get(object, static_cast<void*>(out));
    }

    template <HeldNumber T>
    void* Get(const Any* object, T* out) const {
        const bool isInline = m_layout.form == FieldFormOf<T>::kForm
                           || m_layout.form == FieldFormOf<Pellum::Optional<T>>::kForm;
        return isInline ? GetInline<TrivialStorage<T>>(object, out) : Get(object, static_cast<void*>(out));
    }

    void Set(Any* object, const void* in) const;
    void Reset(Any* object) const;

private:
    friend class DataObjectType;

    template <class Storage>
    void* GetInline(const Any* object, void* out) const {
        Storage::Get(GetMember(object, m_layout), out);
        return out;
    }

    bool IsPartOf(const Version& version) const;
    bool IsSetByRecord(const Any* object) const;
    const void* GetFieldPointerByRecord(const Any* object) const;

    const PropertyDescriptor* m_descriptor;
    std::string_view m_name;
    const DataObjectType* m_owner;
    int m_index;
    FieldLayout m_layout;
    bool m_counted;
    const Type* m_type;
    const Version* m_version;
    std::string_view m_keyText;
};

/// The content of an object of an open type, borrowed. The object is of the type's class or derived from it.
using OpenContentFunction = OpenContent* (*)(DataObject* object);

/// What a data or fault type has besides what its record says. Types take over from their bases what they do
/// not have themselves, but for the layout, which is of their own properties.
struct DataTypeTraits {
    OpenContentFunction content = nullptr; ///< of a type that is open
    int httpStatus = 0;                    ///< of a fault; 0 where it says nothing of it
    const DataLayout* layout = nullptr;    ///< borrowed; null where it is not known
};

/// A data object or fault type.
class TAVIK_API DataObjectType final : public Type {
public:
    explicit DataObjectType(const DataTypeInfo* info, const DataTypeTraits& traits = {});
    ~DataObjectType() override;

    const DataTypeInfo& GetDataTypeInfo() const { return *m_dataInfo; }

    bool IsFault() const { return GetKind() == TypeKind::Fault; }

    DataObjectType* GetBaseType() const override { return m_base; }

    /// The type's own properties, in declared order, borrowed from it. None before the types have been
    /// loaded.
    std::span<const Property> GetOwnProperties() const { return m_own; }

    /// All properties, inherited ones first, likewise.
    std::span<const Property* const> GetProperties() const { return m_all; }

    /// Borrowed; null when neither the type nor a base has a property of that name.
    const Property* FindProperty(std::string_view name) const;
    /// Position of a property in `GetProperties`, which must be one of them.
    std::size_t GetPosition(const Property& property) const;

    /// Whether objects carry properties that no description tells of: the type, or one that it derives from,
    /// is open.
    bool IsOpen() const { return m_content != nullptr; }

    /// Whether the type itself is open, so that no base of it need be.
    bool IsDeclaredOpen() const { return m_isDeclaredOpen; }

    /// Those properties of an object of this type or derived from it, borrowed; null unless the type is open.
    OpenContent* GetOpenContent(DataObject& object) const;
    const OpenContent* GetOpenContent(const DataObject& object) const;

    /// The status of an HTTP response that carries a fault of this type, a constant; 500 unless the type or a
    /// base has another.
    const Pellum::Http::ResponseCode::Info& GetHttpStatus() const;

    /// A new object, zero-filled and default-constructed, created with no count; null when out of memory.
    DataObject* New() const;
    ArrayBase* NewArray() const override;

private:
    friend class TypeRegistry;

    /// Connects the type with its base and its properties' types and versions once all of them are
    /// registered.
    void Resolve(TypeRegistry& registry);
    void AddOwnProperties(TypeRegistry& registry);
    /// Fills in all but the descriptor of an own property. `keyText` is borrowed from `m_memory`.
    void FillProperty(Property& property, int index, std::string_view keyText, TypeRegistry& registry) const;

    const DataTypeInfo* m_dataInfo;
    const DataLayout* m_layout;
    OpenContentFunction m_content;                        ///< the type's own, or that of a base
    const Pellum::Http::ResponseCode::Info* m_httpStatus; ///< the type's own, that of a base, or null
    DataObjectType* m_base = nullptr;
    const bool m_isDeclaredOpen;
    bool m_resolved = false;
    /// What the following refer to, in one block, with the key texts of the own properties. None where there
    /// are no own ones: what is inherited is the base's then.
    std::unique_ptr<std::byte[]> m_memory;
    std::span<const Property> m_own;
    std::span<const Property* const> m_all;
    std::string_view m_marks; ///< of the names of all properties
};

/// Makes the type object of a record; called by a library's loader function. The runtime owns the object.
TAVIK_API DataObjectType* CreateDataObjectType(const DataTypeInfo* info);
/// The same for a type with traits.
TAVIK_API DataObjectType* CreateDataObjectType(const DataTypeInfo* info, const DataTypeTraits& traits);

} // namespace Tavik
