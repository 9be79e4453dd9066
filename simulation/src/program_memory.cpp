#include "program_memory.hpp"

#include "host_memory.hpp"

#include <algorithm>
#include <utility>

namespace fl::simulation {

void program_memory::add(memory_region region)
{
    regions_.push_back(std::move(region));
}

memory_region program_memory::find(std::uintptr_t address) const
{
    auto const known = std::find_if(regions_.rbegin(), regions_.rend(), [&](auto const &region) {
        return address >= region.base && address - region.base < region.size;
    });
    if (known != regions_.rend())
        return *known;
    std::uintptr_t const page = address / page_size * page_size;
    if (std::uintptr_t const image = host_image_at(address))
        return {image, page + page_size - image, program};
    return {is_host_memory(address) ? page : 0, page_size, {}};
}

std::optional<std::u16string> program_memory::module_at(std::uintptr_t base) const
{
    if (base == 0)
        return program;
    memory_region const region = find(base);
    if (region.base != base || region.module.empty())
        return std::nullopt;
    return region.module;
}

} // namespace fl::simulation
