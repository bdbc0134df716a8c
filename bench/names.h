#pragma once

/// The names that the programs write, and that the table and the goals find measurements by. A name stands
/// in front of "/" in the names of benchmarks, so none has one in it.
namespace Bench {

/// Operations on whole values.
inline constexpr const char* kCreate = "create";
inline constexpr const char* kClone = "clone";
inline constexpr const char* kEquality = "equality";
inline constexpr const char* kLateInequality = "equality, last property differs";
inline constexpr const char* kDifference = "difference";
inline constexpr const char* kEncode = "encode JSON";
inline constexpr const char* kDecode = "decode JSON";
inline constexpr const char* kEncodeBinary = "encode binary";
inline constexpr const char* kDecodeBinary = "decode binary";

/// Access to one field, and look-ups.
inline constexpr const char* kFieldPointer = "address of a field by index";
inline constexpr const char* kFieldRecord = "the same, by the type's record";
inline constexpr const char* kFieldGet = "value of a field by index";
inline constexpr const char* kFindType = "find a type by name";
inline constexpr const char* kFindWireType = "find a type by wire name";
inline constexpr const char* kFindProperty = "find a property by name";

/// The library.
inline constexpr const char* kColdStart = "cold start";
inline constexpr const char* kLoad = "of that, loading the library";
inline constexpr const char* kStrippedSize = "library, stripped";
inline constexpr const char* kLoadedSize = "of that, loaded, without symbols";
inline constexpr const char* kMemoryKept = "memory of 10,000, all kept";
inline constexpr const char* kMemoryInTurn = "memory of 10,000 in turn";

/// The name is followed by that of an operation.
inline constexpr const char* kGrowth = "growth: ";
inline constexpr const char* kTwoThreads = "2 threads: ";
inline constexpr const char* kCalls = "calls: ";

/// Who is measured. What is measured beside growth and threads is ours, too.
inline constexpr const char* kOurs = "morvane";
inline constexpr const char* kProtobuf = "protobuf";
inline constexpr const char* kRapidJson = "RapidJSON";
inline constexpr const char* kSimdjson = "simdjson";
inline constexpr const char* kNlohmann = "nlohmann";
inline constexpr const char* kPlain = "plain";
inline constexpr const char* kMessagesAlone = "messages alone";

} // namespace Bench
