#include "bench/calls_bench.h"
#include "bench/documents_bench.h"
#include "bench/ratio_reporter.h"
#include "tavik/codec/json/json.h"
#include "tavik/type/type_registry.h"
#include "types/api/core/computer_spec.h"

#include <benchmark/benchmark.h>
#include <nlohmann/json.hpp>

#include <cstdlib>
#include <memory>
#include <optional>
#include <string>

/// One connection request, handled by the library and by what one would write without it: plain structs with
/// nlohmann::json at the edge.
namespace {

/// A location without the library.
struct PlainLocation {
    std::string hostname;
    std::optional<int> port;
    std::optional<std::string> username;
    std::optional<std::string> password;
    std::optional<std::string> clientPrivateKey;
    std::string osType;
    std::optional<bool> verifyPeer;
    std::optional<std::string> sslThumbprint;
    std::optional<std::string> sslCertificate;

    bool operator==(const PlainLocation&) const = default;
};

Pellum::Ref<Morvane::ComputerSpec> MakeRequest() {
    const auto location = Pellum::MakeRef<Morvane::ComputerSpec::LiveComputerLocation>();
    location->SetHostname("build7.example.org");
    location->SetPort(22);
    location->SetUsername("root");
    location->SetPassword("a password of ordinary length");
    location->SetOsType("linuxOs");
    location->SetVerifyPeer(true);
    location->SetSslThumbprint("0F:1E:2D:3C:4B:5A:69:78:87:96:A5:B4:C3:D2:E1:F0:0F:1E:2D:3C");
    location->SetSslCertificate(std::string(1200, 'M'));
    auto request = Pellum::MakeRef<Morvane::ComputerSpec>();
    request->SetLocation(location.Get());
    return request;
}

template <class T>
std::optional<T> OptionalMember(const nlohmann::json& object, const char* name) {
    const auto found = object.find(name);
    return found == object.end() ? std::nullopt : std::optional<T>(found->get<T>());
}

PlainLocation ReadPlain(const std::string& text) {
    const nlohmann::json document = nlohmann::json::parse(text);
    const nlohmann::json& location = document.at("location");
    return {
        location.at("hostname").get<std::string>(),
        OptionalMember<int>(location, "port"),
        OptionalMember<std::string>(location, "username"),
        OptionalMember<std::string>(location, "password"),
        OptionalMember<std::string>(location, "clientPrivateKey"),
        location.at("osType").get<std::string>(),
        OptionalMember<bool>(location, "verifyPeer"),
        OptionalMember<std::string>(location, "sslThumbprint"),
        OptionalMember<std::string>(location, "sslCertificate")};
}

std::string WritePlain(const PlainLocation& plain) {
    nlohmann::json location = {
        {"$type", "MorvaneComputerSpecLiveComputerLocation"},
        {"hostname", plain.hostname},
        {"osType", plain.osType}};
    const auto add = [&](const char* name, const auto& value) {
        if (value) {
            location[name] = *value;
        }
    };
    add("port", plain.port);
    add("username", plain.username);
    add("password", plain.password);
    add("clientPrivateKey", plain.clientPrivateKey);
    add("verifyPeer", plain.verifyPeer);
    add("sslThumbprint", plain.sslThumbprint);
    add("sslCertificate", plain.sslCertificate);
    return nlohmann::json{{"$type", "MorvaneComputerSpec"}, {"location", std::move(location)}}.dump();
}

void RegisterAll() {
    static const Pellum::Ref<Morvane::ComputerSpec> request = MakeRequest();
    static const Pellum::Ref<Morvane::ComputerSpec> same(request->_Clone());
    static const std::string text = Tavik::Json::Encode(request.Get());
    static const PlainLocation plain = ReadPlain(text);
    static const PlainLocation samePlain = plain;

    const auto add = [](const char* name, auto body) {
        benchmark::RegisterBenchmark(name, [body](benchmark::State& state) {
            for (auto _ : state) {
                body();
            }
        });
    };
    add("decode/morvane", [] { benchmark::DoNotOptimize(Tavik::Json::Decode(text)); });
    add("decode/nlohmann", [] { benchmark::DoNotOptimize(ReadPlain(text)); });
    add("encode/morvane", [] { benchmark::DoNotOptimize(Tavik::Json::Encode(request.Get())); });
    add("encode/nlohmann", [] { benchmark::DoNotOptimize(WritePlain(plain)); });
    add("clone/morvane",
        [] { benchmark::DoNotOptimize(Pellum::Ref<Morvane::ComputerSpec>(request->_Clone())); });
    add("clone/struct", [] { benchmark::DoNotOptimize(std::make_unique<PlainLocation>(plain)); });
    add("equality/morvane", [] { benchmark::DoNotOptimize(request->_IsEqual(same.Get(), false)); });
    add("equality/struct", [] { benchmark::DoNotOptimize(plain == samePlain); });
    add("look-up/morvane",
        [] { benchmark::DoNotOptimize(Tavik::TypeRegistry::Instance().FindByName("morvane.ComputerSpec")); });
}

} // namespace

int main(int argc, char** argv) {
    RegisterAll();
    Bench::RegisterDocuments();
    Bench::RegisterCalls();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return EXIT_FAILURE;
    }
    Bench::RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return EXIT_SUCCESS;
}
