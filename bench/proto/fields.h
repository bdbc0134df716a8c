#pragma once

#include "tavik/type/data_object_type.h"
#include "tavik/value/any.h"

#include <google/protobuf/message.h>

#include <string>
#include <string_view>

/// What both directions of the conversion have to know of how the schema compiler writes types.
namespace Bench {

namespace Pb = google::protobuf;

inline constexpr int kBaseNumber = 1; ///< own fields begin behind it
inline constexpr const char* kContentField = "content";
inline constexpr const char* kItemsField = "items";
inline constexpr const char* kTypesPackage = "morvane.";
inline constexpr const char* kRootsPackage = "morvane.roots.";
inline constexpr std::string_view kArraySuffix = "Array";

/// Throws `Pellum::Exception` when the message has no such field.
const Pb::FieldDescriptor& FieldOf(const Pb::Message& message, const std::string& name);

/// The field of a property, which is known by its name in JSON.
const Pb::FieldDescriptor& FieldOf(const Pb::Message& message, const Tavik::Property& property);

/// Whether the message holds one of several types of objects.
bool IsChoice(const Pb::Message& message);

/// A new message of that full name; null when there is no such message.
Pb::Message* NewMessage(const std::string& fullName);

[[noreturn]] void Refuse(const std::string& what, const std::string& name);

} // namespace Bench
