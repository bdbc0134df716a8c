#include "types/managed/dispatch.h"

namespace Morvane::Support {

Tavik::Any* PeekArgument(const Tavik::Arguments& arguments, std::size_t index) {
    return index < arguments.size() ? arguments[index].Get() : nullptr;
}

void RunCase(
    const DispatchCase* cases, std::size_t count, const std::type_info& type, void* target, int index,
    Tavik::Arguments& arguments, Pellum::Ref<Tavik::Any>& result) {
    // A negative index is beyond the last one, too.
    if (static_cast<unsigned>(index) >= count) {
        return;
    }
    if (target == nullptr) {
        Pellum::ThrowTypeMismatchException(type, typeid(std::nullptr_t));
    }
    cases[index](target, arguments, result);
}

} // namespace Morvane::Support
