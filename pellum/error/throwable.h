#pragma once

#include "pellum/export.h"
#include "pellum/object/ref.h"
#include "pellum/system/backtrace.h"

#include <exception>
#include <iosfwd>
#include <memory>
#include <string>

namespace Pellum {

/// Root of everything this system throws: a message and the place where it was constructed.
///
/// Copies share both, and copying needs no memory, so that nothing can go wrong between `throw` and `catch`.
class PELLUM_API Throwable : public std::exception {
public:
    /// Without the memory for it, the message is one that says so.
    explicit Throwable(std::string message) noexcept;
    Throwable(const Throwable& other) noexcept;
    Throwable& operator=(const Throwable& other) noexcept;
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

protected:
    /// `fallback` is a constant, the message where `message` is empty or there is no memory for it.
    /// `backtrace` may be null.
    Throwable(std::string message, const char* fallback, Ref<System::Backtrace> backtrace) noexcept;

private:
    std::shared_ptr<const char> m_message; ///< owns the string that the text is in
    Ref<System::Backtrace> m_backtrace;
};

} // namespace Pellum
