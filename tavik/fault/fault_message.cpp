#include "tavik/fault/fault_message.h"

#include "pellum/text/demangle.h"
#include "tavik/fault/method_fault.h"
#include "tavik/type/data_object_type.h"
#include "tavik/type/type_registry.h"
#include "tavik/value/json_text.h"
#include "tavik/value/open_content.h"
#include "tavik/value/secret_names.h"

#include <algorithm>
#include <iterator>
#include <typeinfo>

namespace Tavik {

namespace {

/// Longer texts are cut to this many bytes, and no more texts than that are shown: a message is one line of a
/// log.
constexpr std::size_t kMaxText = 400;
constexpr int kMaxTexts = 6;

char ToLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool EndsWith(std::string_view name, std::string_view word) {
    return name.size() >= word.size()
        && std::equal(
               word.rbegin(), word.rend(), name.rbegin(), [](char a, char b) { return a == ToLower(b); });
}

/// The text, or its beginning up to the end of a character.
std::string Shortened(std::string_view text) {
    if (text.size() <= kMaxText) {
        return std::string(text);
    }
    std::size_t end = kMaxText;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) {
        --end;
    }
    return std::string(text.substr(0, end)) + "...";
}

class MessageWriter {
public:
    explicit MessageWriter(std::string name) : m_out(std::move(name)) {}

    void AddTexts(const MethodFault& fault, const DataObjectType& type) {
        for (const Property* property : type.GetProperties()) {
            const Type* propertyType = property->GetType();
            const bool isText = !property->IsArray() && propertyType != nullptr
                             && propertyType->GetKind() == TypeKind::String;
            if (isText && !property->IsSecret() && property->IsSet(&fault)) {
                Add(property->GetName(), *static_cast<const std::string*>(property->GetFieldPointer(&fault)));
            }
        }
        if (const OpenContent* content = type.GetOpenContent(fault)) {
            for (const OpenItem& item : *content) {
                // What a description flags as secret does not stop to be by arriving twice.
                if (type.FindProperty(item.name) != nullptr) {
                    continue;
                }
                if (item.value.GetKind() == OpenKind::String) {
                    Add(item.name, item.value.GetText());
                } else if (item.value.GetKind() == OpenKind::Object && !IsSecretName(item.name)) {
                    AddReference(item.name, item.value);
                }
            }
        }
    }

    std::string Take() { return std::move(m_out); }

private:
    void Add(std::string_view name, std::string_view text) {
        if (!text.empty() && IsMessageName(name) && Begin(name)) {
            AppendQuoted(m_out, Shortened(text));
        }
    }

    /// A managed object that the fault is about: `obj = AppThing "thing-7"`. Other content is left out.
    void AddReference(std::string_view name, const OpenValue& value) {
        const auto type = value.Find("mo");
        const auto id = value.Find("id");
        const auto isText = [](const auto& text) { return text && text->GetKind() == OpenKind::String; };
        if (isText(type) && isText(id) && Begin(name)) {
            AppendMemberName(m_out, Shortened(type->GetText()));
            m_out += ' ';
            AppendQuoted(m_out, Shortened(id->GetText()));
        }
    }

    /// Writes up to the value; false when there is enough already.
    bool Begin(std::string_view name) {
        if (m_count == kMaxTexts) {
            return false;
        }
        m_out += m_count++ == 0 ? ": " : ", ";
        AppendMemberName(m_out, Shortened(name));
        m_out += " = ";
        return true;
    }

    std::string m_out;
    int m_count = 0;
};

} // namespace

bool IsMessageName(std::string_view name) {
    const auto isItsEnd = [&](std::string_view word) { return EndsWith(name, word); };
    return std::any_of(std::begin(kMessageWords), std::end(kMessageWords), isItsEnd) && !IsSecretName(name);
}

std::string DescribeFault(const MethodFault* fault) noexcept {
    try {
        if (fault == nullptr) {
            return NameOfFault(fault);
        }
        TypeRegistry::Instance().Load();
        const DataObjectType* type = fault->_GetDataType();
        if (type == nullptr) {
            return Pellum::Demangle(typeid(*fault));
        }
        MessageWriter writer(type->GetName());
        writer.AddTexts(*fault, *type);
        return writer.Take();
    } catch (...) {
        return {}; // a fault must be raised also when nothing can be said of it
    }
}

const char* NameOfFault(const MethodFault* fault) noexcept {
    const DataObjectType* type = fault != nullptr ? fault->_GetDataType() : nullptr;
    return type != nullptr ? type->GetName() : "no fault";
}

} // namespace Tavik
