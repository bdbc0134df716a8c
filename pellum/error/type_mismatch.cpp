#include "pellum/error/type_mismatch.h"

#include "pellum/text/demangle.h"

#include <utility>

namespace Pellum {

TypeMismatchException::TypeMismatchException(std::string expected, std::string received)
    : ExceptionImpl("type mismatch: expected " + expected + ", received " + received),
      m_expected(std::move(expected)),
      m_received(std::move(received)) {}

TypeMismatchException::TypeMismatchException(const TypeMismatchException& other) = default;

TypeMismatchException& TypeMismatchException::operator=(const TypeMismatchException& other) = default;

TypeMismatchException::~TypeMismatchException() = default;

void ThrowTypeMismatchException(const std::type_info& expected, const std::type_info& received) {
    throw TypeMismatchException(Demangle(expected), Demangle(received));
}

void ThrowTypeMismatchException(std::string_view expected, std::string_view received) {
    throw TypeMismatchException(std::string(expected), std::string(received));
}

} // namespace Pellum
