#ifndef FL_SIMULATION_VOLUMES_HPP
#define FL_SIMULATION_VOLUMES_HPP
// The trees of a machine: its drives, and the shares of the servers it reaches.

#include "node.hpp"

#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace simulation {

class volumes
{
public:
    void add_drive(char16_t letter);
    void remove_drive(char16_t letter);
    void add_share(std::u16string_view server, std::u16string_view share);
    void add_dead_server(std::u16string_view name);

    /// The root directory, or null if there is no such drive.
    std::shared_ptr<node> find_drive(char16_t letter) const;

    /// The root directory of a share. Fails as the network does, with a code for
    /// the server and another for the share.
    std::shared_ptr<node> find_share(std::u16string_view server, std::u16string_view share) const;

private:
    struct server_entry
    {
        bool is_dead = false;
        std::map<std::u16string, std::shared_ptr<node>> shares; // by name in upper case
    };

    std::map<char16_t, std::shared_ptr<node>> drives_;
    std::map<std::u16string, server_entry> servers_; // by name in upper case
};

} // namespace simulation

#endif
