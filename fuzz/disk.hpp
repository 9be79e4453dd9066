#ifndef FL_FILESYSTEM_FUZZ_DISK_HPP
#define FL_FILESYSTEM_FUZZ_DISK_HPP
// Disks that the input describes: a line for each name on it, the kind first.

#include "fuzz/input.hpp"

#include <simulation/machine.hpp>

#include <stdexcept>

namespace fuzz {

/// Names with pathnames and targets out of a few pieces, so that they meet often.
inline std::u16string pathname(input &from)
{
    static char16_t const *const pieces[] = {u"\\",
                                             u"a",
                                             u"b",
                                             u"c",
                                             u"..",
                                             u".",
                                             u"\\\\",
                                             u"C:",
                                             u"D:",
                                             u"a.lnk",
                                             u"\\\\server\\share",
                                             u"\\\\?\\",
                                             u" ",
                                             u"...",
                                             u"/",
                                             u"\\\\?\\UNC\\",
                                             u"nul",
                                             u"x.",
                                             u"\\a\\b",
                                             u"\xD800"};
    std::u16string made;
    std::uint32_t const count = 1 + from.below(8);
    for (std::uint32_t i = 0; i < count && !from.is_empty(); ++i)
        made += pieces[from.below(sizeof pieces / sizeof *pieces)];
    return made;
}

inline std::u16string place(input &from)
{
    static char16_t const *const names[] = {u"\\a", u"\\b", u"\\c", u"\\a.lnk"};
    std::u16string made = from.below(4) == 0 ? u"D:" : u"C:";
    std::uint32_t const count = 1 + from.below(3);
    for (std::uint32_t i = 0; i < count; ++i)
        made += names[from.below(4)];
    return made;
}

inline void add_name(simulation::simulated_machine &machine, input &from)
{
    using simulation::flavour;
    std::u16string const at = place(from);
    switch (from.below(8)) {
    case 0:
    case 1:
        machine.add_directory(at);
        break;
    case 2:
        machine.add_symbolic_link(at, pathname(from),
                                  from.below(2) == 0 ? flavour::file : flavour::directory);
        break;
    case 3:
        machine.add_junction(at, place(from));
        break;
    case 4:
        machine.add_shortcut(at, pathname(from));
        break;
    case 5:
        machine.add_mount_point(at, u'D');
        break;
    case 6:
        machine.add_file(at, "x").set_attributes(at, FILE_ATTRIBUTE_READONLY);
        break;
    default:
        machine.add_file(at, "content");
    }
}

/// What can't be there is left out.
inline void build_disk(simulation::simulated_machine &machine, input &from)
{
    machine.keep_journal(false);
    machine.add_drive(u'D').add_share(u"server", u"share");
    std::uint32_t const count = 1 + from.below(12);
    for (std::uint32_t i = 0; i < count && !from.is_empty(); ++i) {
        try {
            add_name(machine, from);
        } catch (std::invalid_argument const &) {
        }
    }
}

inline void expect_nothing_open(simulation::simulated_machine const &machine)
{
    must(machine.open_handles() == 0, "handles are closed");
    must(machine.find_handles() == 0, "searches are closed");
    must(machine.live_interfaces() == 0, "interfaces are released");
    must(machine.orphaned_interfaces() == 0, "ahead of their apartment");
    must(machine.all_com_apartments() == 0, "apartments are left");
}

} // namespace fuzz

#endif
