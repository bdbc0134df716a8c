#include "tavik/value/validate.h"

#include "tavik/type/data_object_type.h"
#include "tavik/type/enum_type.h"
#include "tavik/type/type_registry.h"
#include "tavik/type/version.h"
#include "tavik/value/json_text.h"
#include "tavik/value/mo_ref.h"
#include "tavik/value/text_values.h"
#include "tavik/value/walk.h"

#include <cmath>
#include <cstring>
#include <utility>

namespace Tavik {

namespace {

class Validator final : public ValueVisitor {
public:
    explicit Validator(const Version* version) : m_version(version), m_walker(*this) {}

    std::vector<Problem> Check(const Any* value) {
        m_walker.Walk(value, nullptr);
        return std::move(m_problems);
    }

    bool BeginObject(
        const DataObject& /*object*/, const DataObjectType& type, const Type* /*declared*/) override {
        CheckVersion(type);
        return true;
    }

    void EndObject() override {}

    bool VisitProperty(const Property& property, bool isSet) override {
        if (!property.IsPartOf(m_version)) {
            return false;
        }
        if (!isSet && !property.IsOptional()) {
            Report(property.IsArray() ? "is required and has no element" : "is required and not set");
        }
        return isSet;
    }

    bool BeginArray(const ArrayBase& /*array*/, const Type& elementType, const Type* /*declared*/) override {
        return elementType.GetKind() != TypeKind::Byte;
    }

    void EndArray() override {}

    void VisitElement(std::size_t /*index*/) override {}

    void VisitScalar(const Type& type, const void* value, bool /*boxed*/) override {
        CheckVersion(type);
        switch (type.GetKind()) {
        case TypeKind::String: CheckText(*static_cast<const std::string*>(value)); break;
        case TypeKind::TypeName: CheckText(static_cast<const TypeName*>(value)->GetText()); break;
        case TypeKind::PropertyPath: CheckText(static_cast<const PropertyPath*>(value)->GetText()); break;
        case TypeKind::Float:
            if (!std::isfinite(*static_cast<const float*>(value))) {
                Report("is not a finite number");
            }
            break;
        case TypeKind::Enum: CheckEnum(static_cast<const EnumType&>(type), value); break;
        default: break;
        }
    }

    void VisitReference(const MoRef& reference, const Type* declared) override {
        const Type* type = TypeRegistry::Instance().FindByWireName(reference.GetTypeInfo().wireName);
        if (type != nullptr) {
            CheckVersion(*type);
        }
        if (type == nullptr) {
            Report(
                std::string("refers to the type ") + reference.GetTypeInfo().name
                + ", which is not registered");
        } else if (declared != nullptr && !type->IsA(declared)) {
            Report(std::string("refers to a ") + type->GetName() + ", expected a " + declared->GetName());
        }
        CheckText(reference.GetId());
    }

    bool VisitOpenMember(const OpenMember& member) override {
        CheckText(member.name);
        if (member.isTaken) {
            Report(kTakenName);
        }
        return true;
    }

    bool VisitOpenValue(const OpenValue& value) override {
        CheckText(value.GetText());
        return true;
    }

    void EndOpenValue(const OpenValue& /*value*/) override {}

    void VisitNull() override {
        if (m_walker.GetDepth() > 0) {
            Report("is null, and an array has no unset elements");
        }
    }

    void VisitUnknown() override { Report("is of a type that no library has registered"); }

private:
    void CheckVersion(const Type& type) {
        if (!type.IsPartOf(m_version)) {
            Report(
                std::string("is of type ") + type.GetName() + ", which version " + m_version->GetName()
                + " does not have");
        }
    }

    void CheckText(std::string_view text) {
        if (!IsUtf8(text)) {
            Report("is not UTF-8 text");
        }
    }

    void CheckEnum(const EnumType& type, const void* value) {
        std::int32_t number = 0;
        std::memcpy(&number, value, sizeof(number));
        if (number < 0 || static_cast<std::size_t>(number) >= type.GetTags().size()) {
            Report("holds " + std::to_string(number) + ", which is not a value of " + type.GetName());
        }
    }

    void Report(std::string what) { m_problems.push_back({m_walker.GetPath(), std::move(what)}); }

    const Version* m_version;
    ValueWalker m_walker;
    std::vector<Problem> m_problems;
};

} // namespace

std::vector<Problem> Validate(const Any* value, const Version* version) {
    return Validator(version).Check(value);
}

} // namespace Tavik
