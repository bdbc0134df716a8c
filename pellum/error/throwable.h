#pragma once

#include "pellum/export.h"
#include "pellum/object/ref.h"
#include "pellum/system/backtrace.h"

#include <exception>
#include <iosfwd>
#include <string>

namespace Pellum {

/// Root of everything this system throws: a message and the place where it was constructed.
///
/// Copies share the backtrace.
class PELLUM_API Throwable : public std::exception {
public:
    explicit Throwable(std::string message);
    Throwable(const Throwable& other);
    Throwable& operator=(const Throwable& other);
    ~Throwable() override;

    /// The message, borrowed from this object.
    [[nodiscard]] const char* what() const noexcept override;

    /// The calls that led to the construction, borrowed from this object; null when they could not be
    /// recorded.
    [[nodiscard]] virtual System::Backtrace* GetBacktrace() const;

    /// Writes the class, the message, the place and the backtrace, one call a line.
    virtual void Dump(std::ostream& out) const;

    /// The first call that is not part of raising the exception: "function (module+0x1a2b)", the function
    /// left out where its name is not known; empty without a backtrace.
    [[nodiscard]] virtual std::string Where() const;

private:
    std::string m_message;
    Ref<System::Backtrace> m_backtrace;
};

} // namespace Pellum
