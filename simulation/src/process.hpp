#ifndef FL_SIMULATION_PROCESS_HPP
#define FL_SIMULATION_PROCESS_HPP
// What the system keeps for the running process: where it stands, and its
// environment.

#include "volumes.hpp"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace fl::simulation {

class environment
{
public:
    std::optional<std::u16string> find(std::u16string_view name) const;
    void set(std::u16string_view name, std::u16string_view value);
    void remove(std::u16string_view name);

private:
    std::map<std::u16string, std::u16string> values_; // by name in upper case
};

class open_file;

struct process
{
    /// Holds the directory open as the system does: nobody removes or moves it. Fails if
    /// the caller has no right to go there.
    void stand_in(std::shared_ptr<volume> disk, std::shared_ptr<entry> directory);

    /// A full pathname that ends in a backslash, as the system keeps it.
    std::u16string current_directory = u"C:\\";
    std::shared_ptr<open_file> current_file;
    environment variables;
};

} // namespace fl::simulation

#endif
