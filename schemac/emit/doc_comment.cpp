#include "schemac/emit/doc_comment.h"

#include "schemac/model/naming.h"

namespace Schemac::Emit {

std::string DocComment(const std::string& doc) {
    std::string text;
    for (const std::string& line : Naming::Split(doc, "\n")) {
        text += line.empty() ? "///\n" : "/// " + line + "\n";
    }
    return text;
}

std::string TypeDoc(const Model::Type& type) {
    const Model::DataType* data = type.AsData();
    return DocComment(
        type.doc + "\nWire name `" + type.wireName + "`; since " + type.version->fullName + "."
        + (data != nullptr && data->isOpen ? "\nOpen: `_GetContent` holds whatever properties arrive." : "")
        + (data != nullptr && data->httpStatus != 0
               ? "\nHTTP status " + std::to_string(data->httpStatus) + "."
               : ""));
}

std::string TypeText(const Model::Property& property) {
    return property.type->dottedName + (property.isArray ? "[]" : "");
}

std::string PropertyFacts(const Model::Property& property, const Model::Type& owner) {
    std::string facts = "`" + property.name + "` : " + TypeText(property);
    facts += property.isOptional ? ", optional" : "";
    facts += property.isSecret ? ", secret" : "";
    facts += property.version != owner.version ? ", since " + property.version->name : "";
    return facts;
}

} // namespace Schemac::Emit
