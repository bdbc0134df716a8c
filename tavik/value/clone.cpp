#include "tavik/value/clone.h"

#include "tavik/type/data_object_type.h"
#include "tavik/value/depth_scope.h"
#include "tavik/value/ref_slot.h"

#include <memory>
#include <new>
#include <vector>

namespace Tavik {

namespace {

/// A deep part that the outermost clone still has to copy: into a slot, or into a property of an object.
struct PendingClone {
    void* slot;
    const Any* source;
    Any* target = nullptr;
    const Property* property = nullptr;
};

struct CloneState {
    int depth = 0;
    std::vector<PendingClone> pending;
};

thread_local CloneState state;

/// The extent of one clone. The outermost one forgets what it has not come to, which happens when it throws.
class CloneScope {
public:
    CloneScope() = default;

    ~CloneScope() {
        if (IsOutermost()) {
            state.pending.clear();
        }
    }

    CloneScope(const CloneScope&) = delete;
    CloneScope& operator=(const CloneScope&) = delete;

    bool IsOutermost() const { return m_depth.IsOutermost(); }

private:
    DepthScope m_depth{state.depth};
};

/// A copy without one of its parts would be none: what `_Clone` could not get the memory for ends the whole
/// clone.
Any* ClonePart(const Any& source) {
    Any* copy = source._Clone();
    if (copy == nullptr) {
        throw std::bad_alloc();
    }
    return copy;
}

void Store(const PendingClone& part) {
    const Pellum::Ref<Any> copy(ClonePart(*part.source));
    if (part.property != nullptr) {
        part.property->Set(part.target, copy.Get());
    } else {
        StoreRef(part.slot, copy.Get());
    }
}

void StoreOrPutOff(const PendingClone& part) {
    if (state.depth < kMaxRecursion) {
        Store(part);
    } else {
        state.pending.push_back(part);
    }
}

/// Copies what was put off. Still at depth one: a copy's own parts are put off again once they are too deep.
void FinishPending() {
    while (!state.pending.empty()) {
        const PendingClone next = state.pending.back();
        state.pending.pop_back();
        Store(next);
    }
}

} // namespace

void CloneInto(void* slot, const Any* source) {
    if (source == nullptr) {
        StoreRef(slot, nullptr);
    } else {
        StoreOrPutOff({slot, source});
    }
}

void CloneInto(Any& target, const Property& property, const Any* source) {
    if (source == nullptr) {
        property.Reset(&target);
    } else {
        StoreOrPutOff({nullptr, source, &target, &property});
    }
}

Any* CloneWith(const Any& source, std::size_t size, Any* (*construct)(void* storage, const Any& source)) {
    struct Free {
        void operator()(void* storage) const { ::operator delete(storage); }
    };

    std::unique_ptr<void, Free> storage(AllocateZeroed(size));
    if (storage == nullptr) {
        return nullptr;
    }
    const CloneScope scope;
    std::unique_ptr<Any> copy(construct(storage.get(), source));
    static_cast<void>(storage.release()); // the object's own from here on
    if (scope.IsOutermost()) {
        FinishPending();
    }
    return copy.release();
}

Any* FillClone(
    Any* copy, const Any& source, void (*fill)(Any& copy, const Any& source, const void* context),
    const void* context) {
    if (copy == nullptr) {
        return nullptr;
    }
    std::unique_ptr<Any> owner(copy);
    const CloneScope scope;
    fill(*copy, source, context);
    if (scope.IsOutermost()) {
        FinishPending();
    }
    return owner.release();
}

} // namespace Tavik
