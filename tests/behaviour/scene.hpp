#ifndef FL_FILESYSTEM_TESTS_BEHAVIOUR_SCENE_HPP
#define FL_FILESYSTEM_TESTS_BEHAVIOUR_SCENE_HPP
// A small disk with every kind of name on it, for the table of what operations do.

#include <simulation/machine.hpp>

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace behaviour {

/// One kind of name: what the table calls it, and its pathname.
struct subject
{
    std::string kind;
    std::u16string path;
};

/// What stands under each pathname, in words.
using snapshot = std::map<std::u16string, std::string>;

/// A machine of its own, so that operations find it as it was built.
class scene
{
public:
    scene();

    snapshot look() const;

private:
    void add_plain_names();
    void add_links();
    void add_difficult_names();
    void look_into(std::u16string const &directory, snapshot &seen) const;
    std::string describe(std::u16string const &path) const;

    simulation::simulated_machine machine_;
};

/// The directory that all relative pathnames start from.
std::u16string home();

/// `home()`, a backslash, and `name`.
std::u16string at_home(std::u16string_view name);

/// A pathname of more than 259 units.
std::u16string long_name();

std::vector<subject> subjects();

} // namespace behaviour

#endif
