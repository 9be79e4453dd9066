#ifndef FL_FILESYSTEM_TESTS_ACCESS_WILD_DISK_HPP
#define FL_FILESYSTEM_TESTS_ACCESS_WILD_DISK_HPP
// Disks of all kinds of things at once, and pathnames through them. What a walk makes of one
// can't be told beforehand, only what holds of every walk.

#include "support/calls.hpp"

#include <algorithm>
#include <random>

namespace fl::filesystem::detail {

using test_support::flavour;
using test_support::simulated_machine;

class wild_disk
{
public:
    explicit wild_disk(unsigned int seed) : random_(seed) {}

    void build(simulated_machine &machine);
    std::u16string pathname();
    /// Units of the longest target on the disk.
    std::size_t longest_target() const { return longest_; }

private:
    unsigned int pick(unsigned int count) { return static_cast<unsigned int>(random_() % count); }
    template <std::size_t Count>
    char16_t const *one_of(char16_t const *const (&texts)[Count])
    {
        return texts[pick(Count)];
    }
    std::u16string elements(unsigned int most);
    std::u16string text();
    void add_link(simulated_machine &machine, std::u16string const &at);

    std::mt19937 random_;
    std::size_t longest_ = 0;
};

inline std::u16string wild_disk::elements(unsigned int most)
{
    constexpr char16_t const *pieces[] = {
        u"a",  u"a",  u"b",     u"b",      u"c",  u"a.lnk", u"b.lnk", u".",   u"..",
        u"..", u"..", u"a.LNK", u"longer", u"no", u"",      u"...",   u"UNC",
    };
    std::u16string joined;
    unsigned int const count = pick(most + 1);
    for (unsigned int i = 0; i < count; ++i)
        joined += (i == 0 ? u"" : one_of({u"\\", u"\\", u"\\", u"\\\\", u"/"})) +
                  std::u16string(one_of(pieces));
    return joined;
}

inline std::u16string wild_disk::text()
{
    std::u16string const root = one_of({u"",
                                        u"",
                                        u"",
                                        u"\\",
                                        u"C:\\",
                                        u"C:",
                                        u"D:\\",
                                        u"D:",
                                        u"X:\\",
                                        u"Q:\\",
                                        u"\\\\s\\h\\",
                                        u"\\\\s\\h",
                                        u"\\\\no\\h\\",
                                        u"\\\\",
                                        u"\\\\s\\",
                                        u"\\\\?\\C:\\",
                                        u"\\\\?\\D:",
                                        u"\\\\?\\",
                                        u"\\\\?\\UNC\\s\\h\\",
                                        u"\\\\?\\UNC\\s\\h",
                                        u"\\\\?\\UNC\\",
                                        u"\\\\.\\",
                                        u"\\??\\C:\\",
                                        u"//s/h/",
                                        u"\\\\?\\X:\\"});
    return root + elements(4) + one_of({u"", u"", u"", u"\\", u"\\\\", u"/"});
}

inline void wild_disk::add_link(simulated_machine &machine, std::u16string const &at)
{
    std::u16string const target = text();
    longest_ = std::max(longest_, target.size());
    if (at.ends_with(u".lnk") && pick(3) != 0)
        machine.add_shortcut(at, target);
    else if (pick(3) == 0)
        machine.add_junction(at, u"\\??\\" + target, pick(2) == 0 ? std::u16string() : target);
    else if (pick(12) == 0)
        machine.add_reparse_point(at, 0x80000099, "abc", flavour::directory);
    else
        machine.add_reparse_point(at, DWORD{IO_REPARSE_TAG_SYMLINK},
                                  simulation::symbolic_link_data(target, target, pick(2)),
                                  pick(4) == 0 ? flavour::file : flavour::directory);
}

inline void wild_disk::build(simulated_machine &machine)
{
    machine.add_drive(u'D').add_share(u"s", u"h").map_drive(u'X', u"s", u"h");
    machine.add_directory(u"C:\\a").set_current_directory(u"C:\\a");
    for (std::u16string const root : {u"C:", u"D:", u"\\\\s\\h"})
        for (std::u16string const middle : {u"", u"\\a", u"\\a\\b"})
            for (char16_t const *name : {u"a", u"b", u"c", u"a.lnk", u"b.lnk", u"longer"}) {
                std::u16string const at = root + middle + u'\\' + name;
                if (machine.exists(at))
                    continue;
                bool const leads_on = middle.empty()
                                          ? name[0] == u'a' && name[1] == 0
                                          : middle == u"\\a" && name[0] == u'b' && name[1] == 0;
                if (leads_on || pick(4) == 0)
                    machine.add_directory(at);
                else if (pick(8) == 0)
                    machine.add_file(at, "text");
                else
                    add_link(machine, at);
            }
}

inline std::u16string wild_disk::pathname()
{
    return one_of({u"C:\\", u"\\\\?\\C:\\", u"X:\\", u"\\\\?\\D:\\", u"\\\\s\\h\\",
                   u"\\\\?\\UNC\\s\\h\\", u"\\\\s\\h", u"", u"\\"}) +
           elements(8);
}

} // namespace fl::filesystem::detail

#endif
