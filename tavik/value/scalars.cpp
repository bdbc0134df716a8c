#include "tavik/value/primitive.h"
#include "tavik/value/scalar_array.h"

/// The instantiations of boxed scalars and scalar arrays that the runtime itself holds.
namespace Tavik {

PrimitiveBase::~PrimitiveBase() = default;
ScalarArrayBase::~ScalarArrayBase() = default;

template class Primitive<bool>;
template class Primitive<signed char>;
template class Primitive<std::int32_t>;
template class Primitive<std::int64_t>;
template class Primitive<float>;
template class Primitive<std::string>;
template class Primitive<Pellum::System::DateTime>;
template class Primitive<std::vector<std::uint8_t>>;
template class Primitive<TypeName>;
template class Primitive<PropertyPath>;

template class Array<std::string>;
template class Array<signed char>;
template class Array<std::int32_t>;
template class Array<TypeName>;
template class Array<Pellum::Ref<MoRef>>;

namespace {

Primitive<bool>* MakeShared(bool value) {
    auto* shared = new Primitive<bool>(value);
    shared->IncRef();
    return shared;
}

} // namespace

Primitive<bool>* const PrimitiveFactory<bool>::sTrue = MakeShared(true);
Primitive<bool>* const PrimitiveFactory<bool>::sFalse = MakeShared(false);

} // namespace Tavik
