#ifndef FL_FILESYSTEM_TESTS_PLATFORM_FACTS_FACTS_HPP
#define FL_FILESYSTEM_TESTS_PLATFORM_FACTS_FACTS_HPP
// What other projects' tests and reports say of Windows, put to the machine and to Wine. It
// stands in the *.facts of this folder, as README.md tells. The build puts their lines into a
// source with a test for each file, since tests also run where there is no source tree.

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace contract::facts {

/// What a file says behind `only:`, and whether that is so here.
struct condition
{
    char const *text;
    bool (*holds)();
};

struct fact
{
    std::string place;               ///< where it stands: file and line
    std::string script;              ///< as in README.md
    std::string witness;             ///< the project and its test, or the report
    std::string says;                ///< what that says, in our words
    std::optional<std::string> wine; ///< why Wine 8 differs, if it does
    condition const *only = nullptr; ///< where it holds, if not everywhere
};

/// The facts of a file, in its order. Throws `std::invalid_argument`, with file and line, where
/// it isn't as README.md has it.
std::vector<fact> parse(std::string const &file, std::span<char const *const> lines);

/// Runs what applies to this system. A fact about which Wine 8 is said to differ has to differ
/// there.
void check(std::string const &file, std::span<char const *const> lines);

} // namespace contract::facts

#endif
