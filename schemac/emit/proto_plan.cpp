#include "schemac/emit/proto_plan.h"

#include "schemac/model/naming.h"

#include <algorithm>
#include <deque>
#include <tuple>
#include <unordered_set>

namespace Schemac::Emit {

namespace {

using Graph = std::vector<std::set<std::size_t>>; ///< by node: where its edges lead

std::vector<bool> Reachable(const Graph& graph, std::size_t start) {
    std::vector<bool> seen(graph.size());
    std::deque<std::size_t> open{start};
    seen[start] = true;
    while (!open.empty()) {
        const std::size_t node = open.front();
        open.pop_front();
        for (const std::size_t next : graph[node]) {
            if (!seen[next]) {
                seen[next] = true;
                open.push_back(next);
            }
        }
    }
    return seen;
}

/// By node: the first of those that it is on a cycle with, itself included. The nodes are files and few.
std::vector<std::size_t> FirstOfCycle(const Graph& graph) {
    std::vector<std::vector<bool>> reachable;
    for (std::size_t node = 0; node < graph.size(); ++node) {
        reachable.push_back(Reachable(graph, node));
    }
    std::vector<std::size_t> first(graph.size());
    for (std::size_t node = 0; node < graph.size(); ++node) {
        while (!reachable[node][first[node]] || !reachable[first[node]][node]) {
            ++first[node];
        }
    }
    return first;
}

/// Whether the message of a type has fields.
bool HasContent(const Model::Type& type) {
    const Model::DataType* data = type.AsData();
    return data != nullptr
        && (!data->properties.empty() || data->AddsOpenContent() || HasContent(*data->base));
}

} // namespace

ProtoPlan::ProtoPlan(const Model::Module& module) : m_supportPath(module.Library() + "/support.proto") {
    for (const Model::Version* version : module.Versions()) {
        m_versionOrder.emplace(version, m_versionOrder.size() + 1);
    }
    FindDerived(module);
    FindTypes(module);
    MakeFiles(module);
}

const ProtoChoice* ProtoPlan::FindChoice(const Model::Type& type) const {
    const auto found = m_choices.find(&type);
    return found == m_choices.end() ? nullptr : &found->second;
}

const Model::DataType* ProtoPlan::BaseMessage(const Model::Type& type) {
    const Model::Type* base = type.Base();
    return base != nullptr && HasContent(*base) ? base->AsData() : nullptr;
}

void ProtoPlan::FindDerived(const Model::Module& module) {
    for (const auto* types : {&module.ImportedDataTypes(), &module.DataTypes()}) {
        for (const Model::DataType* type : *types) {
            m_derived[type->base].push_back(type);
        }
    }
    m_derived[&module.Builtin(Model::BuiltinKind::MethodFault)].push_back(
        &module.Builtin(Model::BuiltinKind::RuntimeFault));
    // Whatever the root of all can stand for is a google.protobuf.Any.
    m_derived.erase(&module.Builtin(Model::BuiltinKind::DynamicData));
}

/// Those of younger versions behind those of older ones, as their numbers go by that.
std::vector<const Model::Type*> ProtoPlan::AllDerivedFrom(const Model::Type& base) const {
    std::vector<const Model::Type*> all;
    std::vector<const Model::Type*> open{&base};
    while (!open.empty()) {
        const auto found = m_derived.find(open.back());
        open.pop_back();
        if (found != m_derived.end()) {
            all.insert(all.end(), found->second.begin(), found->second.end());
            open.insert(open.end(), found->second.begin(), found->second.end());
        }
    }
    const auto rank = [&](const Model::Type* type) {
        const auto order = m_versionOrder.find(type->version);
        return std::tuple(
            !type->isImported, order == m_versionOrder.end() ? 0 : order->second, type->wireName);
    };
    std::sort(all.begin(), all.end(), [&](const auto* left, const auto* right) {
        return rank(left) < rank(right);
    });
    return all;
}

void ProtoPlan::FindTypes(const Model::Module& module) {
    std::unordered_set<const Model::Type*> seen;
    std::deque<const Model::Type*> open;
    const auto add = [&](const Model::Type* type) {
        const bool isFault =
            type->Is(Model::BuiltinKind::MethodFault) || type->Is(Model::BuiltinKind::RuntimeFault);
        if ((isFault || type->IsDataOrFault() || type->AsEnum() != nullptr) && seen.insert(type).second) {
            open.push_back(type);
        }
    };
    const auto addPlaces = [&](const std::vector<Model::Property>& places) {
        for (const Model::Property& place : places) {
            add(place.type);
            if (m_derived.contains(place.type) && !m_choices.contains(place.type)) {
                ProtoChoice choice{place.type, {place.type}};
                const std::vector<const Model::Type*> derived = AllDerivedFrom(*place.type);
                choice.alternatives.insert(choice.alternatives.end(), derived.begin(), derived.end());
                std::for_each(derived.begin(), derived.end(), add);
                m_choices.emplace(place.type, std::move(choice));
            }
        }
    };
    std::for_each(module.EnumTypes().begin(), module.EnumTypes().end(), add);
    std::for_each(module.DataTypes().begin(), module.DataTypes().end(), add);
    for (const Model::ManagedType* type : module.ManagedTypes()) {
        addPlaces(type->properties);
        for (const Model::Method& method : type->methods) {
            addPlaces(method.parameters);
            if (method.HasResult()) {
                addPlaces({method.result});
            }
        }
    }
    while (!open.empty()) {
        const Model::Type* type = open.front();
        open.pop_front();
        m_types.push_back(type);
        if (const Model::DataType* base = BaseMessage(*type)) {
            add(base);
        }
        if (const Model::DataType* data = type->AsData()) {
            addPlaces(data->properties);
        }
    }
}

std::vector<const void*> ProtoPlan::ReferencesOf(const Model::Type& type) const {
    std::vector<const void*> references;
    const Model::DataType* data = type.AsData();
    if (data == nullptr) {
        return references;
    }
    references.push_back(BaseMessage(type));
    for (const Model::Property& property : data->properties) {
        const ProtoChoice* choice = FindChoice(*property.type);
        references.push_back(choice != nullptr ? static_cast<const void*>(choice) : property.type);
    }
    return references;
}

void ProtoPlan::MakeFiles(const Model::Module& module) {
    // The nodes: the support messages, the library's schema files, those of others, choices.
    std::vector<ProtoFile> nodes{{m_supportPath, "the runtime", {}, {}, {}}};
    std::unordered_map<const void*, std::size_t> nodeOf;
    const auto addSource = [&](const Model::SourceFile* source) {
        if (nodeOf.emplace(source, nodes.size()).second) {
            nodes.push_back(
                {Naming::PathStem(source->path) + ".proto",
                 "schema file '" + source->path + "'",
                 {source},
                 {},
                 {}});
        }
    };
    std::for_each(module.Files().begin(), module.Files().end(), addSource);
    for (const Model::Type* type : m_types) {
        if (type->file != nullptr) {
            addSource(type->file);
        }
        const std::size_t node = type->file == nullptr ? 0 : nodeOf.at(type->file);
        nodeOf.emplace(type, node);
        nodes[node].types.push_back(type);
    }
    for (const Model::Type* type : m_types) {
        if (const ProtoChoice* choice = FindChoice(*type)) {
            const std::string& path = nodes[nodeOf.at(type)].path;
            nodeOf.emplace(choice, nodes.size());
            nodes.push_back(
                {path.substr(0, path.rfind('/') + 1) + Naming::SnakeCase(Naming::ProtoChoice(*type))
                     + ".proto",
                 "the choice for type '" + type->dottedName + "'",
                 {},
                 {},
                 {choice}});
        }
    }

    Graph graph(nodes.size());
    const auto connect = [&](std::size_t from, const void* to) {
        const auto found = nodeOf.find(to);
        if (found != nodeOf.end()) {
            graph[from].insert(found->second);
        }
    };
    for (std::size_t node = 0; node < nodes.size(); ++node) {
        for (const Model::Type* type : nodes[node].types) {
            for (const void* reference : ReferencesOf(*type)) {
                connect(node, reference);
            }
        }
        for (const ProtoChoice* choice : nodes[node].choices) {
            for (const Model::Type* alternative : choice->alternatives) {
                connect(node, alternative);
            }
        }
    }

    const std::vector<std::size_t> first = FirstOfCycle(graph);
    for (std::size_t node = 0; node < nodes.size(); ++node) {
        ProtoFile& file = nodes[first[node]];
        if (first[node] != node) {
            const auto append = [](auto& to, const auto& from) {
                to.insert(to.end(), from.begin(), from.end());
            };
            append(file.sources, nodes[node].sources);
            append(file.types, nodes[node].types);
            append(file.choices, nodes[node].choices);
        }
        for (const auto& [element, at] : nodeOf) {
            if (at == node) {
                m_paths[element] = file.path;
            }
        }
    }
    for (std::size_t node = 0; node < nodes.size(); ++node) {
        const ProtoFile& file = nodes[node];
        if (node == 0 || (first[node] == node && !(file.types.empty() && file.choices.empty()))) {
            m_files.push_back(file);
        }
    }
}

} // namespace Schemac::Emit
