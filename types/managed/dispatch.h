#pragma once

#include "pellum/error/type_mismatch.h"
#include "pellum/object/ref.h"
#include "tavik/managed/managed_object.h"
#include "tavik/managed/stub_adapter.h"
#include "tavik/value/boxing.h"
#include "types/managed/managed_functions.h"

#include <array>
#include <cstddef>
#include <new>
#include <tuple>
#include <type_traits>
#include <typeinfo>
#include <utility>

/// What the dispatch functions of managed types do: unpack the arguments, call the interface, pack the
/// result. Included by generated sources only.
namespace Morvane::Support {

/// Calls one method of an interface; `target` is an object of it.
using DispatchCase = void (*)(void* target, Tavik::Arguments& arguments, Pellum::Ref<Tavik::Any>& result);

/// What an interface is made of; specialised beside its other definitions and nowhere else:
///
///     using Stub = ...;
///     static constexpr std::array<DispatchCase, count> kCases; // methods first, then getters
template <class T>
struct InterfaceTraits;

/// The argument at `index`, borrowed; null when there is none.
Tavik::Any* PeekArgument(const Tavik::Arguments& arguments, std::size_t index);

/// Runs the case of that index; one that is none does nothing. `type` is the interface's.
void RunCase(
    const DispatchCase* cases, std::size_t count, const std::type_info& type, void* target, int index,
    Tavik::Arguments& arguments, Pellum::Ref<Tavik::Any>& result);

/// A parameter of an interface's method: what the argument is unboxed to. Boxed values outlast the call, so
/// that texts are not copied.
template <class Parameter>
struct Slot {
    using Boxing = Tavik::Boxing<std::remove_cvref_t<Parameter>>;

    Slot(const Tavik::Arguments& arguments, std::size_t index)
        : value(Boxing::Unbox(PeekArgument(arguments, index))) {}

    void Finish(Pellum::Ref<Tavik::Any>& /*result*/) {}

    decltype(Boxing::Unbox(nullptr)) value;
};

/// The last parameter, when it is for the result.
template <class T>
struct Slot<Pellum::Ref<T>&> {
    Slot(const Tavik::Arguments& /*arguments*/, std::size_t /*index*/) {}

    void Finish(Pellum::Ref<Tavik::Any>& result) { result = std::move(value); }

    Pellum::Ref<T> value;
};

/// Unpacks the arguments by the method's own signature, calls it, and packs what it gives.
template <auto method, class T, class Result, class... Parameters, std::size_t... indexes>
void Run(
    Result (T::* /*method*/)(Parameters...), std::index_sequence<indexes...> /*all*/, void* target,
    const Tavik::Arguments& arguments, Pellum::Ref<Tavik::Any>& result) {
    // In braces, so that the first argument is looked at first.
    [[maybe_unused]] std::tuple<Slot<Parameters>...> slots{Slot<Parameters>(arguments, indexes)...};
    T& object = *static_cast<T*>(target);
    if constexpr (std::is_void_v<Result>) {
        (object.*method)(std::get<indexes>(slots).value...);
        (std::get<indexes>(slots).Finish(result), ...);
    } else {
        result = Tavik::Boxing<Result>::Box((object.*method)(std::get<indexes>(slots).value...));
    }
}

/// The indexes of a method's parameters; only its type is used.
template <class T, class Result, class... Parameters>
std::index_sequence_for<Parameters...> IndexesOf(Result (T::*method)(Parameters...));

/// The case of one method.
template <auto method>
void RunMethod(void* target, Tavik::Arguments& arguments, Pellum::Ref<Tavik::Any>& result) {
    Run<method>(method, decltype(IndexesOf(method))(), target, arguments, result);
}

template <class T>
void ManagedFunctions<T>::Dispatch(
    Tavik::ManagedObject* target, int index, Tavik::Arguments& arguments, Pellum::Ref<Tavik::Any>& result) {
    T* const object = dynamic_cast<T*>(target);
    if (target != nullptr && object == nullptr) {
        Pellum::ThrowTypeMismatchException(typeid(T), typeid(*target));
    }
    constexpr auto& cases = InterfaceTraits<T>::kCases;
    RunCase(cases.data(), cases.size(), typeid(T), object, index, arguments, result);
}

template <class T>
Tavik::ManagedObject* ManagedFunctions<T>::CreateStub(
    Tavik::MoRef* reference, Tavik::StubAdapter* adapter, Tavik::RequestContext* context) {
    try {
        return new (std::nothrow) typename InterfaceTraits<T>::Stub(reference, adapter, context);
    } catch (const std::bad_alloc&) { // the adapter has none for it
        return nullptr;
    }
}

} // namespace Morvane::Support
