#ifndef FL_FILESYSTEM_TESTS_KIT_PROBE_HPP
#define FL_FILESYSTEM_TESTS_KIT_PROBE_HPP
// What `windows_probe` tries on a Windows, and where it holds.

#include <span>

namespace kit {

/// Which of the two treatments of pathnames without a long prefix a probe is about. The opt-in to
/// long ones takes a setting of the system and a program that says so in its manifest.
enum class pathnames
{
    any,
    short_ones,
    long_ones
};

struct probe
{
    char const *subject;
    char const *claim;
    char const *script; ///< as in tests/platform/facts/README.md, with what is claimed
    pathnames holds_for = pathnames::any;
    bool is_simulated = true; ///< whether the simulated machine shows it, too
};

/// The rows of docs/simulation.md that nobody has confirmed, in the page's order: `subject` is a
/// row's first column and `claim` its second, to the letter.
std::span<probe const> open_rows();

/// What neither the simulated machine nor Wine can vouch for: limits of length, denied rights,
/// links, drives laid over folders, the network; by the system's calls and by the library's.
std::span<probe const> sights();

} // namespace kit

#endif
