#include "differential/host.hpp"

#include "support/text.hpp"

#include <simulation/machine.hpp>

#include <algorithm>

namespace differential {

using test_support::units;
using test_support::wide;

struct host::state
{
    simulation::simulated_machine machine;

    /// `directory` ends in a backslash.
    void collect(std::u16string const &directory, std::vector<entry> &found) const
    {
        for (std::u16string const &name : machine.entries(directory)) {
            std::u16string const path = directory + name;
            entry one{wide(path), machine.is_directory(path), machine.attributes(path), {}};
            if (!one.is_directory)
                one.content = machine.content(path);
            found.push_back(std::move(one));
            if (found.back().is_directory)
                collect(path + u'\\', found);
        }
    }
};

host::host(unsigned int number) : state_(std::make_unique<state>())
{
    // the one that Wine is like: deleted names stay, and devices are found in directories
    state_->machine.set_edition(simulation::edition::windows_10_1809);
    std::u16string const folder = units(folder_above + folder_name(number));
    state_->machine.add_directory(folder + u"\\dir\\inner");
    state_->machine.add_file(folder + u"\\file", "text");
    state_->machine.set_current_directory(folder);
}

host::~host() = default;

std::vector<entry> host::entries() const
{
    std::vector<entry> found;
    state_->collect(u"C:\\", found);
    return found;
}

std::u16string host::current_directory() const
{
    return state_->machine.current_directory();
}

std::vector<entry> host::standing() const
{
    return entries();
}

bool is_of_the_system(std::wstring const &)
{
    return false;
}

} // namespace differential
