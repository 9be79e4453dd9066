#ifndef FL_FILESYSTEM_COPY_PROGRESS_HPP
#define FL_FILESYSTEM_COPY_PROGRESS_HPP
// Public. Copying that is shown while it goes on, and that can be stopped.

#include <fl/filesystem/config.hpp>
#include <fl/filesystem/mixed_arguments.hpp>
#include <fl/filesystem/path.hpp>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>

namespace fl::filesystem {

/// What a callback is told each time when a name has been dealt with.
struct copy_progress
{
    /// What was given, and the names below it, exactly as they are.
    std::u16string const &from;
    std::u16string const &to; ///< the same for the copy
    /// How many there were, this one included: also those that the options pass over, such as
    /// a link with `skip_symlinks`.
    std::uint64_t names;
};

/// Copies as `copy(from, to, options)` does and throws as that, and calls `callback` behind each
/// file, link and directory, a directory ahead of what is in it. If that returns false, copying
/// stops: what is there by then is whole, and stays. What it throws passes, and stops it, too.
///
/// Returns whether copying came to its end.
FL_FILESYSTEM_API bool copy(upath const &from, upath const &to,
                            std::filesystem::copy_options options,
                            std::function<bool(copy_progress const &)> const &callback);
FL_FILESYSTEM_API bool copy(std::u16string const &from, std::u16string const &to,
                            std::filesystem::copy_options options,
                            std::function<bool(copy_progress const &)> const &callback);

// With a path and a literal: see mixed_arguments.hpp.
template <typename First, typename Second, detail::if_mixed<First, Second> = 0>
bool copy(First const &from, Second const &to, std::filesystem::copy_options options,
          std::function<bool(copy_progress const &)> const &callback)
{
    return copy(detail::as_path(from), detail::as_path(to), options, callback);
}

} // namespace fl::filesystem

#endif
