#pragma once

#include "tavik/export.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <new>
#include <string>

namespace Tavik {

class PropertyDiffSet;
class Type;

/// Root of every value the runtime moves: counted, typed, clonable, comparable, diffable, printable.
///
/// A new value has a count of zero; the first `Pellum::Ref` raises it to one, the last one deletes the value.
/// The count is atomic from the first `Ref` on, which must be there before another thread knows the value;
/// the content is not synchronised.
///
/// A value must not contain itself: such a value is never freed, and cloning, comparing or printing it does
/// not end.
///
/// The virtual functions stand in the order that foreign runtimes call them by; new ones go behind those of
/// the derived classes, never between.
class TAVIK_API Any {
public:
    virtual ~Any() = default;

    /// Values come from the thread's cache of blocks and begin as zeros: constructors of data objects leave
    /// required numbers, booleans and enumeration values as they find them, and comparing looks at padding,
    /// too (what is in there never decides). Data objects elsewhere, elements of `new T[n]` as well, have to
    /// be filled by `__autoclassinit2` before they are constructed.
    static void* operator new(std::size_t size);
    static void* operator new(std::size_t size, const std::nothrow_t&) noexcept;

    static void* operator new(std::size_t /*size*/, void* storage) noexcept { return storage; }

    static void operator delete(void* storage, std::size_t size) noexcept;
    static void operator delete(void* storage, const std::nothrow_t&) noexcept;

    static void operator delete(void* /*storage*/, void* /*place*/) noexcept {}

    /// The value as JSON, with every secret shown as "***". Never throws for the value's content.
    virtual std::string ToString() const;
    /// The registered type, borrowed; null before the library that owns the type has been loaded by the
    /// registry.
    virtual Type* _GetType() const = 0;
    /// A new deep copy with no count; null when out of memory for the object itself.
    virtual Any* _Clone() const = 0;
    /// Whether this equals `other`, which must be of the same class. With `partial` every optional property
    /// that is unset in `other` matches whatever this value holds.
    ///
    /// Very deep parts are compared only when the outermost comparison ends, and "true" says so much about
    /// them until then: what an implementation hands on has to be part of the two values, and to be needed
    /// for them to be equal. The same goes for `_DiffProperties`.
    virtual bool _IsEqual(const Any* other, bool partial) const = 0;
    /// Adds to `diffs` the path of every property in which this and `other`, of the same class, differ; each
    /// path begins with `prefix`.
    virtual void _DiffProperties(
        const Any* other, const std::string& prefix, PropertyDiffSet& diffs) const = 0;

    void IncRef() const noexcept {
        // A new value is known to whoever made it alone: its first count needs no synchronisation.
        if (m_header.load(std::memory_order_relaxed) == 0) {
            m_header.store(1, std::memory_order_relaxed);
        } else {
            m_header.fetch_add(1, std::memory_order_relaxed);
        }
    }

    /// Deletes the value when the count falls to zero. The stack used does not grow with the depth of the
    /// value.
    void DecRef() const noexcept;
    std::int32_t GetRefCount() const noexcept;

    Any& operator=(const Any&) = delete;

protected:
    Any() noexcept = default;

    /// A copy is a new value: the count is not copied.
    Any(const Any&) noexcept {}

private:
    /// The reference count; once the last owner has let go, the next value that waits for destruction.
    mutable std::atomic<std::uintptr_t> m_header{0};
};

} // namespace Tavik
