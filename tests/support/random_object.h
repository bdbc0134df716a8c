#pragma once

#include "pellum/object/ref.h"
#include "tavik/type/data_object_type.h"
#include "tavik/value/data_object.h"
#include "tavik/value/open_writer.h"

#include <random>
#include <vector>

namespace TestSupport {

/// All loaded data and fault types, in slot order, library by library; borrowed.
std::vector<const Tavik::DataObjectType*> AllDataTypes();

/// Makes objects of any registered type from the type's descriptors alone. The same seed gives the same
/// objects.
class RandomObjects {
public:
    /// How much of an object is filled.
    enum class Fill {
        Least, ///< what is required and nothing else
        Some,  ///< each optional property or not, as it comes
        All,   ///< every property
    };

    explicit RandomObjects(Fill fill = Fill::Some, unsigned seed = 1);

    /// A valid object: whatever is required is set, values are of the declared types or derived from them,
    /// and open types have content.
    /// Nests about three levels deep; optional objects end there.
    Pellum::Ref<Tavik::DataObject> Make(const Tavik::DataObjectType& type);
    /// Gives a property of an object a new value.
    void SetRandom(Tavik::DataObject& object, const Tavik::Property& property);
    /// A value for a property: a boxed value, an object, an array or a reference.
    Pellum::Ref<Tavik::Any> MakeValue(const Tavik::Property& property);
    /// The same for a parameter, a result or a property of a managed type; null at times when it may be
    /// unset.
    Pellum::Ref<Tavik::Any> MakeValue(const Tavik::PropertyDescriptor& declared);

private:
    Pellum::Ref<Tavik::DataObject> MakeDerived(const Tavik::DataObjectType& declared);
    Pellum::Ref<Tavik::Any> MakeElement(const Tavik::Type& type);
    Pellum::Ref<Tavik::Any> MakeScalar(const Tavik::Type& type);
    Pellum::Ref<Tavik::Any> MakeAny();
    Pellum::Ref<Tavik::Any> MakeArray(const Tavik::Type& elementType);
    void FillContent(Tavik::OpenContent& content);
    void WriteOpenValue(Tavik::OpenContentWriter& writer, int depth);
    std::string MakeText();
    bool FillsOptional();
    std::size_t Below(std::size_t limit);

    Fill m_fill;
    std::mt19937 m_engine;
    int m_depth = 0;
    std::vector<const Tavik::DataObjectType*> m_types;
};

} // namespace TestSupport
