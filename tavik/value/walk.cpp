#include "tavik/value/walk.h"

#include "tavik/type/data_object_type.h"
#include "tavik/type/type_of.h"
#include "tavik/type/type_registry.h"
#include "tavik/value/mo_ref.h"
#include "tavik/value/primitive.h"
#include "tavik/value/scalar_array.h"
#include "tavik/value/secret_names.h"

namespace Tavik {

namespace {

/// The element type that a place declares for the array in it; null unless the place is an array's, which
/// only that of a root is, and the array is of that type.
const Type* GetDeclaredElement(const ArrayBase& array, const Type* declared) {
    if (declared == nullptr || declared->GetKind() != TypeKind::Array) {
        return nullptr;
    }
    const Type* const element = static_cast<const ArrayType*>(declared)->GetElementType();
    const Type* const actual = array._GetElementType();
    // Arrays of references do not know what they refer to.
    const bool fits = actual == element
                   || (actual != nullptr && actual->GetKind() == TypeKind::Managed
                       && element->GetKind() == TypeKind::Managed);
    return fits ? element : nullptr;
}

bool IsDataKind(TypeKind kind) {
    return kind == TypeKind::Data || kind == TypeKind::Fault;
}

} // namespace

bool OpenMember::IsSecret() const {
    return IsSecretName(name);
}

ValueVisitor::~ValueVisitor() = default;

ValueWalker::ValueWalker(ValueVisitor& visitor) : m_visitor(visitor) {}

ValueWalker::~ValueWalker() = default;

void ValueWalker::Walk(const Any* root, const Type* declared) {
    TypeRegistry::Instance().Load(); // objects know their types from then on
    m_frames.clear();
    m_openFrames.clear();
    Enter(root, declared);
    Run();
}

void ValueWalker::Walk(const OpenValue& root) {
    m_frames.clear();
    m_openFrames.clear();
    EnterOpenValue(root);
    Run();
}

void ValueWalker::Run() {
    while (!m_frames.empty() || !m_openFrames.empty()) {
        if (!m_openFrames.empty()) {
            VisitNextOpenItem();
        } else if (m_frames.back().object != nullptr) {
            VisitProperties();
        } else {
            VisitElements();
        }
    }
}

void ValueWalker::Enter(const Any* value, const Type* declared) {
    if (declared != nullptr && declared->GetKind() == TypeKind::Any) {
        declared = nullptr;
    }
    if (const auto* object = dynamic_cast<const DataObject*>(value)) {
        EnterObject(*object, declared);
    } else if (const auto* reference = dynamic_cast<const MoRef*>(value)) {
        m_visitor.VisitReference(*reference, declared);
    } else if (const auto* array = dynamic_cast<const ArrayBase*>(value)) {
        EnterArray(*array, GetDeclaredElement(*array, declared));
    } else if (const auto* boxed = dynamic_cast<const PrimitiveBase*>(value)) {
        EnterBoxed(*boxed, declared);
    } else if (value == nullptr) {
        m_visitor.VisitNull();
    } else {
        m_visitor.VisitUnknown();
    }
}

/// The value of a property or element, whose class is the one that its declared type has.
void ValueWalker::EnterHeld(const Any* value, const Type& declared) {
    if (value == nullptr) {
        m_visitor.VisitNull();
    } else if (IsDataKind(declared.GetKind())) {
        EnterObject(static_cast<const DataObject&>(*value), &declared);
    } else if (declared.GetKind() == TypeKind::Managed) {
        m_visitor.VisitReference(static_cast<const MoRef&>(*value), &declared);
    } else {
        Enter(value, nullptr);
    }
}

void ValueWalker::EnterObject(const DataObject& object, const Type* declared) {
    const DataObjectType* type = object._GetDataType();
    if (type == nullptr) {
        m_visitor.VisitUnknown();
    } else if (m_visitor.BeginObject(object, *type, declared)) {
        m_frames.push_back({&object, type, nullptr, nullptr, 0});
    }
}

void ValueWalker::EnterArray(const ArrayBase& array, const Type* declaredElement) {
    const Type* elementType = declaredElement != nullptr ? declaredElement : array._GetElementType();
    if (elementType == nullptr) {
        m_visitor.VisitUnknown();
    } else if (m_visitor.BeginArray(array, *elementType, declaredElement)) {
        m_frames.push_back({nullptr, nullptr, &array, elementType, 0});
    }
}

void ValueWalker::EnterBoxed(const PrimitiveBase& boxed, const Type* declared) {
    if (const Type* type = boxed._GetType()) {
        m_visitor.VisitScalar(*type, boxed._GetValuePointer(), type != declared);
    } else {
        m_visitor.VisitUnknown();
    }
}

/// Visits the properties of the innermost object, up to one that there may be more in.
void ValueWalker::VisitProperties() {
    Frame& frame = m_frames.back();
    const DataObject* const object = frame.object;
    const auto properties = frame.type->GetProperties();
    while (frame.next < properties.size()) {
        const Property& property = *properties[frame.next++];
        const void* const value = property.GetFieldIfSet(object);
        if (!m_visitor.VisitProperty(property, value != nullptr) || value == nullptr) {
            continue;
        }
        const Type* const type = property.GetType();
        if (type == nullptr) {
            m_visitor.VisitUnknown();
        } else if (!property.IsCounted()) {
            m_visitor.VisitScalar(*type, value, false);
        } else if (property.IsArray()) {
            EnterArray(*static_cast<const ArrayBase*>(static_cast<const Any*>(value)), type);
            return;
        } else {
            EnterHeld(static_cast<const Any*>(value), *type);
            return;
        }
    }
    if (frame.next == properties.size() && frame.type->IsOpen()) {
        ++frame.next;
        const OpenContent& content = *frame.type->GetOpenContent(*object);
        m_openFrames.push_back({content.begin(), content.end(), {}, 0, {}});
        return;
    }
    m_frames.pop_back();
    m_visitor.EndObject();
}

/// Visits the elements of the innermost array, up to one that there may be more in.
void ValueWalker::VisitElements() {
    Frame& frame = m_frames.back();
    const Type& type = *frame.elementType;
    const bool holdsObjects = IsDataKind(type.GetKind());
    const bool holdsReferences = type.GetKind() == TypeKind::Managed || type.GetKind() == TypeKind::Any;
    const std::size_t length = frame.array->GetLength();
    while (frame.next < length) {
        const std::size_t index = frame.next++;
        m_visitor.VisitElement(index);
        if (holdsObjects) {
            EnterHeld(static_cast<const DataArrayBase*>(frame.array)->GetElement(index), type);
            return;
        }
        const void* element = static_cast<const ScalarArrayBase*>(frame.array)->_GetElementPointer(index);
        if (holdsReferences) {
            EnterHeld(static_cast<const Any*>(element), type);
            return;
        }
        m_visitor.VisitScalar(type, element, false);
    }
    m_frames.pop_back();
    m_visitor.EndArray();
}

void ValueWalker::EnterOpenValue(const OpenValue& value) {
    if (m_visitor.VisitOpenValue(value) && value.IsContainer()) {
        const OpenItems items = value.GetItems();
        m_openFrames.push_back({items.begin(), items.end(), value, 0, {}});
    }
}

void ValueWalker::VisitNextOpenItem() {
    OpenFrame& frame = m_openFrames.back();
    if (frame.next == frame.end) {
        const std::optional<OpenValue> value = frame.value;
        m_openFrames.pop_back();
        if (value) {
            m_visitor.EndOpenValue(*value);
        }
        return;
    }
    const OpenItem item = *frame.next++;
    const std::size_t index = frame.count++;
    if (frame.value && frame.value->GetKind() == OpenKind::Array) {
        m_visitor.VisitElement(index);
    } else {
        frame.member = item.name;
        const OpenMember member{item.name, !frame.value && IsTaken(item.name)};
        if (!m_visitor.VisitOpenMember(member)) {
            return;
        }
    }
    EnterOpenValue(item.value);
}

bool ValueWalker::IsTaken(std::string_view name) const {
    return name == "$type" || m_frames.back().type->FindProperty(name) != nullptr;
}

std::string ValueWalker::GetPath() const {
    std::string path;
    for (const Frame& frame : m_frames) {
        if (frame.next == 0) {
            break;
        }
        if (frame.object == nullptr) {
            path += '[' + std::to_string(frame.next - 1) + ']';
            continue;
        }
        if (frame.next > frame.type->GetProperties().size()) {
            break; // in its open content
        }
        if (!path.empty()) {
            path += '.';
        }
        path += frame.type->GetProperties()[frame.next - 1]->GetName();
    }
    for (const OpenFrame& frame : m_openFrames) {
        if (frame.count == 0) {
            break;
        }
        if (frame.value && frame.value->GetKind() == OpenKind::Array) {
            path += '[' + std::to_string(frame.count - 1) + ']';
            continue;
        }
        path += path.empty() ? "" : ".";
        AppendMemberName(path, frame.member);
    }
    return path;
}

} // namespace Tavik
