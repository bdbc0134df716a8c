#include "bench/proto/party.h"

#include "bench/measure.h"
#include "bench/names.h"
#include "bench/proto/convert.h"
#include "pellum/error/exception.h"
#include "tavik/codec/json/json.h"

#include <google/protobuf/util/json_util.h>
#include <google/protobuf/util/message_differencer.h>

#include <map>
#include <memory>
#include <string>

namespace Bench {

namespace {

namespace Pb = google::protobuf;
using MessagePtr = std::unique_ptr<Pb::Message>;

/// A workload as protobuf holds and writes it. Zeros of required properties are not in the text, as whoever
/// reads it knows them.
struct Messages {
    explicit Messages(const Workload& workload)
        : value(ToProto(*workload.value)),
          same(ToProto(*workload.same)),
          lastDiffers(ToProto(*workload.lastDiffers)),
          binary(value->SerializeAsString()) {
        Throw(Pb::util::MessageToJsonString(*value, &text));
    }

    static void Throw(const Pb::util::Status& status) {
        if (!status.ok()) {
            throw Pellum::Exception("protobuf: " + status.ToString());
        }
    }

    MessagePtr value;
    MessagePtr same;
    MessagePtr lastDiffers;
    std::string text;
    std::string binary;
};

MessagePtr Clone(const Pb::Message& message) {
    MessagePtr copy(message.New());
    copy->CopyFrom(message);
    return copy;
}

std::string Difference(const Pb::Message& left, const Pb::Message& right) {
    std::string report;
    Pb::util::MessageDifferencer differencer;
    differencer.ReportDifferencesToString(&report);
    differencer.Compare(left, right);
    return report;
}

std::string EncodeText(const Pb::Message& message) {
    std::string text;
    Messages::Throw(Pb::util::MessageToJsonString(message, &text));
    return text;
}

MessagePtr DecodeText(const Pb::Message& prototype, const std::string& text) {
    MessagePtr message(prototype.New());
    Messages::Throw(Pb::util::JsonStringToMessage(text, message.get()));
    return message;
}

MessagePtr DecodeBinary(const Pb::Message& prototype, const std::string& binary) {
    MessagePtr message(prototype.New());
    if (!message->ParseFromString(binary)) {
        throw Pellum::Exception("protobuf can not read what it has written");
    }
    return message;
}

void Check(const Workload& workload, const Pb::Message& message) {
    CheckContent(kProtobuf, workload, Tavik::Json::Encode(FromProto(message).Get()));
}

void AddProtobuf(const Workload& workload) {
    const auto messages = std::make_shared<const Messages>(workload);
    Check(workload, *DecodeText(*messages->value, EncodeText(*messages->value)));
    Check(workload, *DecodeBinary(*messages->value, messages->binary));
    if (!Pb::util::MessageDifferencer::Equals(*messages->value, *messages->same)
        || Pb::util::MessageDifferencer::Equals(*messages->value, *messages->lastDiffers)) {
        throw Pellum::Exception("protobuf does not tell the messages of " + workload.name + " apart");
    }

    const auto add = [&](const char* operation, auto body) {
        AddOperation(operation, workload, kProtobuf, [messages, body] { return body(*messages); });
    };
    using Held = const Messages&;
    add(kCreate, [](Held m) { return MessagePtr(m.value->New()); });
    add(kClone, [](Held m) { return Clone(*m.value); });
    add(kEquality, [](Held m) { return Pb::util::MessageDifferencer::Equals(*m.value, *m.same); });
    add(kLateInequality,
        [](Held m) { return Pb::util::MessageDifferencer::Equals(*m.value, *m.lastDiffers); });
    add(kDifference, [](Held m) { return Difference(*m.value, *m.lastDiffers); });
    add(kEncode, [](Held m) { return EncodeText(*m.value); });
    add(kDecode, [](Held m) { return DecodeText(*m.value, m.text); });
    add(kEncodeBinary, [](Held m) { return m.value->SerializeAsString(); });
    add(kDecodeBinary, [](Held m) { return DecodeBinary(*m.value, m.binary); });
}

/// By our text: the same in protobuf's JSON, which names types by the fields that they stand in. All are made
/// when the first is asked for.
const Messages& FindMessages(const std::string& text) {
    static const std::map<std::string, Messages> messages = [] {
        std::map<std::string, Messages> made;
        for (const Workload& workload : GetWorkloads()) {
            made.emplace(workload.text, workload);
        }
        return made;
    }();
    return messages.at(text);
}

} // namespace

Party GetProtobuf() {
    return {kProtobuf, AddProtobuf, [](const std::string& text, std::size_t count, bool keep) {
                const Messages& messages = FindMessages(text);
                const auto decode = [&](const std::string& own) { return DecodeText(*messages.value, own); };
                MakeDecodeMany(decode)(messages.text, count, keep);
            }};
}

} // namespace Bench
