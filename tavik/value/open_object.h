#pragma once

#include "tavik/fault/method_fault.h"
#include "tavik/template_export.h"
#include "tavik/type/data_object_type.h"
#include "tavik/value/open_content.h"
#include "tavik/value/property_diff_set.h"

#include <string>
#include <type_traits>

namespace Tavik {

/// What an object of an open type derives from: `Base`, with content that carries whatever properties the
/// base does not describe. Every class derived from it has the content, too. Clone, equality and difference
/// take it in; the runtime finds it through the type (`DataObjectType::GetOpenContent`).
template <class Base>
class TAVIK_TEMPLATE_API OpenObject : public Base {
public:
    /// The content, borrowed.
    OpenContent& _GetContent() { return m_content; }

    const OpenContent& _GetContent() const { return m_content; }

    bool _IsEqual(const Any* other, bool partial) const override {
        return Base::_IsEqual(other, partial)
            && m_content.IsEqual(static_cast<const OpenObject*>(other)->m_content, partial);
    }

    void _DiffProperties(const Any* other, const std::string& prefix, PropertyDiffSet& diffs) const override {
        Base::_DiffProperties(other, prefix, diffs);
        // The difference of the runtime's classes works from the type, which knows the content if it is open.
        constexpr bool kWorksFromType =
            std::is_same_v<Base, DynamicData> || std::is_base_of_v<MethodFault, Base>;
        const DataObjectType* type = this->_GetDataType();
        if (!kWorksFromType || type == nullptr || !type->IsOpen()) {
            m_content.Diff(static_cast<const OpenObject*>(other)->m_content, prefix, diffs);
        }
    }

protected:
    OpenObject() = default;
    OpenObject(const OpenObject&) = default;

private:
    OpenContent m_content;
};

// On Windows an instantiation exports no inline function, which derived classes inherit: every library has
// its own there.
#if !defined(_WIN32)
extern template class TAVIK_INSTANTIATION_API(TAVIK_API) OpenObject<DynamicData>;
extern template class TAVIK_INSTANTIATION_API(TAVIK_API) OpenObject<MethodFault>;
extern template class TAVIK_INSTANTIATION_API(TAVIK_API) OpenObject<RuntimeFault>;
#endif

/// Base of the open data types that name no other.
using OpenData = OpenObject<DynamicData>;

/// `OpenContentFunction` of a class that has content and of those derived from it.
template <class T>
OpenContent* OpenContentOf(DataObject* object) {
    return &static_cast<T*>(object)->_GetContent();
}

} // namespace Tavik
