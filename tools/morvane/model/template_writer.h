#pragma once

#include "tavik/type/data_object_type.h"
#include "tavik/type/version.h"

#include <string>
#include <vector>

namespace Tool {

struct TemplateOptions {
    /// Write the optional properties of the object and of those in it, too; deeper ones get the required ones
    /// only.
    bool full = false;
    /// Leave out what this version does not have, borrowed; null for no restriction.
    const Tavik::Version* version = nullptr;
};

/// A place of a template where values of several types can stand.
struct TemplateChoice {
    std::string path; ///< "location", "disks[0].source"; empty for the value itself
    const Tavik::DataObjectType* declared;
    std::vector<const Tavik::Type*> others; ///< what can stand there instead, in slot order
};

struct Template {
    std::string text;
    std::vector<TemplateChoice> choices; ///< one for each declared type, where it stands first
};

/// A value of a data type to fill in, as JSON that decodes: placeholders of the right kind in every required
/// place. Where the declared type has derived ones the object names its type, to be replaced by the one that
/// is meant. A declared type that has no properties is but a common base, so that one derived from it is
/// shown.
Template WriteTemplate(const Tavik::DataObjectType& type, const TemplateOptions& options);

} // namespace Tool
