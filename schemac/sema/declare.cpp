#include "schemac/diagnostic/catalogue.h"
#include "schemac/model/naming.h"
#include "schemac/sema/steps.h"

namespace Schemac::Sema {

namespace {

using Syntax::TypeDecl;
using Syntax::TypeDeclKind;

class TypeDeclarer {
public:
    explicit TypeDeclarer(Program& program) : m_program(program) {}

    void DeclareFile(const InputFile& input) {
        Model::SourceFile& file = m_program.module.AddFile();
        file.path = input.path;
        file.isImported = input.isImported;
        for (const Syntax::NamespaceBlock& block : input.tree.blocks) {
            const std::string nameSpace = block.name.Text();
            for (const auto& decl : block.types) {
                file.types.push_back(&DeclareType(*decl, nameSpace, file, nullptr));
            }
        }
    }

private:
    Model::Type& AddType(TypeDeclKind kind) {
        switch (kind) {
        case TypeDeclKind::Enum: return m_program.module.AddType<Model::EnumType>();
        case TypeDeclKind::Managed: return m_program.module.AddType<Model::ManagedType>();
        case TypeDeclKind::Fault: return m_program.module.AddType<Model::DataType>(Model::TypeKind::Fault);
        case TypeDeclKind::Data: break;
        }
        return m_program.module.AddType<Model::DataType>(Model::TypeKind::Data);
    }

    Model::Type& DeclareType(
        const TypeDecl& decl, const std::string& nameSpace, const Model::SourceFile& file,
        const Model::Type* enclosing) {
        Model::Type& type = AddType(decl.kind);
        type.name = decl.name.text;
        type.dottedName = (enclosing != nullptr ? enclosing->dottedName : nameSpace) + "." + type.name;
        type.wireName = decl.wire->text;
        type.classPath = Naming::ClassPath(type.dottedName);
        type.doc = decl.doc;
        type.enclosing = enclosing;
        type.file = &file;
        type.isImported = file.isImported;
        type.span = decl.name.span;
        Enter(type);
        m_program.types.push_back({&decl, &type, nameSpace});
        for (const auto& nested : decl.nested) {
            type.nested.push_back(&DeclareType(*nested, nameSpace, file, &type));
        }
        return type;
    }

    void Enter(const Model::Type& type) {
        const auto [found, isNew] = m_program.typesByName.emplace(type.dottedName, &type);
        if (!isNew) {
            m_program.reporter.Report(type.span, Diagnostics::kDuplicateType, type.dottedName)
                .AddNote(found->second->span, Diagnostics::kFirstDeclaredHere);
            return;
        }
        m_program.typesByClass.emplace(Naming::QualifiedClassName(type), &type);
    }

    Program& m_program;
};

} // namespace

void DeclareVersions(Program& program) {
    const Model::Version& base = program.module.BaseVersion();
    program.versionsByName.emplace(base.fullName, &base);
    for (const InputFile& file : program.files) {
        for (const Syntax::NamespaceBlock& block : file.tree.blocks) {
            for (const Syntax::VersionDecl& decl : block.versions) {
                Model::Version& version = program.module.AddVersion();
                version.name = decl.name.text;
                version.nameSpace = block.name.Text();
                version.fullName = version.nameSpace + ".version." + version.name;
                version.label = decl.label ? decl.label->text : "";
                version.doc = decl.doc;
                version.isImported = file.isImported;
                version.span = decl.name.span;
                program.versions.push_back({&decl, &version});
                const auto [found, isNew] = program.versionsByName.emplace(version.fullName, &version);
                if (!isNew) {
                    program.reporter.Report(version.span, Diagnostics::kDuplicateVersion, version.fullName)
                        .AddNote(found->second->span, Diagnostics::kFirstDeclaredHere);
                }
            }
        }
    }
}

void DeclareTypes(Program& program) {
    for (const auto& builtin : program.module.Types()) {
        program.typesByName.emplace(builtin->dottedName, builtin.get());
        program.typesByClass.emplace(
            Naming::Join(Naming::ClassPath(builtin->dottedName), "::"), builtin.get());
    }
    TypeDeclarer declarer(program);
    for (const InputFile& file : program.files) {
        declarer.DeclareFile(file);
    }
}

} // namespace Schemac::Sema
