#include "pellum/error/exception.h"

namespace Pellum {

Exception::Exception(const Exception& other) noexcept = default;

Exception& Exception::operator=(const Exception& other) noexcept = default;

Exception::~Exception() = default;

Exception* Exception::Clone() const {
    return new (std::nothrow) Exception(*this);
}

void Exception::Throw() {
    throw Exception(*this);
}

} // namespace Pellum
