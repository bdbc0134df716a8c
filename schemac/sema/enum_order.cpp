#include "schemac/diagnostic/catalogue.h"
#include "schemac/sema/describe.h"
#include "schemac/sema/lookup.h"
#include "schemac/sema/steps.h"

#include <unordered_map>

namespace Schemac::Sema {

namespace {

/// What keeps a type out of the order; empty when nothing does.
std::string_view WhyNotOrdered(const Model::Type& type) {
    if (type.AsEnum() == nullptr) {
        return Article(FamilyOf(type));
    }
    return type.isImported ? "of another one" : "";
}

class OrderResolver {
public:
    explicit OrderResolver(Program& program) : m_program(program) {}

    void Run() {
        for (const InputFile& file : m_program.files) {
            if (file.isImported) {
                continue;
            }
            for (const Syntax::NamespaceBlock& block : file.tree.blocks) {
                for (const Syntax::OrderDecl& order : block.enumOrders) {
                    Read(order, block.name.Text());
                }
            }
        }
        if (m_first == nullptr) {
            return;
        }
        for (const TypeEntry& entry : m_program.types) {
            const Model::EnumType* type = entry.Enum();
            if (type != nullptr && !type->isImported && !m_places.contains(type)) {
                m_program.reporter.Report(type->span, Diagnostics::kNotOrdered, type->dottedName)
                    .AddNote(m_first->span, Diagnostics::kOrderedHere);
            }
        }
        m_program.module.SetEnumOrder(std::move(m_order));
    }

private:
    void Read(const Syntax::OrderDecl& order, const std::string& nameSpace) {
        if (m_first != nullptr) {
            m_program.reporter.Report(order.span, Diagnostics::kSecondOrder)
                .AddNote(m_first->span, Diagnostics::kFirstWrittenHere);
            return;
        }
        m_first = &order;
        for (const Syntax::QualifiedName& name : order.names) {
            if (const Model::Type* type = FindType(m_program, name, nameSpace)) {
                Place(*type, name.span);
            }
        }
    }

    void Place(const Model::Type& type, const Span& written) {
        if (const std::string_view why = WhyNotOrdered(type); !why.empty()) {
            m_program.reporter.Report(written, Diagnostics::kNotAnOwnEnum, type.dottedName, why);
            return;
        }
        const auto [found, isNew] = m_places.emplace(&type, written);
        if (!isNew) {
            m_program.reporter.Report(written, Diagnostics::kOrderedTwice, type.dottedName)
                .AddNote(found->second, Diagnostics::kFirstWrittenHere);
            return;
        }
        m_order.push_back(type.AsEnum());
    }

    Program& m_program;
    const Syntax::OrderDecl* m_first = nullptr;
    std::unordered_map<const Model::Type*, Span> m_places;
    std::vector<const Model::EnumType*> m_order;
};

} // namespace

void ResolveEnumOrder(Program& program) {
    OrderResolver(program).Run();
}

} // namespace Schemac::Sema
