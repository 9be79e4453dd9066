#ifndef FL_FILESYSTEM_TESTS_SUPPORT_NAMES_HPP
#define FL_FILESYSTEM_TESTS_SUPPORT_NAMES_HPP
// What nearly every test includes. Tests stand in the library's namespaces and say
// `using namespace test_support;` there. Names that the library has, too, mean the library's:
// `describe`, `failure` and `outcome` need a using-declaration besides.

#include "support/failure.hpp"
#include "support/needs.hpp"
#include "support/text.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace test_support {

using lines = std::vector<std::string>;
using names = std::vector<std::u16string>;

} // namespace test_support

#endif
