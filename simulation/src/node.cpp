#include "node.hpp"

#include "names.hpp"

#include <algorithm>

namespace simulation {

void node::set_attributes(DWORD attributes)
{
    DWORD const kind = attributes_ & FILE_ATTRIBUTE_DIRECTORY;
    DWORD const others = attributes & ~DWORD{FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_NORMAL};
    attributes_ = kind | others;
    if (attributes_ == 0)
        attributes_ = FILE_ATTRIBUTE_NORMAL; // which stands for none, and alone
}

std::shared_ptr<node> node::find(std::u16string_view name) const
{
    auto const found = entries_.find(upcase(name));
    return found == entries_.end() ? nullptr : found->second;
}

std::shared_ptr<node> node::add(std::u16string_view name, DWORD attributes)
{
    auto made = std::make_shared<node>(name, attributes);
    entries_[upcase(name)] = made;
    return made;
}

void node::remove(std::u16string_view name)
{
    entries_.erase(upcase(name));
}

std::vector<std::u16string> node::names() const
{
    std::vector<std::u16string> names;
    for (auto const &[key, entry] : entries_)
        names.push_back(entry->name());
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace simulation
