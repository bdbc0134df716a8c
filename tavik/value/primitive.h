#pragma once

#include "tavik/type/type_of.h"
#include "tavik/value/any.h"
#include "tavik/value/clone.h"
#include "tavik/value/property_diff_set.h"

#include <utility>

namespace Tavik {

/// A boxed scalar: all that does not depend on its C++ type.
class TAVIK_API PrimitiveBase : public Any {
public:
    ~PrimitiveBase() override;

    /// Borrowed address of the plain value.
    virtual const void* _GetValuePointer() const = 0;

protected:
    PrimitiveBase() noexcept = default;
    PrimitiveBase(const PrimitiveBase&) noexcept = default;
};

template <class T>
class Primitive;

/// Where boxed values are shared instead of made anew.
template <class T>
struct PrimitiveFactory;

/// The two boxed booleans that everybody shares, held for ever by a count of their own.
template <>
struct TAVIK_API PrimitiveFactory<bool> {
    static Primitive<bool>* const sTrue;
    static Primitive<bool>* const sFalse;

    static Primitive<bool>* Get(bool value) { return value ? sTrue : sFalse; }
};

/// A scalar, string, date-time, binary or enumeration value boxed as an `Any`.
template <class T>
class TAVIK_TEMPLATE_API Primitive : public PrimitiveBase {
public:
    TAVIK_TEMPLATE_MEMBER explicit Primitive(T value) : m_value(std::move(value)) {}

    TAVIK_TEMPLATE_MEMBER const T& GetValue() const { return m_value; }

    TAVIK_TEMPLATE_MEMBER Type* _GetType() const override { return TypeOf<T>(); }

    TAVIK_TEMPLATE_MEMBER Primitive* _Clone() const override { return CloneObject(*this); }

    TAVIK_TEMPLATE_MEMBER bool _IsEqual(const Any* other, bool /*partial*/) const override {
        return m_value == static_cast<const Primitive&>(*other).m_value;
    }

    TAVIK_TEMPLATE_MEMBER void _DiffProperties(
        const Any* other, const std::string& prefix, PropertyDiffSet& diffs) const override {
        if (!_IsEqual(other, false)) {
            diffs.Add(prefix);
        }
    }

    TAVIK_TEMPLATE_MEMBER const void* _GetValuePointer() const override { return &m_value; }

    using Factory = PrimitiveFactory<T>;

private:
    friend struct ObjectCloner;
    Primitive(const Primitive&) = default;

    T m_value;
};

extern template class TAVIK_INSTANTIATION_API(TAVIK_API) Primitive<bool>;
extern template class TAVIK_INSTANTIATION_API(TAVIK_API) Primitive<signed char>;
extern template class TAVIK_INSTANTIATION_API(TAVIK_API) Primitive<std::int32_t>;
extern template class TAVIK_INSTANTIATION_API(TAVIK_API) Primitive<std::int64_t>;
extern template class TAVIK_INSTANTIATION_API(TAVIK_API) Primitive<float>;
extern template class TAVIK_INSTANTIATION_API(TAVIK_API) Primitive<std::string>;
extern template class TAVIK_INSTANTIATION_API(TAVIK_API) Primitive<Pellum::System::DateTime>;
extern template class TAVIK_INSTANTIATION_API(TAVIK_API) Primitive<std::vector<std::uint8_t>>;
extern template class TAVIK_INSTANTIATION_API(TAVIK_API) Primitive<TypeName>;
extern template class TAVIK_INSTANTIATION_API(TAVIK_API) Primitive<PropertyPath>;

} // namespace Tavik
