#include "schemac/model/header_needs.h"

#include <algorithm>

namespace Schemac::Model {

namespace {

class Collector {
public:
    explicit Collector(const Type& topLevel) : m_topLevel(topLevel) {}

    HeaderNeeds Run() {
        CollectType(m_topLevel);
        std::erase_if(m_needs.forwards, [&](const Type* type) { return Contains(m_needs.includes, type); });
        return std::move(m_needs);
    }

private:
    static bool Contains(const std::vector<const Type*>& list, const Type* type) {
        return std::find(list.begin(), list.end(), type) != list.end();
    }

    void Add(std::vector<const Type*>& list, const Type& type) {
        const Type& target = type.TopLevel();
        if (!target.IsBuiltin() && &target != &m_topLevel && !Contains(list, &target)) {
            list.push_back(&target);
        }
    }

    void CollectType(const Type& type) {
        if (const DataType* data = type.AsData()) {
            Add(m_needs.includes, *data->base);
            CollectUses(data->properties);
        } else if (const ManagedType* managed = type.AsManaged()) {
            Add(m_needs.includes, *managed->base);
            CollectUses(managed->properties);
            for (const Method& method : managed->methods) {
                CollectUses(method.parameters);
                CollectUse(method.result);
            }
        }
        for (const Type* nested : type.nested) {
            CollectType(*nested);
        }
    }

    void CollectUses(const std::vector<Property>& properties) {
        for (const Property& property : properties) {
            CollectUse(property);
        }
    }

    void CollectUse(const Property& use) {
        if (use.type == nullptr || use.IsReference()) {
            return; // a reference names no class: it is the runtime's own
        }
        const bool needsDefinition = use.type->IsNested() || use.type->AsEnum() != nullptr;
        Add(needsDefinition ? m_needs.includes : m_needs.forwards, *use.type);
    }

    const Type& m_topLevel;
    HeaderNeeds m_needs;
};

} // namespace

HeaderNeeds CollectHeaderNeeds(const Type& topLevel) {
    return Collector(topLevel).Run();
}

} // namespace Schemac::Model
