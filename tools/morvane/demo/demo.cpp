#include "tools/morvane/demo/demo.h"

#include "pellum/text/path_name.h"
#include "tavik/codec/json/json.h"
#include "tavik/type/type_registry.h"
#include "tavik/value/compare.h"
#include "tools/morvane/demo/steps.h"
#include "tools/morvane/model/library.h"
#include "tools/morvane/model/type_facts.h"
#include "tools/morvane/model/words.h"
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

constexpr const char* kOlderVersion = "6.0";

std::string FormatDuration(Clock::duration duration) {
    const auto microseconds = std::chrono::duration_cast<std::chrono::microseconds>(duration).count();
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.2f ms", static_cast<double>(microseconds) / 1000);
    return text.data();
}

Location& GetLocation(Morvane::ComputerSpec& spec) {
    auto* location = dynamic_cast<Location*>(spec.GetLocation());
    Expect(location != nullptr, "the request is not for a live machine");
    return *location;
}

class Demo {
public:
    Demo(std::filesystem::path folder, Console& console)
        : m_folder(std::move(folder)), m_narrator(console.out) {}

    void Run() {
        LoadTypes();
        ReadRequest();
        CloneAndChange();
        Match();
        EncodeForOlderVersion();
        ShowConversionRequest(m_folder, m_narrator);
        ReadBrokenInputs();
        m_narrator.GetOutput().WriteLine();
        m_narrator.Say(
            "All " + std::to_string(m_narrator.GetStepCount()) + " steps did what they should.", Style::Good);
    }

private:
    void LoadTypes() {
        m_narrator.Heading("Load the types");
        const auto start = Clock::now();
        Tavik::TypeRegistry::Instance().Load();
        const auto duration = Clock::now() - start;
        const auto errors = Tavik::TypeRegistry::Instance().GetErrors();
        Expect(errors.empty(), errors.empty() ? "" : errors.front());
        const auto types = GetOwnTypes();
        Expect(!types.empty(), "there are no types");
        m_narrator.Say(
            Count(types.size(), "type") + ", ready " + FormatDuration(duration)
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
        table.Print(m_narrator.GetOutput(), Narrator::kIndent);
        const auto versions = GetVersions(kOwnNamespace);
        m_narrator.Say(
            Count(versions.size(), "version") + " of the interface, " + GetShortName(versions.front())
            + " to " + GetShortName(versions.back()));
    }

    void ReadRequest() {
        m_narrator.Heading("Read a connection request and check it");
        m_request = ReadExample<Morvane::ComputerSpec>(m_folder, "connection_request.json");
        ExpectValid(*m_request);
        const Location& location = GetLocation(*m_request);
        const std::size_t secrets = CountSecrets(*m_request);
        const std::string text = WriteValue(*m_request, nullptr, 2, false);
        for (const std::string* secret : {location.PeekPassword(), location.PeekClientPrivateKey()}) {
            Expect(secret != nullptr, "the request lacks a password or a key");
            Expect(text.find(*secret) == std::string::npos, "a secret is shown");
        }
        m_narrator.Say(
            "It asks for " + location.GetHostname() + ", is complete, and holds " + Count(secrets, "secret")
            + " that nobody gets to see:");
        m_narrator.ShowText(text);
    }

    void CloneAndChange() {
        m_narrator.Heading("Clone it, change the clone, and compare");
        m_changed = Pellum::Ref<Morvane::ComputerSpec>(m_request->_Clone());
        Expect(m_changed->_IsEqual(m_request.Get(), false), "a clone is not equal to what it was made of");
        Location& location = GetLocation(*m_changed);
        location.SetHostname("standby-" + location.GetHostname());
        location.SetPort(Pellum::Optional<std::int32_t>(location.GetPort().ValueOr(22) + 2000));
        location.SetPassword(Pellum::Optional<std::string>(location.GetPassword().ValueOr("") + " changed"));
        location.UnsetSslThumbprint();
        const auto differences = FindDifferences(*m_request, *m_changed, false);
        Expect(differences.size() == 4, "the differences are not those that were made");
        m_narrator.Say(
            "Before the change they were equal. Now they differ in "
            + Count(differences.size(), "propert", "ies") + ':');
        PrintDifferences(m_narrator.GetOutput(), differences, Narrator::kIndent);
    }

    void Match() {
        m_narrator.Heading("Match both against a pattern that leaves most of it open");
        const auto pattern = ReadExample<Morvane::ComputerSpec>(m_folder, "pattern.json");
        Expect(Tavik::AreEqualAnysInt(m_request.Get(), pattern.Get(), 0, true), "the request does not match");
        Expect(
            !Tavik::AreEqualAnysInt(m_changed.Get(), pattern.Get(), 0, true), "the changed request matches");
        m_narrator.Say("The request matches.", Style::Good);
        m_narrator.Say("The changed one does not; + is what the pattern wants:", Style::Bad);
        PrintDifferences(
            m_narrator.GetOutput(), FindMismatches(*m_changed, *pattern, false), Narrator::kIndent);
    }

    void EncodeForOlderVersion() {
        const Tavik::Version& version = *FindVersion(kOlderVersion);
        m_narrator.Heading("Send it to a service of version " + GetShortName(&version));
        const auto vanishing = SendTo(version, *m_request);
        Expect(!vanishing.empty(), "the request holds nothing that the version does not have");
        m_narrator.Say("It arrives without what that version does not have yet:");
        Table table({{"LEFT OUT"}, {"SINCE"}});
        for (const SetProperty& property : vanishing) {
            table.AddRow({{property.path, Style::Name}, GetShortName(property.version)});
        }
        table.Print(m_narrator.GetOutput(), Narrator::kIndent);
    }

    void ReadBrokenInputs() {
        m_narrator.Heading("Read what is broken");
        std::vector<std::filesystem::path> files;
        for (const auto& entry : std::filesystem::directory_iterator(m_folder / "broken")) {
            files.push_back(entry.path());
        }
        std::sort(files.begin(), files.end());
        Expect(files.size() >= 3, "there are too few broken examples");
        m_narrator.Say("Each error names the place, and what was expected there:");
        for (const auto& file : files) {
            const std::string name = (std::filesystem::path("broken") / file.filename()).generic_string();
            try {
                ReadExample<Morvane::ComputerSpec>(m_folder, name);
            } catch (const Tavik::Json::DecodeError& error) {
                m_narrator.ShowError(error.what(), name);
                continue;
            }
            Expect(false, name + " was read as if it were well");
        }
    }

    std::filesystem::path m_folder;
    Narrator m_narrator;
    Pellum::Ref<Morvane::ComputerSpec> m_request;
    Pellum::Ref<Morvane::ComputerSpec> m_changed;
};

} // namespace

void RunDemo(const std::string& examplesFolder, Console& console) {
    Demo(Pellum::ToPath(examplesFolder), console).Run();
}

} // namespace Tool
