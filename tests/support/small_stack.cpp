#include "tests/support/small_stack.h"

#include <gtest/gtest.h>

#include <pthread.h>

namespace TestSupport {

namespace {

constexpr std::size_t kStackSize = std::size_t{256} * 1024;

void* Run(void* run) {
    (*static_cast<const std::function<void()>*>(run))();
    return nullptr;
}

} // namespace

void RunOnSmallStack(const std::function<void()>& run) {
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, kStackSize), 0);
    pthread_t thread;
    ASSERT_EQ(pthread_create(&thread, &attributes, &Run, const_cast<std::function<void()>*>(&run)), 0);
    pthread_attr_destroy(&attributes);
    ASSERT_EQ(pthread_join(thread, nullptr), 0);
}

} // namespace TestSupport
