#include "pellum/object/object.h"

#include "pellum/text/demangle.h"

#include <cassert>
#include <typeinfo>

namespace Pellum {

Object::~Object() = default;

ObjectImpl::ObjectImpl(const ObjectImpl& other) : Object(other) {}

ObjectImpl& ObjectImpl::operator=([[maybe_unused]] const ObjectImpl& other) {
    return *this;
}

ObjectImpl::~ObjectImpl() = default;

void ObjectImpl::IncRef() const noexcept {
    // Release: who then takes a count by `TryIncRef` finds the object complete.
    m_refCount.fetch_add(1, std::memory_order_release);
}

void ObjectImpl::DecRef() const noexcept {
    // Release: this thread's writes are visible to the one that destroys. Acquire: the destroyer sees them
    // all.
    const int before = m_refCount.fetch_sub(1, std::memory_order_acq_rel);
    assert(before > 0);
    if (before == 1) {
        delete this;
    }
}

bool ObjectImpl::TryIncRef() const noexcept {
    int count = m_refCount.load(std::memory_order_relaxed);
    while (count != 0) {
        if (m_refCount.compare_exchange_weak(
                count, count + 1, std::memory_order_acquire, std::memory_order_relaxed)) {
            return true;
        }
    }
    return false;
}

std::string ObjectImpl::ToString() const {
    return Demangle(typeid(*this));
}

int ObjectImpl::GetRefCount() const noexcept {
    return m_refCount.load(std::memory_order_relaxed);
}

} // namespace Pellum
