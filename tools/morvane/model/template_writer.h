#pragma once

#include "tavik/type/data_object_type.h"
#include "tavik/type/version.h"

#include <string>

namespace Tool {

struct TemplateOptions {
    /// Write the optional properties of the object and of those in it, too; deeper ones get the required ones
    /// only.
    bool full = false;
    /// Leave out what this version does not have, borrowed; null for no restriction.
    const Tavik::Version* version = nullptr;
};

/// A value of a data type to fill in, as JSON that decodes: placeholders of the right kind in every required
/// place. Where the declared type has derived ones the object names its type, to be replaced by the one that
/// is meant.
std::string WriteTemplate(const Tavik::DataObjectType& type, const TemplateOptions& options);

} // namespace Tool
