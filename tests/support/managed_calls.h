#pragma once

#include "tavik/type/managed_object_type.h"

#include <vector>

namespace TestSupport {

/// All registered managed types that have stubs, library by library; borrowed.
std::vector<const Tavik::ManagedObjectType*> AllManagedTypes();

/// The method itself, but for a getter that a type derived from its owner declares again just so: that one
/// is called on objects of `derived`.
const Tavik::ManagedMethod* FindMostDerived(
    const Tavik::ManagedMethod& method, const Tavik::ManagedObjectType& derived);

/// Dispatches every method and every getter that the type has, inherited ones included, to a stub of it, with
/// random arguments, and answers with a random result: all has to arrive at the stub's connection, and to
/// come back, as it was given. The same seed gives the same values. Returns the number of calls.
int ExpectCallsToPass(const Tavik::ManagedObjectType& type, unsigned seed);

} // namespace TestSupport
