#include <gmock/gmock.h>
#include <gtest/gtest.h>

#ifdef _WIN32
#include <cstdio>

#include <fcntl.h>
#include <io.h>
#endif

int main(int argc, char** argv) {
#ifdef _WIN32
    // The list of the tests is read line by line elsewhere, and what a test writes is compared with what it
    // should.
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
#endif
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
