#include "pellum/error/throwable.h"

#include "pellum/text/demangle.h"

#include <algorithm>
#include <new>
#include <ostream>
#include <string_view>
#include <typeinfo>
#include <utility>
#include <vector>

namespace Pellum {

namespace {

/// The function's own name: "Throw" of "Pellum::Exception::Throw(int)".
std::string_view OwnName(std::string_view function) {
    function = function.substr(0, function.find('('));
    const std::size_t scope = function.rfind("::");
    return scope == std::string_view::npos ? function : function.substr(scope + 2);
}

/// True for the constructors of exceptions and the functions that throw them: the fault does not lie there.
/// Where the constructors are known to be left out, no other function is taken for one.
bool RaisesException(std::string_view function, bool hasConstructors) {
    const std::string_view name = OwnName(function);
    const bool constructs = name.ends_with("Exception") || name == "ExceptionImpl" || name == "Throwable";
    return (hasConstructors && constructs) || name.starts_with("Throw");
}

/// Owns nothing.
std::shared_ptr<const char> Constant(const char* text) noexcept {
    return {std::shared_ptr<const char>(), text};
}

std::shared_ptr<const char> Share(std::string message, const char* fallback) noexcept {
    try {
        const auto text = std::make_shared<const std::string>(std::move(message));
        return {text, text->c_str()};
    } catch (const std::bad_alloc&) {
        return Constant(fallback);
    }
}

} // namespace

Throwable::Throwable(std::string message) noexcept
    : m_message(Share(std::move(message), "out of memory for the message")),
      m_backtrace(System::Backtrace::Capture()) {}

Throwable::Throwable(std::string message, const char* fallback, Ref<System::Backtrace> backtrace) noexcept
    : m_message(message.empty() ? Constant(fallback) : Share(std::move(message), fallback)),
      m_backtrace(std::move(backtrace)) {}

Throwable::Throwable(const Throwable& other) noexcept = default;

Throwable& Throwable::operator=(const Throwable& other) noexcept = default;

Throwable::~Throwable() = default;

const char* Throwable::what() const noexcept {
    return m_message.get();
}

System::Backtrace* Throwable::GetBacktrace() const {
    return m_backtrace.Get();
}

void Throwable::Dump(std::ostream& out) const {
    out << Demangle(typeid(*this)) << ": " << what() << '\n';
    if (const std::string where = Where(); !where.empty()) {
        out << "  at " << where << '\n';
    }
    if (const System::Backtrace* backtrace = GetBacktrace(); backtrace != nullptr) {
        out << backtrace->ToString();
    }
}

std::string Throwable::Where() const {
    const System::Backtrace* backtrace = GetBacktrace();
    if (backtrace == nullptr) {
        return {};
    }
    const std::vector<System::Backtrace::Frame> frames = backtrace->GetFrames();
    const bool hasConstructors = !backtrace->BeginsAtPlace();
    const auto place =
        std::find_if_not(frames.begin(), frames.end(), [&](const System::Backtrace::Frame& frame) {
            // Where names are not known, all of this library counts as raising.
            return frame.function.empty() ? hasConstructors && frame.module == frames.front().module
                                          : RaisesException(frame.function, hasConstructors);
        });
    if (place != frames.end()) {
        return place->ToString();
    }
    return frames.empty() ? std::string() : frames.front().ToString();
}

} // namespace Pellum
