#include "volume_spaces.hpp"

namespace simulation {

namespace {

constexpr std::uint64_t gigabyte = std::uint64_t{1} << 30;

/// Of volumes that no test has said anything about.
constexpr volume_space usual_space = {100 * gigabyte, 40 * gigabyte, 30 * gigabyte};

} // namespace

void volume_spaces::set(std::shared_ptr<node> const &root, volume_space const &space)
{
    spaces_[root] = space;
}

volume_space volume_spaces::find(std::shared_ptr<node> const &root) const
{
    auto const found = spaces_.find(root);
    return found == spaces_.end() ? usual_space : found->second;
}

} // namespace simulation
