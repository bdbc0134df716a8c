#include "tavik/library/type_library.h"

#include <algorithm>
#include <memory>
#include <new>

namespace Tavik {

namespace {

void FillSlots(const TypeLibrary& library) {
    Type** slot = library.slots;
    auto row = library.traits.begin();
    // In one block. Nobody ever frees types, so nobody has to know which of them were made alone.
    DataObjectType* dataType = std::allocator<DataObjectType>().allocate(library.dataTypes.size());
    for (std::size_t i = 0; i < library.dataTypes.size(); ++i) {
        const DataTypeInfo& info = library.dataTypes[i];
        DataTypeTraits traits;
        if (row != library.traits.end() && row->index == i) {
            traits = (row++)->traits;
        }
        traits.layout = i < library.layouts.size() ? library.layouts[i] : nullptr;
        *slot++ = ::new (dataType++) DataObjectType(&info, traits);
    }
    for (const EnumRegistration& registration : library.enums) {
        *slot++ = registration.create(registration.info, registration.functions);
    }
    for (const ManagedTypeInfo& info : library.managedTypes) {
        *slot++ = CreateManagedObjectType(&info);
    }
}

} // namespace

Type** CreateTypes(const TypeLibrary& library, int& count) {
    const std::size_t total = library.dataTypes.size() + library.enums.size() + library.managedTypes.size();
    try {
        FillSlots(library);
    } catch (...) {
        // Types that the runtime never gets to see would be half-made.
        std::fill_n(library.slots, total, nullptr);
        throw;
    }
    count = static_cast<int>(total);
    return library.slots;
}

} // namespace Tavik
