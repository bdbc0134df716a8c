#include "schemac/model/type.h"

namespace Schemac::Model {

const Type& Type::TopLevel() const {
    const Type* type = this;
    while (type->enclosing != nullptr) {
        type = type->enclosing;
    }
    return *type;
}

const Type* Type::Base() const {
    if (const DataType* data = AsData()) {
        return data->base;
    }
    const ManagedType* managed = AsManaged();
    return managed != nullptr ? managed->base : nullptr;
}

bool Type::IsScalar() const {
    const BuiltinType* builtin = AsBuiltin();
    return builtin != nullptr && builtin->builtin < BuiltinKind::AnyType;
}

bool Type::IsManaged() const {
    return kind == TypeKind::Managed || Is(BuiltinKind::ManagedObject);
}

bool Type::Is(BuiltinKind builtin) const {
    const BuiltinType* self = AsBuiltin();
    return self != nullptr && self->builtin == builtin;
}

bool DataType::AddsOpenContent() const {
    for (const Type* type = base; isOpen && type != nullptr; type = type->Base()) {
        const DataType* data = type->AsData();
        if (data != nullptr && data->isOpen) {
            return false;
        }
    }
    return isOpen;
}

const BuiltinType* Type::AsBuiltin() const {
    return kind == TypeKind::Builtin ? static_cast<const BuiltinType*>(this) : nullptr;
}

const DataType* Type::AsData() const {
    return IsDataOrFault() ? static_cast<const DataType*>(this) : nullptr;
}

const EnumType* Type::AsEnum() const {
    return kind == TypeKind::Enum ? static_cast<const EnumType*>(this) : nullptr;
}

const ManagedType* Type::AsManaged() const {
    return kind == TypeKind::Managed ? static_cast<const ManagedType*>(this) : nullptr;
}

} // namespace Schemac::Model
