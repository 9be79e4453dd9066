#ifndef FL_SIMULATION_VOLUME_SPACES_HPP
#define FL_SIMULATION_VOLUME_SPACES_HPP
// How much room the volumes of a machine have.

#include "node.hpp"

#include <cstdint>
#include <map>
#include <memory>

namespace simulation {

/// In bytes.
struct volume_space
{
    std::uint64_t capacity = 0;
    std::uint64_t free = 0;
    std::uint64_t available = 0; ///< to the caller, who may have a quota
};

class volume_spaces
{
public:
    void set(std::shared_ptr<node> const &root, volume_space const &space);
    volume_space find(std::shared_ptr<node> const &root) const;

private:
    std::map<std::shared_ptr<node>, volume_space> spaces_; // by root directory
};

} // namespace simulation

#endif
