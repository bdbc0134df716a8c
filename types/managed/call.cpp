#include "types/managed/call.h"

namespace Morvane::Support {

Pellum::Ref<Tavik::Any> Argument::Share(const void* value) {
    return const_cast<Tavik::Any*>(static_cast<const Tavik::Any*>(value));
}

CallArguments::CallArguments(std::initializer_list<Argument> arguments) : m_arguments(arguments.size()) {
    auto element = m_arguments.begin();
    for (const Argument& argument : arguments) {
        *element++ = argument.GetBoxed();
    }
}

CallArguments::~CallArguments() = default;

Pellum::Ref<Tavik::Any> Call(
    Tavik::StubImpl& stub, Tavik::ManagedMethod* method, std::initializer_list<Argument> arguments) {
    CallArguments packed(arguments);
    Pellum::Ref<Tavik::Any> result;
    stub._Invoke_Task(method, packed.Get(), result);
    return result;
}

void StartCall(
    Tavik::StubImpl& stub, Tavik::ManagedMethod* method, std::initializer_list<Argument> arguments,
    const Tavik::Completion& completion, Pellum::Ref<Pellum::System::ScheduledItem>& item) {
    CallArguments packed(arguments);
    stub._StartInvoke_Task(method, packed.Get(), completion, item);
}

} // namespace Morvane::Support
