#include "schemac/model/naming.h"

#include <gtest/gtest.h>

namespace Schemac::Test {
namespace {

using namespace Naming;

TEST(Naming, SnakeCase) {
    const std::pair<const char*, const char*> kCases[] = {
        {"ComputerSpec", "computer_spec"},
        {"SSLCertificateData", "ssl_certificate_data"},
        {"ZabroConnectionSpec", "zabro_connection_spec"},
        {"HyperVComputerLocation", "hyper_v_computer_location"},
        {"VmLocation", "vm_location"},
        {"P2VError", "p2v_error"},
        {"Version2Info", "version2_info"},
        {"AgentID", "agent_id"},
        {"A", "a"},
    };
    for (const auto& [name, expected] : kCases) {
        EXPECT_EQ(SnakeCase(name), expected);
    }
}

TEST(Naming, PathStem) {
    EXPECT_EQ(PathStem("types/session.tavik"), "types/session");
    EXPECT_EQ(PathStem("dir.v1/types"), "dir.v1/types"); // the dot is the folder's
    EXPECT_EQ(PathStem("dir/.hidden"), "dir/.hidden");
}

TEST(Naming, WordsOfCpp) {
    for (const char* word : {"class", "and", "xor_eq", "alignas", "co_await", "int", "register"}) {
        EXPECT_EQ(Enumerator(word), std::string(word) + "_");
        EXPECT_EQ(ParameterName(word), std::string(word) + "_");
    }
    for (const char* word : {"Class", "final", "override", "import", "string", "m_class", ""}) {
        EXPECT_EQ(Enumerator(word), word);
    }
}

} // namespace
} // namespace Schemac::Test
