#include <gmock/gmock.h>
#include <gtest/gtest.h>

#ifdef _WIN32
#include <chrono>
#include <cstdio>
#include <thread>

#include <fcntl.h>
#include <io.h>

namespace {

/// GoogleTest starts a thread for its thread-local data when a test first needs some. Wine sometimes crashes
/// when a process ends while a thread is being started, as it would be in a short test: it is started here.
void StartThreadOfGoogleTest() {
    const testing::ScopedTrace trace(__FILE__, __LINE__, "");
    std::thread([] {}).join();
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
}

} // namespace
#endif

int main(int argc, char** argv) {
#ifdef _WIN32
    // The list of the tests is read line by line elsewhere, and what a test writes is compared with what it
    // should.
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
#endif
    testing::InitGoogleMock(&argc, argv);
#ifdef _WIN32
    StartThreadOfGoogleTest();
#endif
    return RUN_ALL_TESTS();
}
