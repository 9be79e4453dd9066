#ifndef FL_FILESYSTEM_TESTS_SUPPORT_NEEDS_HPP
#define FL_FILESYSTEM_TESTS_SUPPORT_NEEDS_HPP

#include <gtest/gtest.h>

/// Passes over the rest of a test where the system doesn't have what it needs.
#define NEEDS(what, otherwise)                                                                     \
    if (!(what))                                                                                   \
    GTEST_SKIP() << otherwise

#endif
