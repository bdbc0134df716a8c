#include "bench/proto/convert.h"
#include "pellum/error/exception.h"
#include "tavik/codec/json/file.h"
#include "tavik/codec/json/json.h"
#include "tavik/value/property_diff_set.h"

#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>

/// Turns the values of files to protobuf, through its bytes, and back: they have to stay equal.
int main(int argc, char** argv) {
    int failed = 0;
    for (int i = 1; i < argc; ++i) {
        try {
            const auto value =
                Tavik::Json::Decode(Tavik::Json::ReadInput(argv[i], Tavik::Json::DecodeLimits().inputBytes));
            const auto message = Bench::ToProto(*value);
            const std::unique_ptr<google::protobuf::Message> read(message->New());
            if (!read->ParseFromString(message->SerializeAsString())) {
                throw Pellum::Exception("protobuf can not read what it has written");
            }
            Tavik::PropertyDiffSet differences;
            value->_DiffProperties(Bench::FromProto(*read).Get(), "", differences);
            if (!differences.IsEmpty()) {
                throw Pellum::Exception("not as it was behind protobuf: " + differences[0]);
            }
        } catch (const std::exception& e) {
            std::cerr << argv[i] << ": " << e.what() << '\n';
            ++failed;
        }
    }
    return failed == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
