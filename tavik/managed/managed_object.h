#pragma once

#include "pellum/object/object.h"
#include "tavik/export.h"

namespace Tavik {

class ManagedObjectType;
class MoRef;

/// What managed objects and the stubs that stand for them have in common.
class TAVIK_API ManagedObjectCommon : public virtual Pellum::Object {
public:
    /// Type and identifier of the object, borrowed from it; null while it has none.
    [[nodiscard]] virtual MoRef* _GetRef() const = 0;

    /// Tells the object, or a stub of it, that calls no longer reach it. From any thread; may come more than
    /// once. Does not throw.
    virtual void _Unregistered() = 0;

protected:
    ManagedObjectCommon() = default;
    ManagedObjectCommon(const ManagedObjectCommon&) = default;
    ManagedObjectCommon& operator=(const ManagedObjectCommon&) = default;
    ~ManagedObjectCommon() override;
};

/// `orlin.ManagedObject`: root of the interfaces of managed objects. Servers implement the interfaces, stubs
/// turn their calls into remote ones.
class TAVIK_API ManagedObject : public virtual ManagedObjectCommon {
public:
    /// The registered type of the interface, borrowed; null before its library has been loaded by the
    /// registry.
    [[nodiscard]] virtual ManagedObjectType* _GetType() const = 0;

protected:
    ManagedObject() = default;
    ManagedObject(const ManagedObject&) = default;
    ManagedObject& operator=(const ManagedObject&) = default;
    ~ManagedObject() override;
};

} // namespace Tavik
