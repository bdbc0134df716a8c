#include "tools/morvane/demo/demo.h"

#include "pellum/error/exception.h"
#include "tavik/codec/json/file.h"
#include "tavik/codec/json/json.h"
#include "tavik/type/type_registry.h"
#include "tavik/value/compare.h"
#include "tavik/value/validate.h"
#include "tools/morvane/model/library.h"
#include "tools/morvane/model/type_facts.h"
#include "tools/morvane/terminal/table.h"
#include "tools/morvane/value/differences.h"
#include "tools/morvane/value/write_value.h"
#include "types/api/core/computer_spec.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <utility>
#include <vector>

namespace Tool {

namespace {

using Location = Morvane::ComputerSpec::LiveComputerLocation;
using Clock = std::chrono::steady_clock;

constexpr std::size_t kIndent = 3;
constexpr const char* kOlderVersion = "6.0";

std::string FormatDuration(Clock::duration duration) {
    const auto microseconds = std::chrono::duration_cast<std::chrono::microseconds>(duration).count();
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.2f ms", static_cast<double>(microseconds) / 1000);
    return text.data();
}

/// "1 type", "2 types"
std::string Count(std::size_t number, const std::string& noun, const char* plural = "s") {
    return std::to_string(number) + ' ' + noun + (number == 1 ? "" : plural);
}

void Expect(bool condition, const std::string& what) {
    if (!condition) {
        throw Pellum::Exception("the demo went wrong: " + what);
    }
}

Location& GetLocation(Morvane::ComputerSpec& spec) {
    auto* location = dynamic_cast<Location*>(spec.GetLocation());
    Expect(location != nullptr, "the request is not for a live machine");
    return *location;
}

class Demo {
public:
    Demo(std::filesystem::path folder, Console& console) : m_folder(std::move(folder)), m_out(console.out) {}

    void Run() {
        LoadTypes();
        ReadRequest();
        CloneAndChange();
        Match();
        EncodeForOlderVersion();
        ReadBrokenInputs();
        m_out.WriteLine();
        Say("All " + std::to_string(m_step) + " steps did what they should.", Style::Good);
    }

private:
    void LoadTypes() {
        Heading("Load the types");
        const auto start = Clock::now();
        Tavik::TypeRegistry::Instance().Load();
        const auto duration = Clock::now() - start;
        const auto errors = Tavik::TypeRegistry::Instance().GetErrors();
        Expect(errors.empty(), errors.empty() ? "" : errors.front());
        const auto types = GetOwnTypes();
        Expect(!types.empty(), "there are no types");
        Say(Count(types.size(), "type") + ", ready " + FormatDuration(duration)
            + " after the first look-up asked for them");
        Table table({{"COUNT", Align::Right}, {"KIND"}});
        for (const auto kind :
             {Tavik::TypeKind::Data, Tavik::TypeKind::Fault, Tavik::TypeKind::Enum,
              Tavik::TypeKind::Managed}) {
            const auto count = std::count_if(types.begin(), types.end(), [kind](const Tavik::Type* type) {
                return type->GetKind() == kind;
            });
            table.AddRow({std::to_string(count), GetKindName(kind)});
        }
        table.Print(m_out, kIndent);
        const auto versions = GetVersions(kOwnNamespace);
        Say(Count(versions.size(), "version") + " of the interface, " + GetShortName(versions.front())
            + " to " + GetShortName(versions.back()));
    }

    void ReadRequest() {
        Heading("Read a connection request and check it");
        m_request = Read<Morvane::ComputerSpec>("connection_request.json");
        const auto problems = Tavik::Validate(m_request.Get());
        Expect(problems.empty(), problems.empty() ? "" : problems.front().path + ' ' + problems.front().what);
        const Location& location = GetLocation(*m_request);
        const std::size_t secrets = CountSecrets(*m_request);
        const std::string text = WriteValue(*m_request, nullptr, 2, false);
        for (const std::string* secret : {location.PeekPassword(), location.PeekClientPrivateKey()}) {
            Expect(secret != nullptr, "the request lacks a password or a key");
            Expect(text.find(*secret) == std::string::npos, "a secret is shown");
        }
        Say("It asks for " + location.GetHostname() + ", is complete, and holds " + Count(secrets, "secret")
            + " that nobody gets to see:");
        PrintIndented(text);
    }

    void CloneAndChange() {
        Heading("Clone it, change the clone, and compare");
        m_changed = Pellum::Ref<Morvane::ComputerSpec>(m_request->_Clone());
        Expect(m_changed->_IsEqual(m_request.Get(), false), "a clone is not equal to what it was made of");
        Location& location = GetLocation(*m_changed);
        location.SetHostname("standby-" + location.GetHostname());
        location.SetPort(Pellum::Optional<std::int32_t>(location.GetPort().ValueOr(22) + 2000));
        location.SetPassword(Pellum::Optional<std::string>(location.GetPassword().ValueOr("") + " changed"));
        location.UnsetSslThumbprint();
        const auto differences = FindDifferences(*m_request, *m_changed, false);
        Expect(differences.size() == 4, "the differences are not those that were made");
        Say("Before the change they were equal. Now they differ in "
            + Count(differences.size(), "propert", "ies") + ':');
        PrintDifferences(m_out, differences, kIndent);
    }

    void Match() {
        Heading("Match both against a pattern that leaves most of it open");
        const auto pattern = Read<Morvane::ComputerSpec>("pattern.json");
        Expect(Tavik::AreEqualAnysInt(m_request.Get(), pattern.Get(), 0, true), "the request does not match");
        Expect(
            !Tavik::AreEqualAnysInt(m_changed.Get(), pattern.Get(), 0, true), "the changed request matches");
        Say("The request matches.", Style::Good);
        Say("The changed one does not; + is what the pattern wants:", Style::Bad);
        PrintDifferences(m_out, FindMismatches(*m_changed, *pattern, false), kIndent);
    }

    void EncodeForOlderVersion() {
        const Tavik::Version& version = *FindVersion(kOlderVersion);
        Heading("Send it to a service of version " + GetShortName(&version));
        const auto vanishing = FindVanishing(*m_request, version);
        Expect(!vanishing.empty(), "the request holds nothing that the version does not have");
        Tavik::Json::DecodeOptions options;
        options.version = &version;
        const auto arrived = Tavik::Json::Decode(WriteValue(*m_request, &version, 0, true), options);
        Expect(
            FindDifferences(*m_request, *arrived, false).size() == vanishing.size(),
            "more was lost than was said");
        Say("It arrives without what that version does not have yet:");
        Table table({{"LEFT OUT"}, {"SINCE"}});
        for (const SetProperty& property : vanishing) {
            table.AddRow({{property.path, Style::Name}, GetShortName(property.version)});
        }
        table.Print(m_out, kIndent);
    }

    void ReadBrokenInputs() {
        Heading("Read what is broken");
        std::vector<std::filesystem::path> files;
        for (const auto& entry : std::filesystem::directory_iterator(m_folder / "broken")) {
            files.push_back(entry.path());
        }
        std::sort(files.begin(), files.end());
        Expect(files.size() >= 3, "there are too few broken examples");
        Say("Each error names the place, and what was expected there:");
        for (const auto& file : files) {
            const std::string name = (std::filesystem::path("broken") / file.filename()).generic_string();
            try {
                Read<Morvane::ComputerSpec>(name);
            } catch (const Tavik::Json::DecodeError& error) {
                PrintWrapped(error.what(), name);
                continue;
            }
            Expect(false, name + " was read as if it were well");
        }
    }

    /// The value of a file below the folder.
    template <class T>
    Pellum::Ref<T> Read(const std::string& name) {
        Tavik::Json::DecodeOptions options;
        options.sourceName = name;
        const std::string text =
            Tavik::Json::ReadInput((m_folder / name).string(), options.limits.inputBytes);
        return Tavik::Json::DecodeAs<T>(text, options);
    }

    void Heading(const std::string& title) {
        if (m_step++ > 0) {
            m_out.WriteLine();
        }
        m_out.WriteLine(m_out.Paint(Style::Heading, std::to_string(m_step) + ". " + title));
    }

    void PrintLines(const std::vector<std::string>& lines, Style style) {
        for (const std::string& line : lines) {
            m_out.WriteLine(std::string(kIndent, ' ') + m_out.Paint(style, line));
        }
    }

    std::size_t GetTextWidth() const {
        return m_out.GetWidth() == Output::kUnlimited ? Output::kUnlimited : m_out.GetWidth() - kIndent;
    }

    void Say(const std::string& text, Style style = Style::Plain) {
        PrintLines(Wrap(text, GetTextWidth()), style);
    }

    void PrintWrapped(const std::string& message, const std::string& name) {
        // The place stands out from what is wrong there.
        const std::size_t end = message.find(": ", name.size());
        PrintLines({message.substr(0, end)}, Style::Name);
        for (const std::string& line : Wrap(message.substr(end + 2), GetTextWidth() - 2)) {
            PrintLines({"  " + line}, Style::Plain);
        }
    }

    /// JSON, line by line; one that does not fit is cut.
    void PrintIndented(const std::string& text) {
        for (std::size_t start = 0; start < text.size();) {
            const std::size_t end = std::min(text.find('\n', start), text.size());
            std::string line = text.substr(start, end - start);
            if (GetDisplayWidth(line) > GetTextWidth()) {
                line = Cut(line, GetTextWidth() - 1) + "…";
            }
            PrintLines({line}, Style::Faint);
            start = end + 1;
        }
    }

    std::filesystem::path m_folder;
    Output& m_out;
    int m_step = 0;
    Pellum::Ref<Morvane::ComputerSpec> m_request;
    Pellum::Ref<Morvane::ComputerSpec> m_changed;
};

} // namespace

void RunDemo(const std::string& examplesFolder, Console& console) {
    Demo(examplesFolder, console).Run();
}

} // namespace Tool
