#include "tools/morvane/value/places.h"

#include "tavik/type/data_object_type.h"
#include "tavik/type/type.h"
#include "tavik/value/array_base.h"
#include "tavik/value/mo_ref.h"
#include "tavik/value/print.h"
#include "tavik/value/walk.h"

#include <unordered_set>

namespace Tool {

namespace {

constexpr const char* kHiddenSecret = "\"***\"";

/// Scalars and arrays that stand alone are printed together with their type: takes off what belongs to the
/// type.
std::string PrintPlain(const Tavik::Any& value, const Tavik::PrintOptions& options) {
    std::string text = Tavik::Print(&value, options);
    const std::string front =
        R"({"$type": ")" + std::string(value._GetType()->GetWireName()) + R"(", "value": )";
    if (text.starts_with(front) && text.ends_with('}')) {
        text = text.substr(front.size(), text.size() - front.size() - 1);
    }
    return text;
}

class PlaceFinder final : public Tavik::ValueVisitor {
public:
    PlaceFinder(const std::vector<std::string>& paths, bool showSecrets)
        : m_paths(paths.begin(), paths.end()), m_walker(*this) {
        m_options.showSecrets = showSecrets;
    }

    std::map<std::string, Place> Find(const Tavik::Any& value) {
        m_walker.Walk(&value, nullptr);
        return std::move(m_places);
    }

    bool BeginObject(
        const Tavik::DataObject& object, const Tavik::DataObjectType& /*type*/,
        const Tavik::Type* /*declared*/) override {
        Found([&] { return Tavik::Print(&object, m_options); });
        Enter();
        return true;
    }

    void EndObject() override { Leave(); }

    bool VisitProperty(const Tavik::Property& property, bool isSet) override {
        m_isSecret = m_outerSecrets.back() || property.IsSecret();
        const std::string path = m_walker.GetPath();
        if (m_paths.contains(path)) {
            m_places[path] = {isSet, m_isSecret, property.IsOptional(), {}};
        }
        return isSet;
    }

    bool BeginArray(
        const Tavik::ArrayBase& array, const Tavik::Type& /*elementType*/,
        const Tavik::Type* /*declared*/) override {
        Found([&] { return PrintPlain(array, m_options); });
        Enter();
        return true;
    }

    void EndArray() override { Leave(); }

    void VisitElement(std::size_t /*index*/) override { m_isSecret = m_outerSecrets.back(); }

    void VisitScalar(const Tavik::Type& type, const void* value, bool /*boxed*/) override {
        Found([&] { return PrintPlain(*Pellum::Ref<Tavik::Any>(type.Box(value)), m_options); });
    }

    void VisitReference(const Tavik::MoRef& reference, const Tavik::Type* /*declared*/) override {
        Found([&] { return Tavik::Print(&reference, m_options); });
    }

    bool VisitOpenMember(const Tavik::OpenMember& member) override {
        m_isSecret = m_outerSecrets.back() || member.IsSecret();
        const std::string path = m_walker.GetPath();
        if (m_paths.contains(path)) {
            m_places[path] = {true, m_isSecret, true, {}};
        }
        return true;
    }

    bool VisitOpenValue(const Tavik::OpenValue& value) override {
        Found([&] { return Tavik::Print(value, m_options); });
        if (value.IsContainer()) {
            Enter();
        }
        return true;
    }

    void EndOpenValue(const Tavik::OpenValue& /*value*/) override { Leave(); }

    void VisitNull() override {
        Found([] { return std::string("null"); });
    }

    void VisitUnknown() override { VisitNull(); }

private:
    void Enter() { m_outerSecrets.push_back(m_isSecret); }

    void Leave() {
        m_isSecret = m_outerSecrets.back();
        m_outerSecrets.pop_back();
    }

    /// Notes what stands at the place that is being visited, if it is asked for.
    template <class PrintValue>
    void Found(PrintValue print) {
        const std::string path = m_walker.GetPath();
        if (m_paths.contains(path)) {
            Place& place = m_places[path];
            place.isSet = true;
            place.isSecret = m_isSecret;
            place.text = m_isSecret && !m_options.showSecrets ? kHiddenSecret : print();
        }
    }

    std::unordered_set<std::string> m_paths;
    Tavik::PrintOptions m_options;
    Tavik::ValueWalker m_walker;
    std::map<std::string, Place> m_places;
    bool m_isSecret = false;          ///< of the place that is being visited
    std::vector<bool> m_outerSecrets; ///< of the objects and arrays around it
};

} // namespace

std::map<std::string, Place> FindPlaces(
    const Tavik::Any& value, const std::vector<std::string>& paths, bool showSecrets) {
    return PlaceFinder(paths, showSecrets).Find(value);
}

} // namespace Tool
