#ifndef FL_FILESYSTEM_TESTS_DIRECTORY_LISTING_HPP
#define FL_FILESYSTEM_TESTS_DIRECTORY_LISTING_HPP
// What listings tell, as values to compare.

#include <fl/filesystem/directory.hpp>

#include "support/names.hpp"

#include <algorithm>

namespace test_support {

/// The names in a directory, in the order in which they are told.
inline names names_in(std::u16string const &directory)
{
    names found;
    for (fl::filesystem::directory_entry const &entry :
         fl::filesystem::directory_iterator(directory))
        found.push_back(entry.filename());
    return found;
}

/// The pathnames of a whole tree.
inline names tree_of(std::u16string const &directory,
                     fl::filesystem::directory_options options = {})
{
    names found;
    for (fl::filesystem::directory_entry const &entry :
         fl::filesystem::recursive_directory_iterator(directory, options))
        found.push_back(entry.path().native());
    return found;
}

/// For disks that tell names in an order of their own.
inline names sorted(names unsorted)
{
    std::sort(unsorted.begin(), unsorted.end());
    return unsorted;
}

} // namespace test_support

#endif
