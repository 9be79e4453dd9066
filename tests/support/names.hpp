#ifndef FL_FILESYSTEM_TESTS_SUPPORT_NAMES_HPP
#define FL_FILESYSTEM_TESTS_SUPPORT_NAMES_HPP
// What nearly every test includes. Tests stand in `fl::filesystem::tests`, where what they share
// goes by its short name; those in other namespaces of the library say `using namespace
// test_support;` there. Names that the library has, too, mean the library's: `describe`,
// `failure` and `outcome` need a using-declaration.

#include "support/failure.hpp"
#include "support/needs.hpp"
#include "support/tables.hpp"
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

namespace fl::filesystem::tests {

using namespace test_support;

} // namespace fl::filesystem::tests

#endif
