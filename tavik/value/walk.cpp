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

} // namespace

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
            VisitNextProperty();
        } else {
            VisitNextElement();
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

void ValueWalker::EnterObject(const DataObject& object, const Type* declared) {
    const DataObjectType* type = object._GetDataType();
    if (type == nullptr) {
        m_visitor.VisitUnknown();
    } else if (m_visitor.BeginObject(object, *type, declared)) {
        m_frames.push_back({&object, type, nullptr, nullptr, false, 0});
    }
}

void ValueWalker::EnterArray(const ArrayBase& array, const Type* declaredElement) {
    const Type* elementType = declaredElement != nullptr ? declaredElement : array._GetElementType();
    if (elementType == nullptr) {
        m_visitor.VisitUnknown();
    } else if (m_visitor.BeginArray(array, *elementType, declaredElement)) {
        const bool holdsObjects = dynamic_cast<const DataArrayBase*>(&array) != nullptr;
        m_frames.push_back({nullptr, nullptr, &array, elementType, holdsObjects, 0});
    }
}

void ValueWalker::EnterBoxed(const PrimitiveBase& boxed, const Type* declared) {
    if (const Type* type = boxed._GetType()) {
        m_visitor.VisitScalar(*type, boxed._GetValuePointer(), type != declared);
    } else {
        m_visitor.VisitUnknown();
    }
}

void ValueWalker::VisitNextProperty() {
    Frame& frame = m_frames.back();
    const auto& properties = frame.type->GetProperties();
    if (frame.next == properties.size() && frame.type->IsOpen()) {
        ++frame.next;
        const OpenContent& content = *frame.type->GetOpenContent(*frame.object);
        m_openFrames.push_back({content.begin(), content.end(), {}, 0, {}});
        return;
    }
    if (frame.next >= properties.size()) {
        m_frames.pop_back();
        m_visitor.EndObject();
        return;
    }
    const Property& property = *properties[frame.next++];
    const DataObject* object = frame.object;
    const Type* type = property.GetType();
    const void* value = property.GetFieldPointer(object);
    const bool isSet = property.IsSet(object);
    if (!m_visitor.VisitProperty(property, isSet) || !isSet) {
        return;
    }
    if (type == nullptr) {
        m_visitor.VisitUnknown();
    } else if (property.IsArray()) {
        EnterArray(*static_cast<const ArrayBase*>(property.GetCounted(object)), type);
    } else if (property.IsCounted()) {
        Enter(static_cast<const Any*>(value), type);
    } else {
        m_visitor.VisitScalar(*type, value, false);
    }
}

void ValueWalker::VisitNextElement() {
    Frame& frame = m_frames.back();
    if (frame.next == frame.array->GetLength()) {
        m_frames.pop_back();
        m_visitor.EndArray();
        return;
    }
    const std::size_t index = frame.next++;
    m_visitor.VisitElement(index);
    if (frame.holdsObjects) {
        Enter(static_cast<const DataArrayBase*>(frame.array)->GetElement(index), frame.elementType);
        return;
    }
    const void* element = static_cast<const ScalarArrayBase*>(frame.array)->_GetElementPointer(index);
    const TypeKind kind = frame.elementType->GetKind();
    if (kind == TypeKind::Managed || kind == TypeKind::Any) {
        Enter(static_cast<const Any*>(element), frame.elementType);
    } else {
        m_visitor.VisitScalar(*frame.elementType, element, false);
    }
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
        const OpenMember member{item.name, IsSecretName(item.name), !frame.value && IsTaken(item.name)};
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
