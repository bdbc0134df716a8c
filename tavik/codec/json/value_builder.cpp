#include "tavik/codec/json/value_builder.h"

#include "tavik/codec/json/type_reader.h"
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

/// What is known of one property of an object that is being read.
enum PropertyMarks : std::uint8_t {
    kSeen = 0x1, ///< its key has been read
    kSet = 0x2,  ///< and it has a value
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
    : m_options(options), m_rootPlace(MakeRootPlace(options.expectedType)) {}

ValueBuilder::~ValueBuilder() = default;

void ValueBuilder::Restart(const Type* expected) {
    m_rootPlace = MakeRootPlace(expected);
    m_result.Reset();
}

void ValueBuilder::BeginObject() {
    Nest();
    if (m_skipDepth != kNotSkipping) {
        return;
    }
    if (m_content != nullptr) {
        m_content->BeginObject();
        return;
    }
    const Place place = GetPlace();
    const bool isRoot = m_frames.empty(); // where anything may name its type
    if (!isRoot && !place.HoldsAnything() && !place.HoldsObject() && !place.HoldsReference()) {
        throw Refusal{ExpectedButFound(place, kObject)};
    }
    m_frames.emplace_back(place.HoldsReference() ? FrameKind::Reference : FrameKind::Opened, place);
}

void ValueBuilder::EndObject() {
    --m_depth;
    if (m_skipDepth != kNotSkipping) {
        m_skipDepth = m_depth > m_skipDepth ? m_skipDepth : kNotSkipping;
        return;
    }
    if (m_content != nullptr) {
        m_content->EndObject();
        LeaveCompleteContent();
        return;
    }
    Frame& frame = m_frames.back();
    if (frame.kind == FrameKind::Opened) {
        if (!frame.place.HoldsObject()) {
            throw Refusal{ExpectedButFound(frame.place, "an empty object")};
        }
        StartObject(frame, *frame.place.type);
    }
    const Pellum::Ref<Any> value = Finish(frame);
    m_frames.pop_back();
    Store(value);
}

void ValueBuilder::BeginArray() {
    Nest();
    if (m_skipDepth != kNotSkipping) {
        return;
    }
    if (m_content != nullptr) {
        m_content->BeginArray();
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
    if (m_skipDepth != kNotSkipping) {
        m_skipDepth = m_depth > m_skipDepth ? m_skipDepth : kNotSkipping;
        return;
    }
    if (m_content != nullptr) {
        m_content->EndArray();
        LeaveCompleteContent();
        return;
    }
    const Pellum::Ref<Any> value = std::move(m_frames.back().value);
    m_frames.pop_back();
    Store(value);
}

void ValueBuilder::Key(std::string_view name) {
    if (m_skipDepth != kNotSkipping) {
        return;
    }
    if (m_content != nullptr) {
        if (!m_content->Name(name)) {
            RefuseRepeated(name);
        }
        return;
    }
    if (m_frames.back().kind == FrameKind::Opened) {
        DecideOpened(name);
        return;
    }
    Frame& frame = m_frames.back();
    switch (frame.kind) {
    case FrameKind::Box: BoxKey(frame, name); break;
    case FrameKind::Reference: ReferenceKey(frame, name); break;
    default: ObjectKey(frame, name); break;
    }
}

void ValueBuilder::Scalar(const Token& token) {
    CountValue();
    if (SkipsScalar()) {
        return;
    }
    if (m_content != nullptr) {
        WriteScalar(*m_content, token);
        LeaveCompleteContent();
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
    if (place.isArray && place.type->GetKind() == TypeKind::Byte) {
        const std::string bytes = ReadBytes(token);
        Store(Pellum::Ref<Any>(new Array<signed char>(std::vector<signed char>(bytes.begin(), bytes.end()))));
        return;
    }
    if (place.isArray || place.HoldsAnything() || place.HoldsObject() || place.HoldsReference()) {
        throw Refusal{ExpectedButFound(place, token.Describe())};
    }
    const PlainValue plain = ReadScalar(*place.type, token);
    std::visit([&](const auto& value) { Store(*place.type, &value); }, plain);
}

void ValueBuilder::Null() {
    CountValue();
    if (SkipsScalar()) {
        return;
    }
    if (m_content != nullptr) {
        m_content->Null();
        LeaveCompleteContent();
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

void ValueBuilder::CountValue() {
    if (++m_valueCount > m_options.limits.values) {
        throw Refusal{
            "there are more than " + std::to_string(m_options.limits.values) + " values, which is the limit"};
    }
}

void ValueBuilder::Nest() {
    CountValue();
    if (m_depth == m_options.limits.depth) {
        throw Refusal{
            "objects and arrays are nested deeper than the limit of "
            + std::to_string(m_options.limits.depth)};
    }
    ++m_depth;
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

void ValueBuilder::LeaveCompleteContent() {
    if (m_content->IsComplete()) {
        m_content = nullptr;
    }
}

Place ValueBuilder::GetPlace() const {
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
        ReferenceKey(frame, firstKey);
    } else {
        throw Refusal{"expected \"$type\" as the first member, found " + Quote(firstKey)};
    }
}

void ValueBuilder::ReadTypeMember(std::string_view wireName) {
    Frame& frame = m_frames.back();
    const Place actual = ReadValueType(wireName, frame.place, m_options.version);
    if (actual.HoldsObject()) {
        StartObject(frame, *actual.type);
    } else {
        frame.kind = FrameKind::Box;
        frame.place = actual;
        frame.member = {};
    }
}

void ValueBuilder::StartObject(Frame& frame, const Type& type) const {
    CheckVersion(type, m_options.version);
    frame.kind = FrameKind::Object;
    frame.type = static_cast<const DataObjectType*>(&type);
    frame.value = Created(frame.type->New());
    frame.marks.resize(frame.type->GetProperties().size());
}

void ValueBuilder::StartArray(const Place& place) {
    if (place.type->GetKind() == TypeKind::Boolean) {
        throw Refusal{"there are no arrays of boolean"};
    }
    const auto array = Created(place.type->NewArray());
    Frame& frame = m_frames.emplace_back(FrameKind::Array, place);
    frame.value = array;
    frame.objects = dynamic_cast<DataArrayBase*>(array.Get());
    frame.scalars = dynamic_cast<ScalarArrayBase*>(array.Get());
}

void ValueBuilder::ObjectKey(Frame& frame, std::string_view name) {
    const auto& properties = frame.type->GetProperties();
    // Members mostly come in the order of the properties.
    std::size_t position = frame.position;
    if (position >= properties.size() || name != properties[position]->GetName()) {
        const Property* const found = frame.type->FindProperty(name);
        position = found != nullptr ? frame.type->GetPosition(*found) : properties.size();
    }
    if (position == properties.size() && frame.type->IsOpen() && name != kTypeKey) {
        ContentKey(frame, name);
        return;
    }
    const bool isKnown = position < properties.size() && properties[position]->IsPartOf(m_options.version);
    if (!isKnown && name != kTypeKey && m_options.lenient) {
        m_skipDepth = m_depth;
        return;
    }
    if (!isKnown) {
        RefuseUnknownProperty(frame, name);
    }
    if ((frame.marks[position] & kSeen) != 0) {
        RefuseRepeated(name);
    }
    frame.marks[position] |= kSeen;
    frame.position = position + 1;
    frame.property = properties[position];
    if (frame.property->GetType() == nullptr) {
        throw Refusal{
            std::string("the type ") + frame.property->GetDescriptor().type->name + " is not registered"};
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

void ValueBuilder::ReferenceKey(Frame& frame, std::string_view name) {
    if (name == kReferenceTypeKey) {
        if (frame.referred != nullptr) {
            RefuseRepeated(name);
        }
        frame.member = kReferenceTypeKey;
    } else if (name == kReferenceIdKey) {
        if (frame.hasId) {
            RefuseRepeated(name);
        }
        frame.member = kReferenceIdKey;
    } else {
        throw Refusal{"a reference has the members \"mo\" and \"id\" only, found " + Quote(name)};
    }
}

void ValueBuilder::ReferenceMember(Frame& frame, const Token& token) const {
    if (token.kind != Token::Kind::String) {
        throw Refusal{kExpectedString};
    }
    if (frame.member == kReferenceIdKey) {
        frame.id = token.text;
        frame.hasId = true;
    } else {
        frame.referred = ReadReferredType(token.text, frame.place, m_options.version);
    }
}

void ValueBuilder::CheckRequired(const Frame& frame) const {
    const auto& properties = frame.type->GetProperties();
    std::vector<std::string> missing;
    for (std::size_t i = 0; i < properties.size(); ++i) {
        const Property& property = *properties[i];
        if (property.IsOptional() || !property.IsPartOf(m_options.version)) {
            continue;
        }
        // A number in the object is always set; an array is so by having an element.
        if ((frame.marks[i] & kSet) == 0 || !property.IsSet(frame.value.Get())) {
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
        frame.content.reset();
        break;
    case FrameKind::Box:
        if (frame.value.Get() == nullptr) {
            throw Refusal{"the member \"value\" is missing"};
        }
        break;
    default:
        if (frame.referred == nullptr || !frame.hasId) {
            throw Refusal{
                std::string("the member \"") + (frame.hasId ? "mo" : "id")
                + "\" of the reference is missing"};
        }
        frame.value = new MoRef(&frame.referred->GetInfo(), std::move(frame.id));
        break;
    }
    return std::move(frame.value);
}

void ValueBuilder::Store(const Type& type, const void* plain) {
    if (m_frames.empty()) {
        m_result = type.Box(plain);
        return;
    }
    Frame& frame = m_frames.back();
    if (frame.kind == FrameKind::Array) {
        frame.scalars->_Append(plain);
    } else if (frame.kind == FrameKind::Box) {
        frame.value = type.Box(plain);
    } else {
        frame.property->Set(frame.value.Get(), plain);
        frame.marks[frame.position - 1] |= kSet;
        frame.property = nullptr;
    }
}

void ValueBuilder::Store(const Pellum::Ref<Any>& value) {
    if (m_frames.empty()) {
        m_result = value;
        return;
    }
    Frame& frame = m_frames.back();
    if (frame.objects != nullptr) {
        frame.objects->AppendChecked(value.Get());
    } else if (frame.scalars != nullptr) {
        frame.scalars->_Append(value.Get());
    } else if (frame.kind == FrameKind::Box) {
        frame.value = value;
    } else {
        frame.property->Set(frame.value.Get(), value.Get());
        frame.marks[frame.position - 1] |= kSet;
        frame.property = nullptr;
    }
}

} // namespace Tavik::Json
