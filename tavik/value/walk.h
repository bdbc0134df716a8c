#pragma once

#include "tavik/export.h"
#include "tavik/value/open_content.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Tavik {

class Any;
class ArrayBase;
class DataObject;
class DataObjectType;
class MoRef;
class PrimitiveBase;
class Property;
class Type;

/// A member inside of open content.
struct TAVIK_API OpenMember {
    std::string_view name;
    /// The object has a described member of that name already, so messages have no place for it.
    bool isTaken;

    /// By its name; see `IsSecretName`.
    bool IsSecret() const;
};

/// What is wrong with an `OpenMember` whose name is taken.
inline constexpr const char* kTakenName = "has the name of a described member of its object";

/// What a `ValueWalker` tells of a value, in document order. `declared` is the type that the place has by its
/// descriptor; null where there is none (the root) or where it is `anyType`.
class TAVIK_API ValueVisitor {
public:
    virtual ~ValueVisitor();

    /// An object begins; false passes over its properties, and no `EndObject` follows.
    virtual bool BeginObject(const DataObject& object, const DataObjectType& type, const Type* declared) = 0;
    virtual void EndObject() = 0;
    /// Every property of the object, inherited ones first; true visits the value if it is set.
    virtual bool VisitProperty(const Property& property, bool isSet) = 0;
    /// An array begins; false passes over its elements, and no `EndArray` follows.
    virtual bool BeginArray(const ArrayBase& array, const Type& elementType, const Type* declared) = 0;
    virtual void EndArray() = 0;
    /// An element is about to be visited.
    virtual void VisitElement(std::size_t index) = 0;
    /// A plain value, by its address; `boxed` when it stands alone as an `Any` where nothing declares its
    /// type.
    virtual void VisitScalar(const Type& type, const void* value, bool boxed) = 0;
    virtual void VisitReference(const MoRef& reference, const Type* declared) = 0;
    /// An element that is null, or a root that is.
    virtual void VisitNull() = 0;
    /// A member of open content, or of an object inside of it; true visits the value. The properties that the
    /// type of an object describes come before those that it does not.
    virtual bool VisitOpenMember(const OpenMember& member) = 0;
    /// A value inside of open content. Of an object or array, false passes over what is in it, and no
    /// `EndOpenValue` follows. Elements are told of by `VisitElement`, too.
    virtual bool VisitOpenValue(const OpenValue& value) = 0;
    virtual void EndOpenValue(const OpenValue& value) = 0;
    /// A value that can not be looked into, because no library has registered its type.
    virtual void VisitUnknown() = 0;
};

/// Leads a visitor through a value. The stack used does not grow with the depth of the value. The value must
/// not be changed meanwhile.
class TAVIK_API ValueWalker {
public:
    explicit ValueWalker(ValueVisitor& visitor);
    ~ValueWalker();

    /// `root` may be null. `declared` is the type of the place that holds it, which may be an array's; null
    /// for none.
    void Walk(const Any* root, const Type* declared);
    /// The same for a value inside of open content.
    void Walk(const OpenValue& root);
    /// Path of the place that is being visited: "source.location.port", "disk[2].size"; empty at the root.
    std::string GetPath() const;

    /// Number of objects and arrays around that place.
    std::size_t GetDepth() const { return m_frames.size() + m_openFrames.size(); }

private:
    /// An object or array that has been begun and not ended.
    struct Frame {
        const DataObject* object; ///< null for an array
        const DataObjectType* type;
        const ArrayBase* array;
        const Type* elementType;
        std::size_t next; ///< the property or element to visit next
    };

    /// Open content, or an object or array in it, that has been begun and not ended.
    struct OpenFrame {
        OpenItems::Iterator next;
        OpenItems::Iterator end;
        std::optional<OpenValue> value; ///< nothing for the content of a whole object
        std::size_t count;              ///< of the items that have been begun
        std::string_view member;        ///< the last one's name
    };

    void Run();
    void Enter(const Any* value, const Type* declared);
    void EnterHeld(const Any* value, const Type& declared);
    void EnterObject(const DataObject& object, const Type* declared);
    void EnterArray(const ArrayBase& array, const Type* declaredElement);
    void EnterBoxed(const PrimitiveBase& boxed, const Type* declared);
    void VisitProperties();
    void VisitElements();
    void EnterOpenValue(const OpenValue& value);
    void VisitNextOpenItem();
    bool IsTaken(std::string_view name) const;

    ValueVisitor& m_visitor;
    std::vector<Frame> m_frames;
    std::vector<OpenFrame> m_openFrames; ///< inside of the last of `m_frames`
};

} // namespace Tavik
