#pragma once

#include "tavik/library/type_library.h"
#include "tavik/value/cast.h"
#include "tavik/value/primitive.h"
#include "tavik/value/scalar_array.h"

#include <cstddef>
#include <memory>
#include <new>
#include <typeinfo>

/// What every generated enumeration stands on.
namespace Morvane::Support {

/// The library's own class of enumeration types.
class ModuleEnumType final : public Tavik::EnumType {
public:
    using Tavik::EnumType::EnumType;
};

inline Tavik::EnumType* CreateEnumType(const Tavik::EnumTypeInfo* info, const Tavik::EnumFuncs* functions) {
    return new (std::nothrow) ModuleEnumType(info, functions);
}

/// The five functions of an enumeration.
template <class E>
struct EnumFunctions {
    static const Tavik::Primitive<E>& Unboxed(const Tavik::Any* boxed) {
        if (boxed == nullptr) {
            Pellum::ThrowTypeMismatchException(typeid(Tavik::Primitive<E>), typeid(std::nullptr_t));
        }
        return *Tavik::CastReference<Tavik::Primitive<E>>(const_cast<Tavik::Any*>(boxed));
    }

    static std::int32_t Unbox(const Tavik::Any* boxed) {
        return static_cast<std::int32_t>(Unboxed(boxed).GetValue());
    }

    static Tavik::Any* Box(std::int32_t value) { return new Tavik::Primitive<E>(static_cast<E>(value)); }

    static const char* TagOfBoxed(const Tavik::Any* boxed) {
        return Tavik::GetEnumType<E>()->GetTag(Unbox(boxed));
    }

    static Tavik::ArrayBase* ArrayFromTags(const Tavik::Array<std::string>& tags) {
        auto array = std::make_unique<Tavik::Array<E>>();
        array->GetElements().reserve(tags.GetLength());
        for (const std::string& tag : tags.GetElements()) {
            array->Append(static_cast<E>(Tavik::GetEnumType<E>()->GetValue(tag)));
        }
        return array.release();
    }

    static Tavik::ArrayBase* CreateArray() { return new (std::nothrow) Tavik::Array<E>; }

    static constexpr Tavik::EnumFuncs kFunctions = {&Unbox, &Box, &TagOfBoxed, &ArrayFromTags, &CreateArray};
};

} // namespace Morvane::Support
