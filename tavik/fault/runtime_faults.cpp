#include "tavik/fault/runtime_faults.h"

#include "tavik/type/data_object_type.h"
#include "tavik/value/clone.h"
#include "tavik/value/open_writer.h"

#include <optional>

// NOLINTBEGIN(bugprone-macro-parentheses): class names in declarations take none.
#define TAVIK_RUNTIME_FAULT_SOURCE(Class)                                                                    \
    Class::Class() = default;                                                                                \
    Class::Class(const Class&) = default;                                                                    \
    Class::~Class() = default;                                                                               \
                                                                                                             \
    Tavik::Type* Class::_GetType() const {                                                                   \
        return _GetDataType();                                                                               \
    }                                                                                                        \
    Class* Class::_Clone() const {                                                                           \
        return Tavik::CloneObject(*this);                                                                    \
    }                                                                                                        \
    Tavik::DataObjectType* Class::_GetDataType() const {                                                     \
        return Tavik::GetDoType<Class>();                                                                    \
    }                                                                                                        \
    TAVIK_FAULT_SOURCE(Class, Exception)
// NOLINTEND(bugprone-macro-parentheses)

template class Tavik::DataArray<Orlin::Fault::InvalidArgument>;
template class Tavik::DataArray<Orlin::Fault::SystemError>;
template class Tavik::DataArray<Orlin::Fault::InvalidRequest>;
template class Tavik::DataArray<Orlin::Fault::ManagedObjectNotFound>;

namespace Orlin::Fault {

namespace {

using Tavik::OpenContent;
using Tavik::OpenValue;

constexpr const char* kInvalidProperty = "invalidProperty";
constexpr const char* kReason = "reason";
constexpr const char* kCorrelationId = "correlationId";
constexpr const char* kObject = "obj";
constexpr const char* kReferenceType = "mo";
constexpr const char* kReferenceId = "id";

void SetUnlessEmpty(OpenContent& content, const char* name, std::string_view text) {
    if (!text.empty()) {
        content.SetText(name, text);
    }
}

/// Peers may have put anything there.
std::string TextOf(const std::optional<OpenValue>& value) {
    const bool isText = value && value->GetKind() == Tavik::OpenKind::String;
    return std::string(isText ? value->GetText() : std::string_view());
}

std::string ObjectText(const OpenContent& content, const char* name) {
    const std::optional<OpenValue> object = content.Find(kObject);
    return object ? TextOf(object->Find(name)) : std::string();
}

} // namespace

TAVIK_RUNTIME_FAULT_SOURCE(InvalidArgument)

InvalidArgument::InvalidArgument(std::string_view invalidProperty, std::string_view reason) {
    SetUnlessEmpty(_GetContent(), kInvalidProperty, invalidProperty);
    SetUnlessEmpty(_GetContent(), kReason, reason);
}

std::string InvalidArgument::GetInvalidProperty() const {
    return TextOf(_GetContent().Find(kInvalidProperty));
}

std::string InvalidArgument::GetReason() const {
    return TextOf(_GetContent().Find(kReason));
}

TAVIK_RUNTIME_FAULT_SOURCE(SystemError)

SystemError::SystemError(std::string_view reason, std::string_view correlationId) {
    SetUnlessEmpty(_GetContent(), kReason, reason);
    SetUnlessEmpty(_GetContent(), kCorrelationId, correlationId);
}

std::string SystemError::GetReason() const {
    return TextOf(_GetContent().Find(kReason));
}

std::string SystemError::GetCorrelationId() const {
    return TextOf(_GetContent().Find(kCorrelationId));
}

TAVIK_RUNTIME_FAULT_SOURCE(InvalidRequest)

InvalidRequest::InvalidRequest(std::string_view reason) {
    SetUnlessEmpty(_GetContent(), kReason, reason);
}

std::string InvalidRequest::GetReason() const {
    return TextOf(_GetContent().Find(kReason));
}

TAVIK_RUNTIME_FAULT_SOURCE(ManagedObjectNotFound)

ManagedObjectNotFound::ManagedObjectNotFound(std::string_view typeName, std::string_view id) {
    Tavik::OpenContentWriter writer(_GetContent());
    const auto text = [&](const char* name, std::string_view value) {
        if (writer.Name(name)) {
            writer.String(value);
        }
    };
    if (writer.Name(kObject)) {
        writer.BeginObject();
        text(kReferenceType, typeName);
        text(kReferenceId, id);
        writer.EndObject();
    }
}

std::string ManagedObjectNotFound::GetObjectTypeName() const {
    return ObjectText(_GetContent(), kReferenceType);
}

std::string ManagedObjectNotFound::GetObjectId() const {
    return ObjectText(_GetContent(), kReferenceId);
}

} // namespace Orlin::Fault
