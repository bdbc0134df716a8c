#include "types/api/core/computer_spec.h"

#include <iostream>

int main() {
    const auto location = Pellum::MakeRef<Morvane::ComputerSpec::LiveComputerLocation>();
    location->SetHostname("db-07.plant.example");
    location->SetOsType("linux");
    location->SetPassword("open sesame");
    const auto source = Pellum::MakeRef<Morvane::ComputerSpec>();
    source->SetLocation(location.Get());
    std::cout << source->ToString() << '\n';
}
