#include "bench/access.h"

#include "bench/measure.h"

#include <algorithm>
#include <memory>
#include <random>
#include <unordered_map>

namespace Bench {

namespace {

AccessFixture MakeFixture() {
    AccessFixture fixture{};
    Tavik::TypeRegistry& registry = Tavik::TypeRegistry::Instance();
    for (const Tavik::LoadedLibrary& library : registry.GetLibraries()) {
        for (const Tavik::Type* type : library.types) {
            if (type == nullptr) {
                continue;
            }
            fixture.typeNames.emplace_back(type->GetName());
            fixture.wireNames.emplace_back(type->GetWireName());
            if (const auto* dataType = dynamic_cast<const Tavik::DataObjectType*>(type)) {
                for (const Tavik::Property* property : dataType->GetProperties()) {
                    fixture.properties.push_back({dataType, property->GetName()});
                }
            }
        }
    }
    std::mt19937 order(1204); // the same every time
    std::shuffle(fixture.typeNames.begin(), fixture.typeNames.end(), order);
    std::shuffle(fixture.wireNames.begin(), fixture.wireNames.end(), order);
    std::shuffle(fixture.properties.begin(), fixture.properties.end(), order);

    fixture.location = Pellum::MakeRef<AccessFixture::Location>();
    fixture.location->SetHostname("build7.example.org");
    fixture.location->SetPort(22);
    fixture.type = Tavik::GetDoType<AccessFixture::Location>();
    fixture.hostname = fixture.type->FindProperty("hostname");
    fixture.port = fixture.type->FindProperty("port");
    return fixture;
}

// Accessors that are called: whoever gets a field by the functions of the record makes a call, too.
[[gnu::noinline]] const std::string* CallPeekHostname(const AccessFixture::Location& location) {
    return location.PeekHostname();
}

[[gnu::noinline]] const std::int32_t* CallPeekPort(const AccessFixture::Location& location) {
    return location.PeekPort();
}

/// The accessors, through a pointer of which the compiler knows nothing.
void AddAccessors(const AccessFixture& fixture) {
    const auto add = [&](const char* operation, const char* what, auto body) {
        AddTimed(BenchmarkName(operation, what, kPlain), body);
    };
    add(kFieldPointer, kString, [location = fixture.location.Get()]() mutable {
        benchmark::DoNotOptimize(location);
        return location->PeekHostname();
    });
    add(kFieldPointer, kOptionalInt, [location = fixture.location.Get()]() mutable {
        benchmark::DoNotOptimize(location);
        return location->PeekPort();
    });
    add(kFieldRecord, kString, [location = fixture.location.Get()]() mutable {
        benchmark::DoNotOptimize(location);
        return CallPeekHostname(*location);
    });
    add(kFieldRecord, kOptionalInt, [location = fixture.location.Get()]() mutable {
        benchmark::DoNotOptimize(location);
        return CallPeekPort(*location);
    });
    add(kFieldGet, kString, [location = fixture.location.Get()]() mutable {
        benchmark::DoNotOptimize(location);
        return location->GetHostname();
    });
    add(kFieldGet, kOptionalInt, [location = fixture.location.Get()]() mutable {
        benchmark::DoNotOptimize(location);
        std::int32_t out = 0;
        location->GetPort(out);
        return out;
    });
}

/// A map of the names to what our look-up finds.
template <class Find>
auto MapNames(const std::vector<std::string>& names, Find find) {
    auto map = std::make_shared<std::unordered_map<std::string, decltype(find(names.front()))>>();
    for (const std::string& name : names) {
        map->emplace(name, find(name));
    }
    return map;
}

void AddMaps(const AccessFixture& fixture) {
    Tavik::TypeRegistry& registry = Tavik::TypeRegistry::Instance();
    AddTimed(
        BenchmarkName(kFindType, kAllTypes, kPlain),
        [map = MapNames(fixture.typeNames, [&](const auto& name) { return registry.FindByName(name); }),
         names = Endless(fixture.typeNames)]() mutable { return map->find(names.Next())->second; });
    AddTimed(
        BenchmarkName(kFindWireType, kAllTypes, kPlain),
        [map = MapNames(fixture.wireNames, [&](const auto& name) { return registry.FindByWireName(name); }),
         names = Endless(fixture.wireNames)]() mutable { return map->find(names.Next())->second; });

    using PropertyMap = std::unordered_map<std::string, const Tavik::Property*>;

    struct Wanted {
        const PropertyMap* map;
        std::string name;
    };

    static std::unordered_map<const Tavik::DataObjectType*, PropertyMap> maps;
    static std::vector<Wanted> wanted;
    for (const PropertyName& property : fixture.properties) {
        PropertyMap& map = maps[property.type];
        map.emplace(property.name, property.type->FindProperty(property.name));
        wanted.push_back({&map, property.name});
    }
    AddTimed(BenchmarkName(kFindProperty, kAllProperties, kPlain), [names = Endless(wanted)]() mutable {
        const Wanted& next = names.Next();
        return next.map->find(next.name)->second;
    });
}

} // namespace

const AccessFixture& GetAccessFixture() {
    static const AccessFixture fixture = MakeFixture();
    return fixture;
}

void AddAccess() {
    ForEachAccess([](const char* operation, const char* what, auto body) {
        AddTimed(BenchmarkName(operation, what, kOurs), body);
    });
    AddAccessors(GetAccessFixture());
    AddMaps(GetAccessFixture());
}

} // namespace Bench
