#include "tavik/type/type.h"

#include "tavik/type/version.h"

#include <memory>
#include <string>

namespace Tavik {

Type::~Type() {
    delete m_arrayType.load(std::memory_order_relaxed);
}

Type* Type::GetBaseType() const {
    return nullptr;
}

Any* Type::Box(const void* /*value*/) const {
    return nullptr;
}

bool Type::IsPartOf(const Version& version) const {
    const Version* introduced = GetVersion();
    return introduced == nullptr || version.Includes(*introduced);
}

bool Type::IsA(const Type* other) const {
    for (const Type* type = this; type != nullptr; type = type->GetBaseType()) {
        if (type == other) {
            return true;
        }
    }
    return false;
}

/// The record of an array type and the texts that it points to.
struct ArrayType::Names {
    std::string name;
    std::string wireName;
    TypeInfo info;
};

ArrayType::ArrayType(const Type* element, Names* names)
    : Type(&names->info), m_element(element), m_names(names) {}

ArrayType::~ArrayType() {
    delete m_names;
}

ArrayBase* ArrayType::NewArray() const {
    return nullptr; // there are no arrays of arrays
}

ArrayType* Type::GetArrayType(const Type* element) {
    if (element == nullptr) {
        return nullptr;
    }
    if (ArrayType* known = element->m_arrayType.load(std::memory_order_acquire)) {
        return known;
    }
    auto names = std::make_unique<ArrayType::Names>();
    names->name = std::string(element->GetName()) + "[]";
    names->wireName = std::string(element->GetWireName()) + "[]";
    names->info = {TypeKind::Array, names->name.c_str(), names->wireName.c_str(), element->GetInfo().version};
    std::unique_ptr<ArrayType> made(new ArrayType(element, names.get()));
    (void)names.release(); // owned by the type from here on

    ArrayType* winner = nullptr;
    if (element->m_arrayType.compare_exchange_strong(winner, made.get(), std::memory_order_acq_rel)) {
        winner = made.release();
    }
    return winner;
}

} // namespace Tavik
