#include "pellum/error/exception.h"
#include "tavik/value/validate.h"
#include "tools/morvane/command.h"
#include "tools/morvane/model/library.h"
#include "tools/morvane/model/lookup.h"
#include "tools/morvane/value/read_value.h"

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace Tool {

namespace {

struct CheckOptions {
    std::vector<std::string> files;
    InputOptions input;
};

/// Checks files one by one and remembers how that went.
class Checker {
public:
    Checker(const CheckOptions& options, Console& console) : m_options(options), m_console(console) {}

    void Check(const std::string& file) {
        try {
            const auto value = ReadValue(file, m_options.input);
            const auto problems = Tavik::Validate(value.Get(), FindVersion(m_options.input.version));
            for (const Tavik::Problem& problem : problems) {
                m_console.WriteError(
                    GetSourceName(file),
                    (problem.path.empty() ? "the value" : problem.path) + ": " + problem.what);
            }
            if (problems.empty()) {
                m_console.out.WriteLine(
                    MakeVisible(GetSourceName(file)) + ": " + m_console.out.Paint(Style::Good, "ok") + ", "
                    + GetTypeName(*value));
            } else {
                ++m_wrongCount;
            }
        } catch (const InputError& error) {
            m_console.WriteError(error.GetPlace(), error.GetProblem());
            ++m_wrongCount;
        } catch (const Pellum::Exception& error) {
            m_console.WriteError("morvane", error.what());
            ++m_unreadCount;
        }
    }

    ExitCode Summarise() {
        const std::size_t count = m_options.files.size();
        if (count > 1) {
            m_console.out.WriteLine(
                std::to_string(count) + " files, " + std::to_string(count - m_wrongCount - m_unreadCount)
                + " ok, " + std::to_string(m_wrongCount) + " with problems"
                + (m_unreadCount == 0 ? "" : ", " + std::to_string(m_unreadCount) + " not read"));
        }
        return m_unreadCount > 0 ? kError : m_wrongCount > 0 ? kNo : kDone;
    }

private:
    const CheckOptions& m_options;
    Console& m_console;
    std::size_t m_wrongCount = 0;
    std::size_t m_unreadCount = 0;
};

ExitCode RunCheck(const CheckOptions& options, Console& console) {
    if (std::count(options.files.begin(), options.files.end(), "-") > 1) {
        throw Pellum::Exception("standard input can be read only once");
    }
    // Wrong names are not the files' fault: they end the command.
    static_cast<void>(FindVersion(options.input.version));
    if (!options.input.type.empty()) {
        static_cast<void>(FindDataType(options.input.type));
    }
    Checker checker(options, console);
    for (const std::string& file : options.files) {
        checker.Check(file);
    }
    return checker.Summarise();
}

} // namespace

void AddCheckCommand(CommandSet& commands) {
    Command command = commands.Add(
        {"check", "Say whether files hold valid values", "0 all are well, 1 at least one has problems",
         "morvane check examples/connection_request.json\n"
         "morvane check --version 6.8 *.json\n"
         "morvane new UserSession | morvane check -"});
    auto options = std::make_shared<CheckOptions>();
    command.Add("files", options->files, "FILE", "Files to check").Require();
    AddInputOptions(command, options->input, "--version,--api-version");
    commands.SetAction(command, [options](Console& console) { return RunCheck(*options, console); });
}

} // namespace Tool
