#ifndef FL_FILESYSTEM_SRC_DIRECTORY_DIRECTORY_WALK_HPP
#define FL_FILESYSTEM_SRC_DIRECTORY_DIRECTORY_WALK_HPP
// The search that iterators over directories share.

#include <fl/filesystem/directory.hpp>

#include "directory/listed_pathname.hpp"
#include "platform/found_entry.hpp"
#include "platform/owned_handle.hpp"
#include "standard/identity.hpp"

#include <windows.h>

#include <memory>
#include <vector>

namespace fl::filesystem::detail {

enum class walk_depth
{
    one_directory,
    whole_tree
};

/// Stands at an entry, or has ended. A tree can be 16,000 levels deep, more than a thread's
/// stack has frames for: the levels stand in a list. A member that throws leaves the walk ended.
class directory_walk
{
public:
    /// Begins at the first entry of `p`. Throws as the iterators' constructors do.
    directory_walk(upath const &p, directory_options options, walk_depth depth);
    directory_walk(directory_walk const &) = delete;
    directory_walk &operator=(directory_walk const &) = delete;

    bool has_ended() const noexcept { return levels_.empty(); }

    // Of a walk that hasn't ended.
    directory_entry const &entry() const noexcept { return entry_; }
    int depth() const noexcept { return static_cast<int>(levels_.size()) - 1; }
    directory_options options() const noexcept { return options_; }
    void advance();
    void pop();

    bool recursion_pending = true; ///< until the next move

private:
    /// A directory that is being listed.
    struct level
    {
        find_handle search;
        listed_pathname::extent size; ///< of the directory's pathname
        /// Where links are entered: a link that leads to one of these leads back.
        standard::file_identity identity;
    };

    bool has(directory_options asked) const noexcept;
    void begin();
    bool enters_entry() const;
    bool enter();
    DWORD open_level();
    bool is_on_the_way(standard::file_identity const &identity) const;
    void settle();
    void leave();
    void restore();
    void read_next();
    void take_entry();
    entry_record &next_record();
    [[noreturn]] void fail(DWORD code) const;
    void close() noexcept;

    directory_options options_;
    walk_depth reach_;
    listed_pathname path_; ///< of the directory at hand
    std::vector<level> levels_;
    found_entry found_;
    std::shared_ptr<entry_record> record_; ///< of the entry
    directory_entry entry_;
};

} // namespace fl::filesystem::detail

#endif
