#pragma once

#include "pellum/object/ref.h"
#include "tavik/codec/json/event_parser.h"
#include "tavik/codec/json/json.h"
#include "tavik/codec/json/scalar_reader.h"
#include "tavik/codec/json/type_reader.h"
#include "tavik/codec/json/wording.h"
#include "tavik/value/open_writer.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Tavik {

class DataObjectType;
class Property;

namespace Json {

/// Builds a value out of the events of a JSON parser. What is begun and not ended waits on a stack of its
/// own, so that the depth of the document costs no program stack here.
class ValueBuilder final : public EventSink {
public:
    /// `options` is borrowed and outlives the builder.
    explicit ValueBuilder(const DecodeOptions& options);
    ~ValueBuilder();

    void BeginObject() override;
    void EndObject() override;
    void BeginArray() override;
    void EndArray() override;
    void Key(std::string_view name) override;
    void Scalar(const Token& token) override;
    void Null() override;
    std::string GetPath() const override;

    /// Begins another value, of `expected` or derived from it (null for any), once there is none or the last
    /// one is complete. The limit of values is for all of them together.
    void Restart(const Type* expected);

    /// Whether the value is complete.
    bool IsComplete() const { return m_result.Get() != nullptr; }

    /// The value, once it is complete.
    const Pellum::Ref<Any>& GetResult() const { return m_result; }

private:
    /// What a JSON object or array turned out to be.
    enum class FrameKind {
        Opened,    ///< an object of which only the brace has been read, and perhaps the key "$type"
        Object,    ///< a data object
        Array,     ///< an array
        Box,       ///< the object around a scalar or array that names its type
        Reference, ///< a managed reference
    };

    /// Kept small: there is one for every object and array of a document.
    struct Frame {
        Frame(FrameKind frameKind, const Place& framePlace) : kind(frameKind), place(framePlace) {}

        FrameKind kind;
        /// Declaration of the place that the whole stands in; for a box, of the value in it.
        Place place;

        /// The object or array as far as it has been read; the content of a box.
        Pellum::Ref<Any> value;

        // Of data objects.
        const DataObjectType* type = nullptr;
        const Property* property = nullptr;         ///< the one whose value comes next
        std::size_t position = 0;                   ///< of that property in the type's list
        std::size_t marks = 0;                      ///< where those of the first property are in `m_marks`
        std::unique_ptr<OpenContentWriter> content; ///< of an open type, once there is something to write

        // Of boxes and references.
        std::string_view member; ///< the one whose value comes next; a literal
        bool hasValue = false;
    };

    /// A managed reference as far as it has been read. Nothing is nested in one, so one will do.
    struct Reference {
        const Type* type = nullptr;
        std::string id;
        bool hasId = false;
    };

    void CountValue();
    void Nest();

    /// Whether what comes is no part of the objects and arrays that are begun: an unknown member, which is
    /// passed over or is content.
    bool IsAside() const { return m_skipDepth != kNotSkipping || m_content != nullptr; }

    /// Passes over the scalar that comes; returns whether there is one to pass over.
    bool SkipsScalar();
    void EndAside();
    /// Ends the unknown property of an open type when it has its whole value.
    void LeaveCompleteContent();
    /// Where the value that begins belongs.
    Place GetPlace() const;

    void DecideOpened(std::string_view firstKey);
    void ReadTypeMember(std::string_view wireName);
    void StartReference(Frame& frame);
    void StartObject(Frame& frame, const Type& type);
    void StartArray(const Place& place);
    void ObjectKey(Frame& frame, std::string_view name);
    void TakeProperty(Frame& frame, std::size_t position);
    void ContentKey(Frame& frame, std::string_view name);
    void BoxKey(Frame& frame, std::string_view name);
    void ReferenceKey(Frame& frame, std::string_view name) const;
    void ReferenceMember(const Frame& frame, const Token& token);
    void CheckRequired(const Frame& frame) const;
    void RefuseMissing(const Frame& frame) const;
    Pellum::Ref<Any> Finish(Frame& frame);

    [[noreturn]] void RefuseUnknownProperty(const Frame& frame, std::string_view name) const;

    // These put a complete value into the place that it belongs to.
    void Store(const Place& place, const Token& token);
    void Store(Pellum::Ref<Any> value);
    /// The property of the object has its value.
    void EndProperty(Frame& frame);

    const DecodeOptions& m_options;

    Place m_rootPlace;
    std::vector<Frame> m_frames;
    std::vector<std::uint8_t> m_marks; ///< `PropertyMarks` of each property of all objects that are begun
    Reference m_reference;             ///< the one that is being read
    TypeFinder m_types;
    Pellum::Ref<Any> m_result;
    std::size_t m_valueCount = 0;
    std::size_t m_depth = 0;
    /// Nesting within the unknown member that is being passed over; `kNotSkipping` outside of one.
    static constexpr std::size_t kNotSkipping = static_cast<std::size_t>(-1);
    std::size_t m_skipDepth = kNotSkipping;
    /// What takes the unknown property of an open type that is being read; null outside of one.
    OpenContentWriter* m_content = nullptr;
};

} // namespace Json
} // namespace Tavik
