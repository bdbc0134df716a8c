#include "bench/proto/fields.h"

#include "pellum/error/exception.h"

#include "roots.pb.h"

namespace Bench {

const Pb::FieldDescriptor& FieldOf(const Pb::Message& message, const std::string& name) {
    const Pb::FieldDescriptor* field = message.GetDescriptor()->FindFieldByName(name);
    if (field == nullptr) {
        Refuse("there is no field " + name + " in", message.GetTypeName());
    }
    return *field;
}

const Pb::FieldDescriptor& FieldOf(const Pb::Message& message, const Tavik::Property& property) {
    const Pb::Descriptor& descriptor = *message.GetDescriptor();
    for (int i = 0; i < descriptor.field_count(); ++i) {
        if (descriptor.field(i)->json_name() == property.GetName()) {
            return *descriptor.field(i);
        }
    }
    Refuse(std::string("there is no field for ") + property.GetName() + " in", message.GetTypeName());
}

bool IsChoice(const Pb::Message& message) {
    const Pb::Descriptor& descriptor = *message.GetDescriptor();
    return descriptor.real_oneof_decl_count() == 1 && descriptor.name().ends_with("OrDerived");
}

Pb::Message* NewMessage(const std::string& fullName) {
    // Nothing else names a message, and the linker would leave out what nobody names.
    morvane::roots::MorvaneEventArray::descriptor();
    const Pb::Descriptor* descriptor = Pb::DescriptorPool::generated_pool()->FindMessageTypeByName(fullName);
    return descriptor == nullptr ? nullptr
                                 : Pb::MessageFactory::generated_factory()->GetPrototype(descriptor)->New();
}

void Refuse(const std::string& what, const std::string& name) {
    throw Pellum::Exception(what + ' ' + name);
}

} // namespace Bench
