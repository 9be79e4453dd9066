#include "process.hpp"

#include "names.hpp"

namespace simulation {

std::optional<std::u16string> environment::find(std::u16string_view name) const
{
    auto const found = values_.find(upcase(name));
    return found == values_.end() ? std::nullopt : std::optional(found->second);
}

void environment::set(std::u16string_view name, std::u16string_view value)
{
    values_.insert_or_assign(upcase(name), std::u16string(value));
}

void environment::remove(std::u16string_view name)
{
    values_.erase(upcase(name));
}

} // namespace simulation
