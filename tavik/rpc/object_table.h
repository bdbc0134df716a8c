#pragma once

#include "pellum/object/object.h"
#include "pellum/object/ref.h"
#include "tavik/managed/managed_object.h"

#include <memory>
#include <string_view>
#include <vector>

namespace Tavik {

class ManagedObjectType;
class MoRef;

/// The managed objects of a server that calls reach, by type and identifier. An object is found as one of its
/// own type and of every type that this derives from; so an identifier is taken for all types that have a
/// base in common, `orlin.ManagedObject` aside.
///
/// All functions may be called from any thread. Finding takes a lock that readers share, one of many.
class TAVIK_API ObjectTable final : public Pellum::ObjectImpl {
public:
    /// Is told of objects that calls no longer reach; on the thread that unregisters them, while no lock is
    /// held.
    class TAVIK_API Listener : public Pellum::ObjectImpl {
    public:
        /// Both are borrowed for the time of the call. Does not throw.
        virtual void OnUnregistered(const MoRef& reference, const ManagedObjectType& type) noexcept = 0;

    protected:
        Listener() = default;
        ~Listener() override;
    };

    ObjectTable();

    /// Calls reach the object from here on; takes a count of it. Throws `Pellum::Exception` when the
    /// identifier is taken, and for an object that has no reference, an empty identifier, or a type that is
    /// not registered or not that of the reference.
    void Register(ManagedObject& object);

    /// Calls do not reach the object any more; those that run go on. Tells the object (`_Unregistered`) and
    /// the listeners, and gives the count back. False when the object is not registered.
    bool Unregister(ManagedObject& object);
    /// The same for the object that the reference is of.
    bool Unregister(const MoRef& reference);
    /// The same for every object.
    void Clear();

    /// The object of that type, or of one that derives from it, with that identifier; null when there is
    /// none. By the root type it is found when no other object of the table has the identifier.
    [[nodiscard]] Pellum::Ref<ManagedObject> Find(const ManagedObjectType& type, std::string_view id) const;

    /// Takes a count of the listener.
    void AddListener(Listener& listener);
    /// The listener may still be told of what is being unregistered at this moment.
    void RemoveListener(Listener& listener);

private:
    struct Shard;
    struct Listeners;
    static constexpr std::size_t kShardCount = 16;

    ~ObjectTable() override;

    Shard& GetShard(std::string_view id) const;
    std::vector<Pellum::Ref<Listener>> GetListeners() const;
    static void Tell(ManagedObject& object, const std::vector<Pellum::Ref<Listener>>& listeners);

    std::unique_ptr<Shard[]> m_shards;
    std::unique_ptr<Listeners> m_listeners;
};

} // namespace Tavik
