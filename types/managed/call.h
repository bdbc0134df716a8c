#pragma once

#include "tavik/managed/stub_impl.h"
#include "tavik/value/boxing.h"

#include <initializer_list>
#include <type_traits>
#include <utility>

/// What the methods of stubs do: pack the arguments, call, unpack the result. Included by generated sources
/// only.
namespace Morvane::Support {

/// One argument as a stub is given it, borrowed, and how it is boxed.
class Argument {
public:
    template <class T>
    Argument(const T& value) {
        if constexpr (std::is_pointer_v<T>) {
            m_value = static_cast<const Tavik::Any*>(value);
            m_box = &Share;
        } else {
            m_value = &value;
            m_box = &Box<T>;
        }
    }

    Pellum::Ref<Tavik::Any> GetBoxed() const { return m_box(m_value); }

private:
    static Pellum::Ref<Tavik::Any> Share(const void* value);

    template <class T>
    static Pellum::Ref<Tavik::Any> Box(const void* value) {
        return Tavik::Boxing<T>::Box(*static_cast<const T*>(value));
    }

    const void* m_value;
    Pellum::Ref<Tavik::Any> (*m_box)(const void* value);
};

/// The packed arguments of one call.
class CallArguments {
public:
    explicit CallArguments(std::initializer_list<Argument> arguments);
    CallArguments(const CallArguments&) = delete;
    CallArguments& operator=(const CallArguments&) = delete;
    ~CallArguments();

    Tavik::Arguments& Get() { return m_arguments; }

private:
    Tavik::Arguments m_arguments;
};

/// Calls a method that has a result, and waits for it.
Pellum::Ref<Tavik::Any> Call(
    Tavik::StubImpl& stub, Tavik::ManagedMethod* method, std::initializer_list<Argument> arguments);

/// Starts a call of any method.
void StartCall(
    Tavik::StubImpl& stub, Tavik::ManagedMethod* method, std::initializer_list<Argument> arguments,
    const Tavik::Completion& completion, Pellum::Ref<Pellum::System::ScheduledItem>& item);

/// A result that is passed by value.
template <class T>
T Take(const Pellum::Ref<Tavik::Any>& result) {
    return Tavik::Boxing<T>::Unbox(result.Get());
}

/// A result that is an object, an array or a reference; `out` is left alone when it is of another class.
template <class T>
void Store(const Pellum::Ref<Tavik::Any>& result, Pellum::Ref<T>& out) {
    out.Reset(Tavik::Boxing<T*>::Unbox(result.Get()));
}

} // namespace Morvane::Support
