#include "tavik/codec/json/value_builder.h"

#include "tavik/codec/json/property_access.h"
#include "tavik/type/data_object_type.h"
#include "tavik/type/version.h"
#include "tavik/value/data_object.h"
#include "tavik/value/mo_ref.h"
#include "tavik/value/scalar_array.h"

#include <new>
#include <utility>

namespace Tavik::Json {

namespace {

constexpr std::string_view kTypeKey = "$type";
constexpr std::string_view kValueKey = "value";
constexpr std::string_view kReferenceTypeKey = "mo";
constexpr std::string_view kReferenceIdKey = "id";

constexpr const char* kObject = "an object";
constexpr const char* kArray = "an array";
constexpr const char* kNull = "null";
constexpr const char* kExpectedString = "expected a string";
constexpr const char* kExpectedTypeName = "expected a string with the wire name of a type";

/// Objects and arrays inside each other that there is room for from the start, in a block that is still
/// small.
constexpr std::size_t kUsualDepth = 10;

/// What is known of one property of an object that is being read.
enum PropertyMarks : std::uint8_t {
    kSeen = 0x1, ///< its key has been read
    kSet = 0x2,  ///< and it has a value, which does not leave it unset
};

/// The result of a creating function, which is null when there is no memory.
template <class T>
Pellum::Ref<T> Created(T* object) {
    if (object == nullptr) {
        throw std::bad_alloc();
    }
    return Pellum::Ref<T>(object);
}

Place MakeRootPlace(const Type* expected) {
    if (expected != nullptr && expected->GetKind() == TypeKind::Array) {
        return {static_cast<const ArrayType*>(expected)->GetElementType(), true};
    }
    return {expected, false};
}

[[noreturn]] void RefuseRepeated(std::string_view name) {
    throw Refusal{"there is a second member " + Quote(name)};
}

bool IsDataKind(TypeKind kind) {
    return kind == TypeKind::Data || kind == TypeKind::Fault;
}

void WriteScalar(OpenContentWriter& content, const Token& token) {
    switch (token.kind) {
    case Token::Kind::Boolean: content.Boolean(token.text == "true"); break;
    case Token::Kind::Number: content.Number(token.text); break;
    case Token::Kind::String: content.String(token.text); break;
    }
}

/// "a", "a and b", "a, b and c"
std::string JoinNames(const std::vector<std::string>& names) {
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i) {
        text += i == 0 ? "" : (i + 1 == names.size() ? " and " : ", ");
        text += names[i];
    }
    return text;
}

} // namespace

ValueBuilder::ValueBuilder(const DecodeOptions& options)
    : m_options(options), m_rootPlace(MakeRootPlace(options.expectedType)) {
    m_frames.reserve(kUsualDepth);
}

ValueBuilder::~ValueBuilder() = default;

void ValueBuilder::Restart(const Type* expected) {
    m_rootPlace = MakeRootPlace(expected);
    m_result.Reset();
}

inline void ValueBuilder::CountValue() {
    if (++m_valueCount > m_options.limits.values) {
        throw Refusal{
            "there are more than " + std::to_string(m_options.limits.values) + " values, which is the limit"};
    }
}

inline void ValueBuilder::Nest() {
    CountValue();
    if (m_depth == m_options.limits.depth) {
        throw Refusal{
            "objects and arrays are nested deeper than the limit of "
            + std::to_string(m_options.limits.depth)};
    }
    ++m_depth;
}

inline Place ValueBuilder::GetPlace() const {
    if (m_frames.empty()) {
        return m_rootPlace;
    }
    const Frame& frame = m_frames.back();
    switch (frame.kind) {
    case FrameKind::Object: return {frame.property->GetType(), frame.property->IsArray()};
    case FrameKind::Array: return {frame.place.type, false};
    case FrameKind::Box: return frame.place;
    case FrameKind::Opened: throw Refusal{kExpectedTypeName};
    case FrameKind::Reference: throw Refusal{kExpectedString};
    }
    return {};
}

void ValueBuilder::BeginObject() {
    Nest();
    if (IsAside()) {
        if (m_content != nullptr) {
            m_content->BeginObject();
        }
        return;
    }
    const Place place = GetPlace();
    const bool isRoot = m_frames.empty(); // where anything may name its type
    if (place.HoldsReference()) {
        StartReference(m_frames.emplace_back(FrameKind::Reference, place));
    } else if (isRoot || place.HoldsObject() || place.HoldsAnything()) {
        m_frames.emplace_back(FrameKind::Opened, place);
    } else {
        throw Refusal{ExpectedButFound(place, kObject)};
    }
}

void ValueBuilder::EndObject() {
    --m_depth;
    if (IsAside()) {
        if (m_content != nullptr) {
            m_content->EndObject();
        }
        EndAside();
        return;
    }
    Frame& frame = m_frames.back();
    if (frame.kind == FrameKind::Opened) {
        if (!frame.place.HoldsObject()) {
            throw Refusal{ExpectedButFound(frame.place, "an empty object")};
        }
        StartObject(frame, *frame.place.type);
    }
    Pellum::Ref<Any> value = Finish(frame);
    m_frames.pop_back();
    Store(std::move(value));
}

void ValueBuilder::BeginArray() {
    Nest();
    if (IsAside()) {
        if (m_content != nullptr) {
            m_content->BeginArray();
        }
        return;
    }
    const Place place = GetPlace();
    if (!place.isArray || place.type->GetKind() == TypeKind::Byte) {
        throw Refusal{ExpectedButFound(place, kArray)};
    }
    StartArray(place);
}

void ValueBuilder::EndArray() {
    --m_depth;
    if (IsAside()) {
        if (m_content != nullptr) {
            m_content->EndArray();
        }
        EndAside();
        return;
    }
    Pellum::Ref<Any> value = std::move(m_frames.back().value);
    m_frames.pop_back();
    Store(std::move(value));
}

void ValueBuilder::Key(std::string_view name) {
    if (IsAside()) {
        if (m_content != nullptr && !m_content->Name(name)) {
            RefuseRepeated(name);
        }
        return;
    }
    Frame& frame = m_frames.back();
    switch (frame.kind) {
    case FrameKind::Opened: DecideOpened(name); break;
    case FrameKind::Box: BoxKey(frame, name); break;
    case FrameKind::Reference: ReferenceKey(frame, name); break;
    default: ObjectKey(frame, name); break;
    }
}

void ValueBuilder::Scalar(const Token& token) {
    CountValue();
    if (IsAside()) {
        if (!SkipsScalar()) {
            WriteScalar(*m_content, token);
            LeaveCompleteContent();
        }
        return;
    }
    if (!m_frames.empty() && m_frames.back().kind == FrameKind::Reference) {
        ReferenceMember(m_frames.back(), token);
        return;
    }
    if (!m_frames.empty() && m_frames.back().kind == FrameKind::Opened) {
        if (token.kind != Token::Kind::String) {
            throw Refusal{kExpectedTypeName};
        }
        ReadTypeMember(token.text);
        return;
    }
    const Place place = GetPlace();
    if (place.HoldsScalar()) {
        Store(place, token);
    } else if (place.isArray && place.type->GetKind() == TypeKind::Byte) {
        const std::string bytes = ReadBytes(token);
        Store(Pellum::Ref<Any>(new Array<signed char>(std::vector<signed char>(bytes.begin(), bytes.end()))));
    } else {
        throw Refusal{ExpectedButFound(place, token.Describe())};
    }
}

void ValueBuilder::Null() {
    CountValue();
    if (IsAside()) {
        if (!SkipsScalar()) {
            m_content->Null();
            LeaveCompleteContent();
        }
        return;
    }
    if (m_frames.empty() || m_frames.back().kind != FrameKind::Object) {
        throw Refusal{ExpectedButFound(GetPlace(), kNull)};
    }
    m_frames.back().property = nullptr; // reads as unset
}

std::string ValueBuilder::GetPath() const {
    std::string path;
    for (const Frame& frame : m_frames) {
        if (frame.kind == FrameKind::Array) {
            const std::size_t index = static_cast<const ArrayBase&>(*frame.value).GetLength();
            path += '[' + std::to_string(index) + ']';
        } else if (frame.property != nullptr) {
            path += path.empty() ? "" : ".";
            path += frame.property->GetName();
        }
    }
    if (m_content != nullptr) {
        path += path.empty() ? "" : ".";
        path += m_content->GetPath();
    }
    return path;
}

bool ValueBuilder::SkipsScalar() {
    if (m_skipDepth == kNotSkipping) {
        return false;
    }
    if (m_skipDepth == m_depth) {
        m_skipDepth = kNotSkipping;
    }
    return true;
}

void ValueBuilder::EndAside() {
    if (m_content != nullptr) {
        LeaveCompleteContent();
    } else if (m_depth <= m_skipDepth) {
        m_skipDepth = kNotSkipping;
    }
}

void ValueBuilder::LeaveCompleteContent() {
    if (m_content->IsComplete()) {
        m_content = nullptr;
    }
}

void ValueBuilder::DecideOpened(std::string_view firstKey) {
    Frame& frame = m_frames.back();
    if (firstKey == kTypeKey) {
        frame.member = kTypeKey;
    } else if (frame.place.HoldsObject()) {
        StartObject(frame, *frame.place.type);
        ObjectKey(frame, firstKey);
    } else if (
        frame.place.HoldsAnything() && (firstKey == kReferenceTypeKey || firstKey == kReferenceIdKey)) {
        frame.kind = FrameKind::Reference;
        StartReference(frame);
        ReferenceKey(frame, firstKey);
    } else {
        throw Refusal{"expected \"$type\" as the first member, found " + Quote(firstKey)};
    }
}

void ValueBuilder::ReadTypeMember(std::string_view wireName) {
    Frame& frame = m_frames.back();
    const Place actual = ReadValueType(wireName, frame.place, m_options.version, m_types);
    if (actual.HoldsObject()) {
        StartObject(frame, *actual.type);
    } else {
        frame.kind = FrameKind::Box;
        frame.place = actual;
        frame.member = {};
    }
}

void ValueBuilder::StartReference(Frame& frame) {
    frame.member = {};
    m_reference = {};
}

void ValueBuilder::StartObject(Frame& frame, const Type& type) {
    CheckVersion(type, m_options.version);
    frame.kind = FrameKind::Object;
    frame.type = static_cast<const DataObjectType*>(&type);
    frame.value = Created(frame.type->New());
    frame.marks = m_marks.size();
    m_marks.resize(frame.marks + frame.type->GetProperties().size());
}

void ValueBuilder::StartArray(const Place& place) {
    if (place.type->GetKind() == TypeKind::Boolean) {
        throw Refusal{"there are no arrays of boolean"};
    }
    m_frames.emplace_back(FrameKind::Array, place).value = Created(place.type->NewArray());
}

void ValueBuilder::ObjectKey(Frame& frame, std::string_view name) {
    const std::size_t count = frame.type->GetProperties().size();
    const std::size_t position = FindPosition(*frame.type, frame.position, name);
    if (position == count && frame.type->IsOpen() && name != kTypeKey) {
        ContentKey(frame, name);
        return;
    }
    const bool isKnown =
        position < count && frame.type->GetProperties()[position]->IsPartOf(m_options.version);
    if (!isKnown && name != kTypeKey && m_options.lenient) {
        m_skipDepth = m_depth;
        return;
    }
    if (!isKnown) {
        RefuseUnknownProperty(frame, name);
    }
    TakeProperty(frame, position);
}

void ValueBuilder::TakeProperty(Frame& frame, std::size_t position) {
    const Property& property = *frame.type->GetProperties()[position];
    std::uint8_t& marks = m_marks[frame.marks + position];
    if ((marks & kSeen) != 0) {
        RefuseRepeated(property.GetNameText());
    }
    marks |= kSeen;
    frame.position = position + 1;
    frame.property = &property;
    if (property.GetType() == nullptr) {
        throw Refusal{std::string("the type ") + property.GetDescriptor().type->name + " is not registered"};
    }
}

void ValueBuilder::ContentKey(Frame& frame, std::string_view name) {
    if (frame.content == nullptr) {
        auto& object = static_cast<DataObject&>(*frame.value);
        frame.content = std::make_unique<OpenContentWriter>(*frame.type->GetOpenContent(object));
    }
    if (!frame.content->Name(name)) {
        RefuseRepeated(name);
    }
    m_content = frame.content.get();
}

void ValueBuilder::RefuseUnknownProperty(const Frame& frame, std::string_view name) const {
    if (name == kTypeKey) {
        throw Refusal{"\"$type\" must be the first member"};
    }
    if (const Property* const property = frame.type->FindProperty(name)) {
        throw Refusal{
            "property " + Quote(name) + " of " + property->GetOwner().GetWireName() + ' '
            + NotPartOf(*m_options.version, property->GetVersion())};
    }
    std::vector<std::string> names;
    for (const Property* property : frame.type->GetProperties()) {
        names.emplace_back(property->GetName());
    }
    throw Refusal{
        std::string(frame.type->GetWireName()) + " has no property " + Quote(name) + DidYouMean(name, names)};
}

void ValueBuilder::BoxKey(Frame& frame, std::string_view name) {
    if (name != kValueKey) {
        throw Refusal{"expected the member \"value\", found " + Quote(name)};
    }
    if (frame.hasValue) {
        RefuseRepeated(name);
    }
    frame.hasValue = true;
}

void ValueBuilder::ReferenceKey(Frame& frame, std::string_view name) const {
    if (name == kReferenceTypeKey) {
        if (m_reference.type != nullptr) {
            RefuseRepeated(name);
        }
        frame.member = kReferenceTypeKey;
    } else if (name == kReferenceIdKey) {
        if (m_reference.hasId) {
            RefuseRepeated(name);
        }
        frame.member = kReferenceIdKey;
    } else {
        throw Refusal{"a reference has the members \"mo\" and \"id\" only, found " + Quote(name)};
    }
}

void ValueBuilder::ReferenceMember(const Frame& frame, const Token& token) {
    if (token.kind != Token::Kind::String) {
        throw Refusal{kExpectedString};
    }
    if (frame.member == kReferenceIdKey) {
        m_reference.id = token.text;
        m_reference.hasId = true;
    } else {
        m_reference.type = ReadReferredType(token.text, frame.place, m_options.version, m_types);
    }
}

void ValueBuilder::CheckRequired(const Frame& frame) const {
    const auto properties = frame.type->GetProperties();
    for (std::size_t i = 0; i < properties.size(); ++i) {
        if ((m_marks[frame.marks + i] & kSet) == 0 && !properties[i]->IsOptional()) {
            RefuseMissing(frame);
            return;
        }
    }
}

/// Unless all that is missing is no part of the version.
void ValueBuilder::RefuseMissing(const Frame& frame) const {
    const auto properties = frame.type->GetProperties();
    std::vector<std::string> missing;
    for (std::size_t i = 0; i < properties.size(); ++i) {
        const Property& property = *properties[i];
        const bool isSet = (m_marks[frame.marks + i] & kSet) != 0;
        if (!isSet && !property.IsOptional() && property.IsPartOf(m_options.version)) {
            missing.push_back(
                std::string(property.IsArray() ? "elements of \"" : "\"") + property.GetName() + '"');
        }
    }
    if (!missing.empty()) {
        throw Refusal{std::string(frame.type->GetWireName()) + " lacks the required " + JoinNames(missing)};
    }
}

Pellum::Ref<Any> ValueBuilder::Finish(Frame& frame) {
    frame.property = nullptr; // what is wrong now is so with the whole
    switch (frame.kind) {
    case FrameKind::Object:
        CheckRequired(frame);
        m_marks.resize(frame.marks);
        frame.content.reset();
        break;
    case FrameKind::Box:
        if (frame.value.Get() == nullptr) {
            throw Refusal{"the member \"value\" is missing"};
        }
        break;
    default:
        if (m_reference.type == nullptr || !m_reference.hasId) {
            throw Refusal{
                std::string("the member \"") + (m_reference.hasId ? "mo" : "id")
                + "\" of the reference is missing"};
        }
        frame.value = new MoRef(&m_reference.type->GetInfo(), std::move(m_reference.id));
        break;
    }
    return std::move(frame.value);
}

void ValueBuilder::Store(const Place& place, const Token& token) {
    const ScalarReader reader(*place.type, token);
    if (m_frames.empty()) {
        reader.Read([&](const auto& value) { m_result = place.type->Box(&value); });
        return;
    }
    const bool isString = place.type->GetKind() == TypeKind::String;
    Frame& frame = m_frames.back();
    switch (frame.kind) {
    case FrameKind::Object:
        if (isString) {
            SetString(*frame.property, *frame.value, reader.ReadText());
        } else {
            reader.Read([&](const auto& value) { SetPlain(*frame.property, *frame.value, value); });
        }
        EndProperty(frame);
        break;
    case FrameKind::Array:
        if (isString) {
            static_cast<Array<std::string>&>(*frame.value).Append(std::string(reader.ReadText()));
        } else {
            auto& array = static_cast<ScalarArrayBase&>(*frame.value);
            reader.Read([&](const auto& value) { array._Append(&value); });
        }
        break;
    default: reader.Read([&](const auto& value) { frame.value = place.type->Box(&value); }); break;
    }
}

void ValueBuilder::Store(Pellum::Ref<Any> value) {
    if (m_frames.empty()) {
        m_result = std::move(value);
        return;
    }
    Frame& frame = m_frames.back();
    if (frame.kind == FrameKind::Object) {
        // An array is set by having an element.
        const bool isSet = !frame.property->IsArray() || !static_cast<const ArrayBase&>(*value).IsEmpty();
        SetCounted(*frame.property, *frame.value, std::move(value));
        if (isSet) {
            EndProperty(frame);
        }
        frame.property = nullptr;
    } else if (frame.kind == FrameKind::Box) {
        frame.value = std::move(value);
    } else if (IsDataKind(frame.place.type->GetKind())) {
        auto object = Pellum::Ref<DataObject>::Adopt(static_cast<DataObject*>(value.Detach()));
        static_cast<DataArrayBase&>(*frame.value).AppendOwned(std::move(object));
    } else {
        static_cast<ScalarArrayBase&>(*frame.value)._Append(value.Get());
    }
}

void ValueBuilder::EndProperty(Frame& frame) {
    m_marks[frame.marks + frame.position - 1] |= kSet;
    frame.property = nullptr;
}

} // namespace Tavik::Json
