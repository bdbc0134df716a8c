#include "tavik/rpc/object_table.h"

#include "pellum/error/exception.h"
#include "tavik/type/managed_object_type.h"
#include "tavik/type/type_of.h"
#include "tavik/type/type_registry.h"
#include "tavik/value/mo_ref.h"

#include <algorithm>
#include <functional>
#include <map>
#include <mutex>
#include <shared_mutex>
#include <string>
#include <utility>
#include <vector>

namespace Tavik {

namespace {

/// An object that is registered.
struct Entry {
    const ManagedObjectType* type;
    const ManagedObjectType* family;
    Pellum::Ref<ManagedObject> object;
};

/// The highest type below the root that `type` derives from; null for the root itself.
const ManagedObjectType* GetFamily(const ManagedObjectType& type) {
    const Type* const root = GetBuiltinType(TypeKind::Managed);
    const ManagedObjectType* family = nullptr;
    for (const ManagedObjectType* base = &type; base != nullptr && base != root; base = base->GetBaseType()) {
        family = base;
    }
    return family;
}

std::string Describe(const ManagedObjectType& type, const std::string& id) {
    return std::string(type.GetName()) + " \"" + id + '"';
}

} // namespace

struct ObjectTable::Shard {
    mutable std::shared_mutex mutex;
    /// There is more than one object of an identifier when they are of different families.
    std::map<std::string, std::vector<Entry>, std::less<>> entries;

    /// Takes the object out; null when it is not there.
    Pellum::Ref<ManagedObject> Take(const std::string& id, const ManagedObject& wanted) {
        const std::lock_guard lock(mutex);
        const auto found = entries.find(id);
        if (found == entries.end()) {
            return nullptr;
        }
        std::vector<Entry>& same = found->second;
        const auto entry =
            std::find_if(same.begin(), same.end(), [&](const Entry& one) { return one.object == &wanted; });
        if (entry == same.end()) {
            return nullptr;
        }
        Pellum::Ref<ManagedObject> object = std::move(entry->object);
        same.erase(entry);
        if (same.empty()) {
            entries.erase(found);
        }
        return object;
    }
};

struct ObjectTable::Listeners {
    std::mutex mutex;
    std::vector<Pellum::Ref<Listener>> all;
};

ObjectTable::Listener::~Listener() = default;

ObjectTable::ObjectTable()
    : m_shards(std::make_unique<Shard[]>(kShardCount)), m_listeners(std::make_unique<Listeners>()) {}

ObjectTable::~ObjectTable() = default;

ObjectTable::Shard& ObjectTable::GetShard(std::string_view id) const {
    return m_shards[std::hash<std::string_view>()(id) % kShardCount];
}

void ObjectTable::Register(ManagedObject& object) {
    TypeRegistry::Instance().Load(); // objects know their types from then on
    const MoRef* const reference = object._GetRef();
    const ManagedObjectType* const type = object._GetType();
    if (reference == nullptr || reference->GetId().empty()) {
        throw Pellum::Exception("an object without an identifier can not be registered");
    }
    if (type == nullptr || GetFamily(*type) == nullptr) {
        throw Pellum::Exception(
            "object \"" + reference->GetId() + "\" has no registered type, so that it can not be registered");
    }
    if (!type->IsA(reference->_GetType())) {
        throw Pellum::Exception(
            Describe(*type, reference->GetId()) + " has a reference of type "
            + reference->GetTypeInfo().name);
    }
    const ManagedObjectType* const family = GetFamily(*type);
    Shard& shard = GetShard(reference->GetId());
    const std::lock_guard lock(shard.mutex);
    std::vector<Entry>& same = shard.entries[reference->GetId()];
    for (const Entry& entry : same) {
        if (entry.family == family) {
            throw Pellum::Exception(
                "the identifier of " + Describe(*type, reference->GetId()) + " is taken by "
                + (entry.object == &object ? "the same object" : Describe(*entry.type, reference->GetId())));
        }
    }
    same.push_back({type, family, Pellum::Ref<ManagedObject>(&object)});
}

bool ObjectTable::Unregister(ManagedObject& object) {
    const MoRef* const reference = object._GetRef();
    if (reference == nullptr) {
        return false;
    }
    const auto listeners = GetListeners(); // needs memory: while nothing has been done yet
    const auto taken = GetShard(reference->GetId()).Take(reference->GetId(), object);
    if (taken.Get() == nullptr) {
        return false;
    }
    Tell(*taken, listeners);
    return true;
}

bool ObjectTable::Unregister(const MoRef& reference) {
    const Type* const type = reference._GetType();
    if (type == nullptr) {
        return false;
    }
    const auto found = Find(static_cast<const ManagedObjectType&>(*type), reference.GetId());
    return found.Get() != nullptr && Unregister(*found);
}

void ObjectTable::Clear() {
    const auto listeners = GetListeners();
    for (std::size_t i = 0; i < kShardCount; ++i) {
        decltype(Shard::entries) entries;
        {
            const std::lock_guard lock(m_shards[i].mutex);
            entries.swap(m_shards[i].entries);
        }
        for (const auto& [id, same] : entries) {
            for (const Entry& entry : same) {
                Tell(*entry.object, listeners);
            }
        }
    }
}

Pellum::Ref<ManagedObject> ObjectTable::Find(const ManagedObjectType& type, std::string_view id) const {
    const Shard& shard = GetShard(id);
    const std::shared_lock lock(shard.mutex);
    const auto found = shard.entries.find(id);
    if (found == shard.entries.end()) {
        return nullptr;
    }
    Pellum::Ref<ManagedObject> object;
    for (const Entry& entry : found->second) {
        if (entry.type->IsA(&type)) {
            if (object.Get() != nullptr) {
                return nullptr; // by the root type, and not the only one
            }
            object = entry.object;
        }
    }
    return object;
}

void ObjectTable::AddListener(Listener& listener) {
    const std::lock_guard lock(m_listeners->mutex);
    m_listeners->all.emplace_back(&listener);
}

void ObjectTable::RemoveListener(Listener& listener) {
    const std::lock_guard lock(m_listeners->mutex);
    std::erase_if(m_listeners->all, [&](const auto& known) { return known == &listener; });
}

std::vector<Pellum::Ref<ObjectTable::Listener>> ObjectTable::GetListeners() const {
    const std::lock_guard lock(m_listeners->mutex);
    return m_listeners->all;
}

void ObjectTable::Tell(ManagedObject& object, const std::vector<Pellum::Ref<Listener>>& listeners) {
    object._Unregistered();
    for (const auto& listener : listeners) {
        listener->OnUnregistered(*object._GetRef(), *object._GetType());
    }
}

} // namespace Tavik
