#include "tavik/codec/json/json.h"
#include "tavik/type/type_registry.h"
#include "types/api/core/computer_spec.h"

#include <iostream>

int main() {
    const Pellum::Ref<Morvane::ComputerSpec> source(new Morvane::ComputerSpec);
    source->SetLocation(new Morvane::ComputerSpec::VmLocation);
    const std::string text = source->ToString();
    std::cout << text << '\n';

    const Tavik::Type* type = Tavik::TypeRegistry::Instance().FindByName("morvane.ComputerSpec");
    const bool known = type != nullptr && type == source->_GetType();
    const auto same = Tavik::Json::DecodeAs<Morvane::ComputerSpec>(text);
    return known && same->_IsEqual(source.Get(), false) ? 0 : 1;
}
