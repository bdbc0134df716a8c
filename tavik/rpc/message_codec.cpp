#include "tavik/rpc/message_codec.h"

#include "tavik/type/managed_object_type.h"
#include "tavik/type/type_registry.h"

namespace Tavik {

MessageCodec::~MessageCodec() = default;

const ManagedMethod* FindMethod(const RequestHeader& header) {
    const Type* const type = TypeRegistry::Instance().FindByWireName(header.declaringType);
    if (type == nullptr || type->GetKind() != TypeKind::Managed) {
        return nullptr;
    }
    const auto& managed = static_cast<const ManagedObjectType&>(*type);
    return header.isProperty ? managed.FindGetter(header.member) : managed.FindMethod(header.member);
}

} // namespace Tavik
