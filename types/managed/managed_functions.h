#pragma once

#include "pellum/object/ref.h"
#include "tavik/descriptor/records.h"

#include <vector>

/// The functions of a managed type, as its descriptor record holds them. Declared here for the tables;
/// defined and instantiated beside the interface.
namespace Morvane::Support {

template <class T>
struct ManagedFunctions {
    /// Calls the method or getter of that index in the method-object array on `target`, borrowed, and puts
    /// what it gives into `result`. Does nothing for an index that is none. Throws what the method throws,
    /// and `Pellum::TypeMismatchException` for a target or an argument of another class.
    static void Dispatch(
        Tavik::ManagedObject* target, int index, std::vector<Pellum::Ref<Tavik::Any>>& arguments,
        Pellum::Ref<Tavik::Any>& result);
    /// Creates the stub, with a count of zero; it takes counts of the three. Null when there is no memory for
    /// it. Throws what `Tavik::StubImpl` does.
    static Tavik::ManagedObject* CreateStub(
        Tavik::MoRef* reference, Tavik::StubAdapter* adapter, Tavik::RequestContext* context);
};

} // namespace Morvane::Support
