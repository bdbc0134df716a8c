#pragma once

#include "tavik/type/type.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Tavik {

template <class T>
class Array;

/// The functions that know an enumeration's C++ type.
struct EnumFuncs {
    /// The integer of a boxed value; throws `Pellum::TypeMismatchException` for a value of another class.
    std::int32_t (*unbox)(const Any* boxed);
    /// A new boxed value, created with no count.
    Any* (*box)(std::int32_t value);
    /// The tag of a boxed value; throws like `unbox`, and like `EnumType::GetTag`.
    const char* (*tagOfBoxed)(const Any* boxed);
    /// A new array with the values of the tags, created with no count; throws like `EnumType::GetValue`.
    ArrayBase* (*arrayFromTags)(const Array<std::string>& tags);
    /// A new empty array, created with no count.
    ArrayBase* (*createArray)();
};

/// An enumeration. A value is the position of its tag in the declared list.
class TAVIK_API EnumType : public Type {
public:
    /// Both records are borrowed.
    EnumType(const EnumTypeInfo* info, const EnumFuncs* functions);
    ~EnumType() override;

    const EnumTypeInfo& GetEnumTypeInfo() const { return *m_enumInfo; }

    const EnumFuncs& GetFunctions() const { return *m_functions; }

    /// The tags in value order, borrowed.
    const std::vector<const char*>& GetTags() const { return m_tags; }

    /// The tag of a value; throws `Pellum::Exception` for a number that is no value.
    const char* GetTag(std::int32_t value) const;
    /// The value of a tag, compared exactly; throws `Pellum::Exception` for a text that is no tag.
    std::int32_t GetValue(const std::string& tag) const;
    /// Like `GetValue`, but answers -1 for a text that is no tag.
    std::int32_t FindValue(std::string_view tag) const;

    ArrayBase* NewArray() const override;
    Any* Box(const void* value) const override;

private:
    const EnumTypeInfo* m_enumInfo;
    const EnumFuncs* m_functions;
    std::vector<const char*> m_tags;
    std::string m_marks; ///< of the tags
};

} // namespace Tavik
