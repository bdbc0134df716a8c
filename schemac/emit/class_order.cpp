#include "schemac/emit/class_order.h"

#include <algorithm>

namespace Schemac::Emit {

namespace {

void Collect(const Model::Type& type, std::vector<const Model::Type*>& classes) {
    if (type.AsEnum() == nullptr) {
        classes.push_back(&type);
    }
    for (const Model::Type* nested : type.nested) {
        Collect(*nested, classes);
    }
}

void CollectEnumerations(const Model::Type& type, std::vector<const Model::EnumType*>& enumerations) {
    if (const Model::EnumType* enumeration = type.AsEnum()) {
        enumerations.push_back(enumeration);
    }
    for (const Model::Type* nested : type.nested) {
        CollectEnumerations(*nested, enumerations);
    }
}

} // namespace

std::vector<const Model::Type*> ClassesInOrder(const Model::Type& topLevel) {
    std::vector<const Model::Type*> waiting;
    Collect(topLevel, waiting);

    std::vector<const Model::Type*> ordered;
    const auto isReady = [&](const Model::Type* type) {
        const auto isPlaced = [&](const Model::Type* needed) {
            return needed == nullptr || &needed->TopLevel() != &topLevel
                || std::find(ordered.begin(), ordered.end(), needed) != ordered.end();
        };
        return isPlaced(type->enclosing) && isPlaced(type->Base());
    };
    while (!waiting.empty()) {
        const auto next = std::find_if(waiting.begin(), waiting.end(), isReady);
        // The model holds no cycle, so one is always ready.
        ordered.push_back(*next);
        waiting.erase(next);
    }
    return ordered;
}

std::vector<const Model::EnumType*> Enumerations(const Model::Type& topLevel) {
    std::vector<const Model::EnumType*> enumerations;
    CollectEnumerations(topLevel, enumerations);
    return enumerations;
}

} // namespace Schemac::Emit
