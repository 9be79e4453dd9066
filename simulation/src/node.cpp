#include "node.hpp"

#include "names.hpp"

#include <utility>

namespace fl::simulation {

void entry::doom(bool goes)
{
    if (goes != is_delete_pending)
        target->doomed_links += goes ? 1U : -1U;
    is_delete_pending = goes;
}

node::node(DWORD attributes, std::uint64_t now, std::uint64_t id)
    : times{now, now, now}, id_(id), attributes_(attributes)
{
}

/// A tree may be thousands of levels deep: no recursion here.
node::~node()
{
    std::vector<entries_by_name> doomed;
    doomed.push_back(std::move(entries_));
    while (!doomed.empty()) {
        entries_by_name level = std::move(doomed.back());
        doomed.pop_back();
        for (auto &[key, gone] : level) {
            // held by nobody else: it would take its own entries along
            if (gone.use_count() == 1 && gone->target.use_count() == 1)
                doomed.push_back(std::move(gone->target->entries_));
        }
    }
}

DWORD node::attributes() const noexcept
{
    DWORD const all = attributes_ | (reparse ? FILE_ATTRIBUTE_REPARSE_POINT : 0);
    return all == 0 ? FILE_ATTRIBUTE_NORMAL : all; // which stands for none, and alone
}

void node::set_attributes(DWORD attributes)
{
    constexpr DWORD others =
        FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_NORMAL | FILE_ATTRIBUTE_REPARSE_POINT;
    attributes_ = (attributes_ & FILE_ATTRIBUTE_DIRECTORY) | (attributes & ~others);
}

std::shared_ptr<entry> const &node::find(std::u16string_view name) const
{
    static std::shared_ptr<entry> const none;
    auto const found = entries_.find(upcase(name));
    return found == entries_.end() ? none : found->second;
}

// The target by value, since what is replaced may hold the only other one.
std::shared_ptr<entry> node::add(std::shared_ptr<node> const &directory, std::u16string_view name,
                                 // NOLINTNEXTLINE(performance-unnecessary-value-param)
                                 std::shared_ptr<node> target, std::uint64_t now)
{
    directory->remove(name, now);
    auto made = std::make_shared<entry>(entry{std::u16string(name), directory, target, false});
    ++target->link_count;
    if (target->is_directory())
        target->own_entry = made;
    directory->entries_[upcase(name)] = made;
    directory->times.write = now;
    return made;
}

void node::remove(std::u16string_view name, std::uint64_t now)
{
    auto const found = entries_.find(upcase(name));
    if (found == entries_.end())
        return;
    node &target = *found->second->target;
    --target.link_count;
    if (found->second->is_delete_pending)
        --target.doomed_links;
    entries_.erase(found);
    times.write = now;
}

void node::move(std::shared_ptr<entry> const &moved, std::shared_ptr<node> const &to,
                std::u16string_view name, std::uint64_t now)
{
    // The directory may hold the only other one.
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
    std::shared_ptr<entry> const kept = moved;
    if (std::shared_ptr<node> const from = kept->parent.lock()) {
        from->entries_.erase(upcase(kept->name));
        from->times.write = now;
    }
    to->remove(name, now);
    kept->name = name;
    kept->parent = to;
    to->entries_[upcase(name)] = kept;
    to->times.write = now;
}

std::vector<std::shared_ptr<entry>> node::entries() const
{
    std::vector<std::shared_ptr<entry>> all;
    all.reserve(entries_.size());
    for (auto const &[key, held] : entries_)
        all.push_back(held);
    return all;
}

} // namespace fl::simulation
