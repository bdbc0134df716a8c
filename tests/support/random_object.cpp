#include "tests/support/random_object.h"

#include "pellum/system/date_time.h"
#include "tavik/type/enum_type.h"
#include "tavik/type/type_of.h"
#include "tavik/type/type_registry.h"
#include "tavik/value/mo_ref.h"
#include "tavik/value/primitive.h"
#include "tavik/value/scalar_array.h"

#include <array>
#include <limits>
#include <string>

namespace TestSupport {

namespace {

using Pellum::Ref;
using Tavik::Any;
using Tavik::TypeKind;

constexpr int kUsualDepth = 3;
/// Where even required objects end; a type that contains itself would have no end.
constexpr int kGreatestDepth = 8;

template <class T>
Ref<Any> Box(T value) {
    return Ref<Any>(new Tavik::Primitive<T>(std::move(value)));
}

} // namespace

std::vector<const Tavik::DataObjectType*> AllDataTypes() {
    std::vector<const Tavik::DataObjectType*> found;
    for (const Tavik::LoadedLibrary& library : Tavik::TypeRegistry::Instance().GetLibraries()) {
        for (const Tavik::Type* type : library.types) {
            if (const auto* data = dynamic_cast<const Tavik::DataObjectType*>(type)) {
                found.push_back(data);
            }
        }
    }
    return found;
}

RandomObjects::RandomObjects(Fill fill, unsigned seed)
    : m_fill(fill), m_engine(seed), m_types(AllDataTypes()) {}

std::size_t RandomObjects::Below(std::size_t limit) {
    // Not a distribution of the library, whose numbers differ from one implementation to the next.
    return m_engine() % limit;
}

Ref<Tavik::DataObject> RandomObjects::Make(const Tavik::DataObjectType& type) {
    ++m_depth;
    Ref<Tavik::DataObject> object(type.New());
    for (const Tavik::Property* property : type.GetProperties()) {
        const TypeKind kind = property->GetType()->GetKind();
        const bool nests = property->IsCounted() && kind != TypeKind::Managed;
        const bool fits = m_depth < (property->IsOptional() ? kUsualDepth : kGreatestDepth) || !nests;
        if (fits && (!property->IsOptional() || FillsOptional())) {
            SetRandom(*object, *property);
        }
    }
    if (Tavik::OpenContent* content = type.GetOpenContent(*object)) {
        FillContent(*content);
    }
    --m_depth;
    return object;
}

bool RandomObjects::FillsOptional() {
    return m_fill == Fill::All || (m_fill == Fill::Some && Below(2) == 0);
}

void RandomObjects::SetRandom(Tavik::DataObject& object, const Tavik::Property& property) {
    const Ref<Any> value = MakeValue(property);
    if (property.IsCounted()) {
        property.Set(&object, value.Get());
    } else {
        property.Set(&object, static_cast<const Tavik::PrimitiveBase&>(*value)._GetValuePointer());
    }
}

Ref<Any> RandomObjects::MakeValue(const Tavik::Property& property) {
    return property.IsArray() ? MakeArray(*property.GetType()) : MakeElement(*property.GetType());
}

Ref<Any> RandomObjects::MakeValue(const Tavik::PropertyDescriptor& declared) {
    if (declared.IsOptional() && !FillsOptional()) {
        return nullptr;
    }
    const Tavik::Type& type = *Tavik::TypeRegistry::Instance().FindByInfo(declared.type);
    return declared.IsArray() ? MakeArray(type) : MakeElement(type);
}

Ref<Any> RandomObjects::MakeElement(const Tavik::Type& type) {
    switch (type.GetKind()) {
    case TypeKind::Data:
    case TypeKind::Fault: return MakeDerived(static_cast<const Tavik::DataObjectType&>(type));
    case TypeKind::Managed: return Ref<Any>(new Tavik::MoRef(&type.GetInfo(), MakeText()));
    case TypeKind::Any: return MakeAny();
    default: return MakeScalar(type);
    }
}

Ref<Tavik::DataObject> RandomObjects::MakeDerived(const Tavik::DataObjectType& declared) {
    std::vector<const Tavik::DataObjectType*> fitting{&declared};
    for (const Tavik::DataObjectType* type : m_types) {
        if (type != &declared && type->IsA(&declared)) {
            fitting.push_back(type);
        }
    }
    return Make(*fitting[Below(fitting.size())]);
}

Ref<Any> RandomObjects::MakeAny() {
    switch (Below(4)) {
    case 0: return Box<std::string>(MakeText());
    case 1: return Box<std::int32_t>(static_cast<std::int32_t>(m_engine()));
    case 2: return Ref<Any>(Tavik::Primitive<bool>::Factory::Get(Below(2) == 0));
    default: return m_types.empty() ? Box<float>(0.5F) : Ref<Any>(Make(*m_types[Below(m_types.size())]));
    }
}

Ref<Any> RandomObjects::MakeScalar(const Tavik::Type& type) {
    const auto number = static_cast<std::int32_t>(m_engine());
    switch (type.GetKind()) {
    case TypeKind::Boolean: return Ref<Any>(Tavik::Primitive<bool>::Factory::Get(Below(2) == 0));
    case TypeKind::Byte: return Box(static_cast<signed char>(number));
    case TypeKind::Int: return Box(number);
    case TypeKind::Long: return Box(std::int64_t{number} * number * (number % 2 == 0 ? 1 : -1));
    case TypeKind::Float: return Box(static_cast<float>(number) / 64);
    case TypeKind::String: return Box(MakeText());
    case TypeKind::DateTime:
        return Box(Pellum::System::DateTime::FromUtcTime(std::int64_t{1'600'000'000'000'000} + number));
    case TypeKind::Binary: {
        const std::string text = MakeText();
        return Box(std::vector<std::uint8_t>(text.begin(), text.end()));
    }
    case TypeKind::TypeName: return Box(Tavik::TypeName("string"));
    case TypeKind::PropertyPath: return Box(Tavik::PropertyPath(MakeText()));
    case TypeKind::Enum: {
        const auto& enumeration = static_cast<const Tavik::EnumType&>(type);
        const auto tag = static_cast<std::int32_t>(Below(enumeration.GetTags().size()));
        return Ref<Any>(enumeration.Box(&tag));
    }
    default: return nullptr;
    }
}

Ref<Any> RandomObjects::MakeArray(const Tavik::Type& elementType) {
    const Ref<Tavik::ArrayBase> array(elementType.NewArray());
    const std::size_t length = 1 + Below(3);
    for (std::size_t i = 0; i < length; ++i) {
        const Ref<Any> element = MakeElement(elementType);
        if (auto* objects = dynamic_cast<Tavik::DataArrayBase*>(array.Get())) {
            objects->AppendChecked(element.Get());
        } else {
            const auto* plain = dynamic_cast<const Tavik::PrimitiveBase*>(element.Get());
            const bool isCounted = elementType.GetKind() == TypeKind::Any || plain == nullptr;
            static_cast<Tavik::ScalarArrayBase&>(*array)._Append(
                isCounted ? static_cast<const void*>(element.Get()) : plain->_GetValuePointer());
        }
    }
    return array;
}

void RandomObjects::FillContent(Tavik::OpenContent& content) {
    Tavik::OpenContentWriter writer(content);
    for (std::size_t count = 1 + Below(4); count > 0; --count) {
        // A name that is there already is passed over.
        if (writer.Name("open " + MakeText())) {
            WriteOpenValue(writer, 0);
        }
    }
}

void RandomObjects::WriteOpenValue(Tavik::OpenContentWriter& writer, int depth) {
    static constexpr std::array<const char*, 5> kNumbers = {
        "0", "-12", "3.1400", "18446744073709551616", "-6.02214076e+23"};
    const std::size_t count = Below(3);
    switch (Below(depth < kUsualDepth ? 6 : 4)) {
    case 0: writer.Null(); break;
    case 1: writer.Boolean(Below(2) == 0); break;
    case 2: writer.Number(kNumbers[Below(kNumbers.size())]); break;
    case 3: writer.String(MakeText()); break;
    case 4:
        writer.BeginArray();
        for (std::size_t i = 0; i < count; ++i) {
            WriteOpenValue(writer, depth + 1);
        }
        writer.EndArray();
        break;
    default:
        writer.BeginObject();
        for (std::size_t i = 0; i < count; ++i) {
            if (writer.Name(MakeText())) {
                WriteOpenValue(writer, depth + 1);
            }
        }
        writer.EndObject();
    }
}

std::string RandomObjects::MakeText() {
    static constexpr std::array<const char*, 8> kTexts = {
        "",
        "a",
        "two words",
        "quoted \"text\"",
        "line\nfeed\ttab",
        "gr\xC3\xBC\xC3\x9F",
        "\xF0\x9F\x90\xA7",
        "back\\slash"};
    return kTexts[Below(kTexts.size())] + std::to_string(Below(1000));
}

} // namespace TestSupport
