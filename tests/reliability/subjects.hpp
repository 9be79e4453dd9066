#ifndef FL_FILESYSTEM_TESTS_RELIABILITY_SUBJECTS_HPP
#define FL_FILESYSTEM_TESTS_RELIABILITY_SUBJECTS_HPP
// Every operation, and every kind of object that one can be asked to act on: what the sweeps
// over failing calls, failing memory and changes by others go through.

#include "reliability/names.hpp"

#include <functional>
#include <string>
#include <vector>

namespace reliability {

using test_support::lines;
using test_support::simulated_machine;

/// What an operation is asked about: `p`, and where it takes a second pathname, `q`.
struct subject
{
    char const *name;
    char16_t const *p;
    void (*build)(simulated_machine &); ///< what stands at `p`, on a disk made by `build_disk`
    // What rules ask about `p`: known here once more, and not asked of the code.
    bool is_there = true;      ///< links followed
    bool is_symlink = false;   ///< itself
    bool is_directory = false; ///< itself, as the system has links to directories, too
    bool is_readable = true;
};

/// A second pathname that is free, and one that is taken by a file.
inline constexpr char16_t free_name[] = uR"(C:\d\new)";
inline constexpr char16_t taken_name[] = uR"(C:\d\taken)";

/// What stands around every subject: `C:\d` is the current directory, `C:\away` is where links
/// lead, and nothing there is ever to change.
void build_disk(simulated_machine &machine);
std::vector<subject> const &subjects();

struct operation
{
    char const *name;
    /// Acts on a pathname and returns what came of it as a text.
    std::function<std::string(std::u16string const &p)> run;
    /// The second pathname, for rules that name it.
    char16_t const *second = nullptr;
    /// With the other subjects it would say nothing more.
    std::vector<std::string> only = {};
    /// What the pathname of the subject goes on with.
    char16_t const *below = u"";
    /// Whether a call of it may fail, pass something over and still be good.
    bool may_pass_over = false;

    std::u16string given(subject const &on) const { return std::u16string(on.p) + below; }
};

std::vector<operation> const &operations();

/// Whether the operation is tried on this subject.
bool takes(operation const &tried, subject const &on);

/// One line for each name on all disks, and one for where the process stands. Times are left
/// out, but of the last write to files that were there.
lines disk_of(simulated_machine const &machine);

} // namespace reliability

#endif
