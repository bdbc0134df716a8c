#pragma once

#include "schemac/diagnostic/message.h"
#include "schemac/source/source_manager.h"
#include "schemac/source/span.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <iosfwd>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace Schemac {

/// Text of a message with its holes filled.
std::string FillMessage(std::string_view text, const std::string_view* args, std::size_t count);

template <typename... Args>
std::string FormatMessage(const Message<Args...>& message, std::type_identity_t<Args>... args) {
    const std::array<std::string_view, sizeof...(Args)> values{args...};
    return FillMessage(message.text, values.data(), values.size());
}

/// One error and the places that belong to it.
struct Diagnostic {
    struct Note {
        Span span;
        std::string text;
    };

    Span span; ///< not valid for an error that lies in no file
    std::uint16_t number = 0;
    std::string text;
    std::vector<Note> notes;

    /// Adds a second place. Without effect for a place that is in no file, such as a built-in type's.
    template <typename... Args>
    Diagnostic& AddNote(
        const Span& place, const Message<Args...>& message, std::type_identity_t<Args>... args) {
        if (place.IsValid()) {
            notes.push_back({place, FormatMessage(message, args...)});
        }
        return *this;
    }
};

/// Collects the errors of a run. Not thread-safe.
class Reporter {
public:
    /// Adds an error. The returned reference stays good for the reporter's life.
    template <typename... Args>
    Diagnostic& Report(
        const Span& span, const Message<Args...>& message, std::type_identity_t<Args>... args) {
        return m_diagnostics.emplace_back(
            Diagnostic{span, message.number, FormatMessage(message, args...), {}});
    }

    std::size_t ErrorCount() const { return m_diagnostics.size(); }

    bool HasErrors() const { return !m_diagnostics.empty(); }

    /// All errors by place: file by file in the order of loading, then by offset.
    std::vector<const Diagnostic*> Sorted() const;

private:
    std::deque<Diagnostic> m_diagnostics;
};

/// How errors are shown.
struct PrintOptions {
    bool useColour = false;
    std::size_t maxErrors = 100; ///< the rest is only counted
};

/// "E0203".
std::string ErrorCode(std::uint16_t number);

/// Prints the errors by place, each with its source line and the place underlined.
void PrintDiagnostics(
    const Reporter& reporter, const SourceManager& sources, const PrintOptions& options, std::ostream& out);

} // namespace Schemac
