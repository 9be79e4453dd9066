#ifndef FL_FILESYSTEM_TESTS_KIT_TEST_LOG_HPP
#define FL_FILESYSTEM_TESTS_KIT_TEST_LOG_HPP
// What a program of GoogleTest has printed, as values. Plain text: knows no system.

#include <map>
#include <string>
#include <vector>

namespace kit {

struct test_log
{
    bool ended = false; ///< the program came to its closing lines
    int ran = 0, passed = 0, failed = 0, skipped = 0;
    std::vector<std::string> failures;  ///< of each test that failed, all that it printed
    std::map<std::string, int> reasons; ///< why tests were skipped, and how many
};

test_log read_test_log(std::string const &output);

/// The failures, one behind the other, as long as they fit into `room`; then how many are left.
std::string fitting(std::vector<std::string> const &failures, std::size_t room);

/// The end of a text, from the beginning of one of its last `count` lines.
std::string last_lines(std::string const &text, int count);

} // namespace kit

#endif
