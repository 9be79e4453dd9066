#ifndef FL_FILESYSTEM_TESTS_SUPPORT_ATTRIBUTES_FOR_NOW_HPP
#define FL_FILESYSTEM_TESTS_SUPPORT_ATTRIBUTES_FOR_NOW_HPP
// File attributes for a part of a test.

#include "support/text.hpp"

#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace test_support {

/// Sets the attributes that a caller can set, and clears them in the end, so that the
/// folder can be removed.
class attributes_for_now
{
public:
    attributes_for_now(std::u16string_view path, DWORD attributes) : path_(wide(path))
    {
        EXPECT_TRUE(::SetFileAttributesW(path_.c_str(), attributes));
    }
    ~attributes_for_now() { ::SetFileAttributesW(path_.c_str(), FILE_ATTRIBUTE_NORMAL); }
    attributes_for_now(attributes_for_now const &) = delete;
    attributes_for_now &operator=(attributes_for_now const &) = delete;

private:
    std::wstring path_;
};

} // namespace test_support

#endif
