#ifndef FL_FILESYSTEM_TESTS_SUPPORT_SANITIZERS_HPP
#define FL_FILESYSTEM_TESTS_SUPPORT_SANITIZERS_HPP
// FL_CHECKS_MEMORY: whether each access to memory is looked at, which takes many times as long.
// GCC and Clang say so in ways of their own.

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define FL_CHECKS_MEMORY 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define FL_CHECKS_MEMORY 1
#endif
#endif
#ifndef FL_CHECKS_MEMORY
#define FL_CHECKS_MEMORY 0
#endif

#endif
