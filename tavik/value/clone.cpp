#include "tavik/value/clone.h"

#include "pellum/object/block_cache.h"
#include "tavik/type/data_object_type.h"
#include "tavik/value/depth_scope.h"
#include "tavik/value/ref_slot.h"

#include <memory>
#include <new>
#include <typeinfo>
#include <utility>

namespace Tavik {

namespace {

/// A deep part that the outermost clone still has to copy: into a slot, or into a property of an object.
struct PendingClone {
    void* slot;
    const Any* source;
    Any* target = nullptr;
    const Property* property = nullptr;
};

struct CloneState : RecursionState<PendingClone> {
    const Any* part = nullptr;   ///< what `ClonePart` has just asked to clone itself
    const void* built = nullptr; ///< where a copy constructor is building a copy
};

constinit thread_local CloneState cloning;

/// Names a part while it clones itself, also when that throws.
class PartScope {
public:
    explicit PartScope(const Any& part) { m_state.part = &part; }

    ~PartScope() { m_state.part = nullptr; }

    PartScope(const PartScope&) = delete;
    PartScope& operator=(const PartScope&) = delete;

private:
    CloneState& m_state = cloning;
};

/// A copy without one of its parts would be none: what `_Clone` could not get the memory for ends the whole
/// clone.
[[gnu::always_inline]] inline Any* ClonePart(const Any& source) {
    const PartScope scope(source);
    Any* copy = source._Clone();
    if (copy == nullptr) {
        throw std::bad_alloc();
    }
    return copy;
}

void Store(const PendingClone& part) {
    if (part.property == nullptr) {
        StoreRef(part.slot, ClonePart(*part.source));
        return;
    }
    const Pellum::Ref<Any> copy(ClonePart(*part.source));
    part.property->Set(part.target, copy.Get());
}

/// Copies what was put off when there were `begin` already. A copy's own parts are put off again once they
/// are too deep, so that the stack used does not grow.
void FinishPending(std::size_t begin) {
    while (cloning.CountPending() > begin) {
        Store(cloning.TakeLast());
    }
}

/// The extent of one clone. What it puts off is left to the clone around it only if that has asked for the
/// whole of this object; anything else, a user's class that copies a part of itself for example, may drop the
/// copy at any time, and has to have it finished. When something throws, what was put off is forgotten.
class CloneScope {
public:
    CloneScope(const Any& source, const void* built)
        : m_part(std::exchange(cloning.part, nullptr) == &source ? &source : nullptr),
          m_outerBuilt(std::exchange(cloning.built, built)),
          m_begin(cloning.CountPending()) {
        ++cloning.depth;
    }

    ~CloneScope() {
        cloning.built = m_outerBuilt;
        if (!m_isDone) {
            cloning.Forget(m_begin);
        }
        if (--cloning.depth == 0) {
            cloning.Free();
        }
    }

    CloneScope(const CloneScope&) = delete;
    CloneScope& operator=(const CloneScope&) = delete;

    void Finish(const Any& copy) {
        const bool isPending = cloning.CountPending() > m_begin;
        if (isPending && (m_part == nullptr || typeid(copy) != typeid(*m_part))) {
            FinishPending(m_begin);
        }
        m_isDone = true;
    }

private:
    const Any* m_part; ///< what is cloned, if the clone around this one has asked for it
    const void* m_outerBuilt;
    std::size_t m_begin;
    bool m_isDone = false;
};

/// What `CloneInto` does with a null or too deep a part.
[[gnu::noinline]] void ClearOrPutOff(void* slot, const Any* source) {
    if (source == nullptr) {
        StoreRef(slot, nullptr);
    } else {
        cloning.PutOff({slot, source});
    }
}

} // namespace

void CloneInto(void* slot, const Any* source) {
    if (source != nullptr && cloning.depth < kMaxRecursion) {
        StoreRef(slot, ClonePart(*source));
    } else {
        ClearOrPutOff(slot, source);
    }
}

void CloneInto(Any& target, const Property& property, const Any* source) {
    if (source == nullptr) {
        property.Reset(&target);
    } else if (cloning.depth < kMaxRecursion || cloning.built != &target) { // or a temporary, gone too soon
        Store({nullptr, source, &target, &property});
    } else {
        cloning.PutOff({nullptr, source, &target, &property});
    }
}

Any* CloneWith(const Any& source, std::size_t size, Any* (*construct)(void* storage, const Any& source)) {
    const auto free = [size](void* block) { Pellum::FreeBlock(block, size); };
    std::unique_ptr<void, decltype(free)> storage(Pellum::AllocateZeroedBlock(size), free);
    if (storage == nullptr) {
        return nullptr;
    }
    CloneScope scope(source, storage.get());
    std::unique_ptr<Any> copy(construct(storage.get(), source));
    static_cast<void>(storage.release()); // the object's own from here on
    scope.Finish(*copy);
    return copy.release();
}

Any* FillClone(
    Any* copy, const Any& source, void (*fill)(Any& copy, const Any& source, const void* context),
    const void* context) {
    if (copy == nullptr) {
        return nullptr;
    }
    std::unique_ptr<Any> owner(copy);
    CloneScope scope(source, copy);
    fill(*copy, source, context);
    scope.Finish(*copy);
    return owner.release();
}

} // namespace Tavik
