#pragma once

#include "tavik/type/type_of.h"
#include "tavik/value/array_base.h"
#include "tavik/value/cast.h"
#include "tavik/value/clone.h"
#include "tavik/value/compare.h"
#include "tavik/value/mo_ref.h"
#include "tavik/value/property_diff_set.h"

#include <algorithm>
#include <cstring>
#include <initializer_list>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace Tavik {

/// Calls `diffCommon(i, path)` for every index that both arrays have and lists the paths of those that one
/// has more.
template <class DiffCommon>
void DiffElements(
    std::size_t lengthA, std::size_t lengthB, const std::string& prefix, PropertyDiffSet& diffs,
    DiffCommon diffCommon) {
    const std::size_t common = std::min(lengthA, lengthB);
    std::string path;
    for (std::size_t i = 0; i < std::max(lengthA, lengthB); ++i) {
        path.assign(prefix);
        AppendIndex(path, i);
        if (i < common) {
            diffCommon(i, path);
        } else {
            diffs.Add(path);
        }
    }
}

/// An array whose elements are plain values or references: all that does not depend on their C++ type.
class TAVIK_API ScalarArrayBase : public ArrayBase {
public:
    ~ScalarArrayBase() override;

    /// Borrowed address of the element at `index` (below the length): of its plain value, or the held pointer
    /// itself for references.
    virtual const void* _GetElementPointer(std::size_t index) const = 0;
    /// Appends the plain value at `*value`; for references `value` is the `Any*` itself, of which a count is
    /// taken. Throws `Pellum::TypeMismatchException` for one of another class.
    virtual void _Append(const void* value) = 0;

protected:
    ScalarArrayBase() noexcept = default;
    ScalarArrayBase(const ScalarArrayBase&) noexcept = default;
};

template <class T>
struct IsRef : std::false_type {};

template <class T>
struct IsRef<Pellum::Ref<T>> : std::true_type {
    using Target = T;
};

/// An array of strings, numbers, bytes, enumeration values, type names, or counted references to values that
/// are no data objects (`Pellum::Ref<MoRef>`, `Pellum::Ref<Any>`).
template <class T>
class TAVIK_TEMPLATE_API Array final : public ScalarArrayBase {
    static_assert(!std::is_same_v<T, bool>, "an array of booleans has no addressable elements");

public:
    Array() noexcept = default;

    TAVIK_TEMPLATE_MEMBER explicit Array(std::vector<T> elements) : m_elements(std::move(elements)) {}

    TAVIK_TEMPLATE_MEMBER Array(std::initializer_list<T> elements) : m_elements(elements) {}

    TAVIK_TEMPLATE_MEMBER Type* _GetType() const override { return Type::GetArrayType(TypeOf<T>()); }

    TAVIK_TEMPLATE_MEMBER Array* _Clone() const override { return CloneObject(*this); }

    TAVIK_TEMPLATE_MEMBER Type* _GetElementType() const override { return TypeOf<T>(); }

    TAVIK_TEMPLATE_MEMBER std::size_t GetLength() const override { return m_elements.size(); }

    TAVIK_TEMPLATE_MEMBER bool _IsEqual(const Any* other, bool partial) const override {
        const auto& that = static_cast<const Array&>(*other);
        return std::equal(
            m_elements.begin(), m_elements.end(), that.m_elements.begin(), that.m_elements.end(),
            [partial](const T& a, const T& b) { return AreElementsEqual(a, b, partial); });
    }

    TAVIK_TEMPLATE_MEMBER void _DiffProperties(
        const Any* other, const std::string& prefix, PropertyDiffSet& diffs) const override {
        const auto& that = static_cast<const Array&>(*other);
        DiffElements(
            GetLength(), that.GetLength(), prefix, diffs, [&](std::size_t i, const std::string& path) {
                if (!AreElementsEqual(m_elements[i], that.m_elements[i], false)) {
                    diffs.Add(path);
                }
            });
    }

    TAVIK_TEMPLATE_MEMBER const void* _GetElementPointer(std::size_t index) const override {
        if constexpr (IsRef<T>::value) {
            return static_cast<const Any*>(m_elements[index].Get());
        } else {
            return &m_elements[index];
        }
    }

    TAVIK_TEMPLATE_MEMBER void _Append(const void* value) override {
        if constexpr (IsRef<T>::value) {
            auto* element = const_cast<Any*>(static_cast<const Any*>(value));
            m_elements.emplace_back(CastReference<typename IsRef<T>::Target>(element));
        } else if constexpr (std::is_enum_v<T>) {
            T element{};
            std::memcpy(&element, value, sizeof(element));
            m_elements.push_back(element);
        } else {
            m_elements.push_back(*static_cast<const T*>(value));
        }
    }

    TAVIK_TEMPLATE_MEMBER const T& operator[](std::size_t index) const { return m_elements[index]; }

    TAVIK_TEMPLATE_MEMBER T& operator[](std::size_t index) { return m_elements[index]; }

    TAVIK_TEMPLATE_MEMBER void Append(T value) { m_elements.push_back(std::move(value)); }

    TAVIK_TEMPLATE_MEMBER const std::vector<T>& GetElements() const { return m_elements; }

    TAVIK_TEMPLATE_MEMBER std::vector<T>& GetElements() { return m_elements; }

private:
    friend struct ObjectCloner;

    TAVIK_TEMPLATE_MEMBER Array(const Array& other) : ScalarArrayBase(other) {
        if constexpr (IsRef<T>::value) {
            m_elements.resize(other.m_elements.size());
            for (std::size_t i = 0; i < m_elements.size(); ++i) {
                CloneInto(&m_elements[i], other.m_elements[i].Get());
            }
        } else {
            m_elements = other.m_elements;
        }
    }

    TAVIK_TEMPLATE_MEMBER static bool AreElementsEqual(const T& a, const T& b, bool partial) {
        if constexpr (IsRef<T>::value) {
            return AreEqualAnysInt(a.Get(), b.Get(), 0, partial);
        } else {
            return a == b;
        }
    }

    std::vector<T> m_elements;
};

extern template class TAVIK_INSTANTIATION_API(TAVIK_API) Array<std::string>;
extern template class TAVIK_INSTANTIATION_API(TAVIK_API) Array<signed char>;
extern template class TAVIK_INSTANTIATION_API(TAVIK_API) Array<std::int32_t>;
extern template class TAVIK_INSTANTIATION_API(TAVIK_API) Array<TypeName>;
extern template class TAVIK_INSTANTIATION_API(TAVIK_API) Array<Pellum::Ref<MoRef>>;

} // namespace Tavik
