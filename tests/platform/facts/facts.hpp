#ifndef FL_FILESYSTEM_TESTS_PLATFORM_FACTS_FACTS_HPP
#define FL_FILESYSTEM_TESTS_PLATFORM_FACTS_FACTS_HPP
// What other projects' tests and reports say of Windows, put to the machine and to Wine.
// A row is a script as in script.hpp, each step with the outcome that the source tells. Where a
// source tells only that a call fails, the code is ours.

#include "platform/contract.hpp"

#include <span>

namespace contract::facts {

/// On which Windows a row holds.
enum class on
{
    all,
    names_kept,       ///< up to Windows 10 version 1809
    names_freed,      ///< since 1903
    devices_anywhere, ///< up to Windows 10
    devices_alone,    ///< since Windows 11
    short_pathnames,  ///< without the opt-in to long ones
    long_pathnames,   ///< with it
    no_host           ///< but under Wine, where the host and the user's rights on it decide
};

struct fact
{
    char const *script;
    char const *source;         ///< the project and its test, or the report
    char const *says;           ///< what that says, in our words
    char const *wine = nullptr; ///< why Wine 8 differs, if it does
    on where = on::all;
};

/// Runs what applies to this system. A row about which Wine 8 is said to differ has to differ
/// there.
void check(std::span<fact const> rows);

} // namespace contract::facts

#endif
