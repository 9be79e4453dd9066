#ifndef FL_FILESYSTEM_TESTS_BEHAVIOUR_TRIALS_HPP
#define FL_FILESYSTEM_TESTS_BEHAVIOUR_TRIALS_HPP
// Every operation as something to try on a pathname, with its result in words.

#include <functional>
#include <string>
#include <vector>

namespace behaviour {

struct trial
{
    std::string title; ///< how a caller would write it, with `p` for the pathname
    /// Returns the result, for an operation that has one.
    std::function<std::string(std::u16string const &)> run;
};

/// A part of the table.
struct family
{
    std::string name;
    std::vector<trial> trials;
};

std::vector<family> families();

/// `text` for people: the long name cut, and quoted as code.
std::string shown(std::u16string const &text);

} // namespace behaviour

#endif
