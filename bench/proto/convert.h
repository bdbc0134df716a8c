#pragma once

#include "pellum/object/ref.h"
#include "tavik/value/any.h"

#include <google/protobuf/message.h>

#include <memory>

namespace Bench {

/// The value as the message that stands for its type, by the descriptions of both sides. An array becomes the
/// message of `roots.proto` for its elements. Throws `Pellum::Exception` for what has no message.
std::unique_ptr<google::protobuf::Message> ToProto(const Tavik::Any& value);

/// The way back: an equal value.
Pellum::Ref<Tavik::Any> FromProto(const google::protobuf::Message& message);

} // namespace Bench
