#pragma once

#include "tavik/descriptor/records.h"

/// The functions of a managed type, as its descriptor record holds them. Declared here for the tables;
/// defined and instantiated beside the interface.
namespace Morvane::Support {

template <class T>
struct ManagedFunctions {
    static void Dispatch(
        Tavik::ManagedObject* target, int index, std::vector<Pellum::Ref<Tavik::Any>>& arguments,
        Pellum::Ref<Tavik::Any>& result);
    static Tavik::ManagedObject* CreateStub(
        Tavik::MoRef* reference, Tavik::StubAdapter* adapter, Tavik::RequestContext* context);
};

} // namespace Morvane::Support
