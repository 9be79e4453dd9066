#ifndef FL_FILESYSTEM_TESTS_ACCESS_WALKING_HPP
#define FL_FILESYSTEM_TESTS_ACCESS_WALKING_HPP
// For tests of walks on the simulated machine.

#include "support/failure.hpp"

#include <simulation/machine.hpp>

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace fl::filesystem::detail {

using simulation::flavour;
using simulation::simulated_machine;
using test_support::failure_of;
using test_support::invalid_argument;

using lines = std::vector<std::string>;

/// "function(text)" of each call so far.
inline lines calls(simulated_machine const &machine)
{
    lines all;
    for (auto const &entry : machine.journal())
        all.push_back(entry.function + "(" + test_support::printable(entry.text) + ")");
    return all;
}

/// No handle, interface or apartment outlives a walk, however it ends.
inline void expect_nothing_open(simulated_machine const &machine, std::string const &where)
{
    EXPECT_EQ(machine.open_handles(), 0) << where;
    EXPECT_EQ(machine.find_handles(), 0) << where;
    EXPECT_EQ(machine.live_interfaces(), 0) << where;
    EXPECT_EQ(machine.orphaned_interfaces(), 0) << where;
    EXPECT_EQ(machine.all_com_apartments(), 0) << where;
}

/// What the walk says where there is no directory to take a `.` or `..` from, and where a
/// root leads nowhere.
inline test_support::failure nowhere()
{
    return test_support::not_found(u"");
}

/// What the 101st link ends in.
inline test_support::failure too_many_links(std::u16string const &path)
{
    return {fsys_excp_system_error, "fl:filesystem:SystemError", path, {}, 8246};
}

} // namespace fl::filesystem::detail

#endif
