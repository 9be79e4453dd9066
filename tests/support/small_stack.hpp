#ifndef FL_FILESYSTEM_TESTS_SUPPORT_SMALL_STACK_HPP
#define FL_FILESYSTEM_TESTS_SUPPORT_SMALL_STACK_HPP
// Threads with stacks of a given size, for what must need none. Natively only.

#include <gtest/gtest.h>

#include <pthread.h>

#include <cstddef>
#include <functional>

namespace test_support {

/// Runs `body` on a thread with a stack of so many bytes.
inline void run_on_stack_of(std::size_t size, std::function<void()> body)
{
    pthread_attr_t attributes;
    ASSERT_EQ(pthread_attr_init(&attributes), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, size), 0);
    pthread_t thread;
    auto const start = [](void *given) -> void * {
        (*static_cast<std::function<void()> *>(given))();
        return nullptr;
    };
    ASSERT_EQ(pthread_create(&thread, &attributes, start, &body), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
}

} // namespace test_support

#endif
