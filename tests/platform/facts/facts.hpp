#ifndef FL_FILESYSTEM_TESTS_PLATFORM_FACTS_FACTS_HPP
#define FL_FILESYSTEM_TESTS_PLATFORM_FACTS_FACTS_HPP
// What other projects' tests and reports say of Windows, put to the machine and to Wine.
// A row is a short script: steps with `;` between them, each with the outcome that the
// source tells. The current directory is an empty folder.
//
//     file f text; hold f r rwd; delete f; open f r rwd existing =5
//
// Where a source tells only that a call fails, the code is ours.
//
// A step is a verb with its arguments, `=` and the system's code where it fails, or `->` and
// what it answers. Setting up is by `file NAME [CONTENT]`, `dir`, `hard NEW OLD`,
// `symlink NAME TARGET file|dir`, `junction`; they take names as they stand. Everything else
// is a call of the system; `hold NAME ACCESS SHARE [FLAGS] [DISPOSITION]` keeps what it opens,
// and later steps know it by its number: 1, 2, ...
//
// Texts: `@` ahead is the folder, `^` the folder without its drive, `$` one on a share, `?@` and
// `?$` the same with a long prefix, `#260` a pathname of 260 units in the folder, `?#260` with the
// prefix; `~` is a blank, `{a*255}` a name of 255 units, and `_` alone no text at all.

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
