#pragma once

#include "pellum/error/exception.h"

#include <string>
#include <string_view>
#include <typeinfo>

namespace Pellum {

/// A value of one class reached a place that takes another.
class PELLUM_API TypeMismatchException : public ExceptionImpl<TypeMismatchException> {
public:
    /// `expected` and `received` are the names of the two types, for people to read.
    TypeMismatchException(std::string expected, std::string received);
    TypeMismatchException(const TypeMismatchException& other);
    TypeMismatchException& operator=(const TypeMismatchException& other);
    ~TypeMismatchException() override;

    [[nodiscard]] const std::string& GetExpected() const noexcept { return m_expected; }

    [[nodiscard]] const std::string& GetReceived() const noexcept { return m_received; }

private:
    std::string m_expected;
    std::string m_received;
};

/// Throws a `TypeMismatchException`: the type that was expected first, the one that came second.
[[noreturn]] PELLUM_API void ThrowTypeMismatchException(
    const std::type_info& expected, const std::type_info& received);
[[noreturn]] PELLUM_API void ThrowTypeMismatchException(std::string_view expected, std::string_view received);

} // namespace Pellum
