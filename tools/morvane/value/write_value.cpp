#include "tools/morvane/value/write_value.h"

#include "tavik/codec/json/errors.h"
#include "tavik/type/data_object_type.h"
#include "tavik/value/print.h"
#include "tavik/value/walk.h"

#include <functional>
#include <utility>

namespace Tool {

namespace {

/// Called for every property that is set; true looks inside of its value.
using SetPropertyVisitor =
    std::function<bool(const Tavik::Property& property, const Tavik::ValueWalker& walker)>;

/// The same for members of open content.
using OpenMemberVisitor = std::function<bool(const Tavik::OpenMember& member)>;

class SetPropertyWalk final : public Tavik::ValueVisitor {
public:
    SetPropertyWalk(SetPropertyVisitor visit, OpenMemberVisitor visitOpen)
        : m_visit(std::move(visit)), m_visitOpen(std::move(visitOpen)), m_walker(*this) {}

    void Walk(const Tavik::Any& value) { m_walker.Walk(&value, nullptr); }

    bool BeginObject(
        const Tavik::DataObject& /*object*/, const Tavik::DataObjectType& /*type*/,
        const Tavik::Type* /*declared*/) override {
        return true;
    }

    bool VisitProperty(const Tavik::Property& property, bool isSet) override {
        return isSet && m_visit(property, m_walker);
    }

    bool BeginArray(
        const Tavik::ArrayBase& /*array*/, const Tavik::Type& elementType,
        const Tavik::Type* /*declared*/) override {
        return elementType.GetKind() >= Tavik::TypeKind::Any; // nothing inside of scalars
    }

    void EndObject() override {}

    void EndArray() override {}

    void VisitElement(std::size_t /*index*/) override {}

    void VisitScalar(const Tavik::Type& /*type*/, const void* /*value*/, bool /*boxed*/) override {}

    void VisitReference(const Tavik::MoRef& /*reference*/, const Tavik::Type* /*declared*/) override {}

    bool VisitOpenMember(const Tavik::OpenMember& member) override { return m_visitOpen(member); }

    bool VisitOpenValue(const Tavik::OpenValue& value) override { return value.IsContainer(); }

    void EndOpenValue(const Tavik::OpenValue& /*value*/) override {}

    void VisitNull() override {}

    void VisitUnknown() override {}

private:
    SetPropertyVisitor m_visit;
    OpenMemberVisitor m_visitOpen;
    Tavik::ValueWalker m_walker;
};

} // namespace

std::string WriteValue(const Tavik::Any& value, const Tavik::Version* version, int indent, bool showSecrets) {
    const Tavik::PrintOptions options{
        .showSecrets = showSecrets, .indent = indent, .version = version, .declaredType = nullptr};
    std::string text;
    Tavik::PrintProblem problem;
    if (!Tavik::TryPrint(&value, options, text, problem)) {
        throw Tavik::Json::EncodeError(problem.path, problem.what);
    }
    return text;
}

std::vector<SetProperty> FindVanishing(const Tavik::Any& value, const Tavik::Version& version) {
    std::vector<SetProperty> vanishing;
    const auto visit = [&](const Tavik::Property& property, const Tavik::ValueWalker& walker) {
        const bool stays = property.IsPartOf(&version);
        if (!stays) {
            vanishing.push_back({walker.GetPath(), property.GetVersion()});
        }
        return stays;
    };
    SetPropertyWalk walk(visit, [](const Tavik::OpenMember& /*member*/) { return false; }); // all of it stays
    walk.Walk(value);
    return vanishing;
}

std::size_t CountSecrets(const Tavik::Any& value, const Tavik::Version* version) {
    std::size_t count = 0;
    const auto visit = [&](const Tavik::Property& property, const Tavik::ValueWalker& /*walker*/) {
        const bool stays = property.IsPartOf(version);
        count += stays && property.IsSecret() ? 1 : 0;
        return stays && !property.IsSecret();
    };
    const auto visitOpen = [&](const Tavik::OpenMember& member) {
        count += member.IsSecret() ? 1 : 0;
        return !member.IsSecret();
    };
    SetPropertyWalk walk(visit, visitOpen);
    walk.Walk(value);
    return count;
}

} // namespace Tool
