#include <fl/filesystem/directory.hpp>

#include <fl/filesystem/exceptions.hpp>

#include "directory/directory_walk.hpp"

namespace fl::filesystem {

namespace {

using detail::directory_walk;
using detail::walk_depth;

/// Null if nothing is there to be found.
std::shared_ptr<directory_walk> begin_walk(upath const &p, directory_options options,
                                           walk_depth depth)
{
    auto walk = std::make_shared<directory_walk>(p, options, depth);
    return walk->has_ended() ? nullptr : walk;
}

bool has_ended(std::shared_ptr<directory_walk> const &walk) noexcept
{
    return !walk || walk->has_ended();
}

directory_walk &demand_entry(std::shared_ptr<directory_walk> const &walk)
{
    if (has_ended(walk))
        detail::throw_invalid_operation_exception();
    return *walk;
}

} // namespace

directory_iterator::directory_iterator() noexcept = default;

directory_iterator::directory_iterator(upath const &p, directory_options options)
    : walk_(begin_walk(p, options, walk_depth::one_directory))
{
}

directory_iterator::directory_iterator(std::u16string const &p, directory_options options)
    : directory_iterator(upath(p), options)
{
}

bool directory_iterator::is_end() const noexcept
{
    return has_ended(walk_);
}

directory_iterator &directory_iterator::operator++()
{
    demand_entry(walk_).advance();
    return *this;
}

directory_entry const &directory_iterator::operator*() const
{
    return demand_entry(walk_).entry();
}

recursive_directory_iterator::recursive_directory_iterator() noexcept = default;

recursive_directory_iterator::recursive_directory_iterator(upath const &p,
                                                           directory_options options)
    : walk_(begin_walk(p, options, walk_depth::whole_tree))
{
}

recursive_directory_iterator::recursive_directory_iterator(std::u16string const &p,
                                                           directory_options options)
    : recursive_directory_iterator(upath(p), options)
{
}

bool recursive_directory_iterator::is_end() const noexcept
{
    return has_ended(walk_);
}

recursive_directory_iterator &recursive_directory_iterator::operator++()
{
    demand_entry(walk_).advance();
    return *this;
}

directory_entry const &recursive_directory_iterator::operator*() const
{
    return demand_entry(walk_).entry();
}

int recursive_directory_iterator::depth() const
{
    return demand_entry(walk_).depth();
}

directory_options recursive_directory_iterator::options() const
{
    return demand_entry(walk_).options();
}

bool recursive_directory_iterator::recursion_pending() const
{
    return demand_entry(walk_).recursion_pending;
}

void recursive_directory_iterator::disable_recursion_pending()
{
    demand_entry(walk_).recursion_pending = false;
}

void recursive_directory_iterator::pop()
{
    demand_entry(walk_).pop();
}

} // namespace fl::filesystem
