#pragma once

#include "pellum/error/exception.h"
#include "pellum/object/ref.h"
#include "tavik/value/any.h"

#include <string>
#include <utility>

namespace Tool {

class Command;

/// A text that is not the value it should be.
class InputError : public Pellum::ExceptionImpl<InputError> {
public:
    /// `place` is "file:line:column".
    InputError(std::string place, const std::string& problem)
        : ExceptionImpl(place + ": " + problem), m_place(std::move(place)), m_problem(problem) {}

    const std::string& GetPlace() const { return m_place; }

    /// What is wrong there, the property first; never a secret's content.
    const std::string& GetProblem() const { return m_problem; }

private:
    std::string m_place;
    std::string m_problem;
};

/// How the values that a command is given are read.
struct InputOptions {
    std::string type;    ///< of the value; empty: the text names it
    std::string version; ///< that has to have all that the value uses; empty: any
    bool lenient = false;
};

/// Adds `--type`, `--lenient` and, under the name given, the option for the version. `options` outlives the
/// command.
void AddInputOptions(Command command, InputOptions& options, const char* versionOption);

/// The value in a file, or in standard input for "-". Throws `InputError` for what is no value and
/// `Pellum::Exception` for what can not be read.
Pellum::Ref<Tavik::Any> ReadValue(const std::string& path, const InputOptions& options = {});

/// "standard input" for "-".
std::string GetSourceName(const std::string& path);
/// "morvane.ComputerSpec"
std::string GetTypeName(const Tavik::Any& value);

} // namespace Tool
