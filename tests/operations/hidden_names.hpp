#ifndef FL_FILESYSTEM_TESTS_OPERATIONS_HIDDEN_NAMES_HPP
#define FL_FILESYSTEM_TESTS_OPERATIONS_HIDDEN_NAMES_HPP
// Finding out whose attributes were changed, whatever was asked for.

#include "support/calls.hpp"

namespace test_support {

/// Which names in the directories `roots` are hidden, and no others.
inline lines hidden_names(simulated_machine const &machine,
                          std::initializer_list<std::u16string_view> roots = {u"C:\\"})
{
    lines hidden;
    for (std::u16string_view const root : roots)
        for (std::u16string const &name : machine.entries(root)) {
            std::u16string const path = std::u16string(root) + name;
            if ((machine.attributes(path) & FILE_ATTRIBUTE_HIDDEN) != 0)
                hidden.push_back(printable(path));
        }
    return hidden;
}

} // namespace test_support

#endif
