#include "process.hpp"

#include "names.hpp"
#include "opening.hpp"

namespace fl::simulation {

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

void process::stand_in(std::shared_ptr<volume> disk, std::shared_ptr<entry> directory)
{
    constexpr DWORD access = FILE_TRAVERSE | FILE_READ_ATTRIBUTES;
    constexpr DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE;
    current_file =
        std::make_shared<open_file>(std::move(disk), std::move(directory), access, share);
}

} // namespace fl::simulation
