#ifndef FL_SIMULATION_NODE_HPP
#define FL_SIMULATION_NODE_HPP
// Files and directories, and the names by which directories hold them.

#include "byte_store.hpp"

#include <fl/simulation/machine.hpp>

#include <windows.h>

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace fl::simulation {

class node;
class open_file;

/// Hands out the time. Each look at it is later than the one before, so that tests
/// can tell which of two times was taken first.
class machine_clock
{
public:
    std::uint64_t now() noexcept { return time_ += 10'000; } // a millisecond

private:
    std::uint64_t time_ = 133'485'408'000'000'000; // 2024-01-01
};

/// One name of a file or directory. A file may have several, each a hard link.
struct entry
{
    std::u16string name;        ///< empty for the root of a volume
    std::weak_ptr<node> parent; ///< empty for the root of a volume
    std::shared_ptr<node> target;
    /// Goes when the last open file on this name does. Nobody can open it before.
    bool is_delete_pending = false;

    void doom(bool goes);
};

/// What a reparse point says: the tag, and the bytes that FSCTL_GET_REPARSE_POINT
/// hands over behind the eight of tag and length.
struct reparse_point
{
    DWORD tag = 0;
    std::string data;
};

/// A file or directory, with everything that belongs to it and not to its names.
class node
{
public:
    /// A directory without FILE_ATTRIBUTE_DIRECTORY among `attributes` is a file.
    node(DWORD attributes, std::uint64_t now, std::uint64_t id);
    ~node();
    node(node const &) = delete;
    node &operator=(node const &) = delete;

    bool is_directory() const noexcept { return (attributes_ & FILE_ATTRIBUTE_DIRECTORY) != 0; }
    bool is_read_only() const noexcept { return (attributes_ & FILE_ATTRIBUTE_READONLY) != 0; }
    DWORD attributes() const noexcept;
    /// Keeps what kind of node it is, and whether it is a reparse point.
    void set_attributes(DWORD attributes);

    /// Unique on its volume; other volumes use it, too.
    std::uint64_t id() const noexcept { return id_; }

    // Of a directory. `now` becomes its own time of the last change.
    /// Null if there is none. Good until the directory changes.
    std::shared_ptr<entry> const &find(std::u16string_view name) const;
    /// Replaces what has that name.
    static std::shared_ptr<entry> add(std::shared_ptr<node> const &directory,
                                      std::u16string_view name, std::shared_ptr<node> target,
                                      std::uint64_t now);
    void remove(std::u16string_view name, std::uint64_t now);
    /// Gives an entry another name, here or in another directory, in place of what has
    /// that name. Who has it open keeps it.
    static void move(std::shared_ptr<entry> const &moved, std::shared_ptr<node> const &to,
                     std::u16string_view name, std::uint64_t now);
    bool is_empty() const noexcept { return entries_.empty(); }
    /// In the order in which a disk of NTFS tells them: by name in upper case.
    std::vector<std::shared_ptr<entry>> entries() const;

    fl::simulation::times times;
    byte_store content;
    std::optional<reparse_point> reparse;
    std::set<right> denied;
    DWORD link_count = 0;
    /// How many of its names are about to go. They don't count any more, by whatever name one
    /// asks.
    DWORD doomed_links = 0;
    /// The name of a directory, which has only one.
    std::weak_ptr<entry> own_entry;
    std::vector<open_file const *> open_files;

private:
    using entries_by_name = std::map<std::u16string, std::shared_ptr<entry>>; // in upper case

    std::uint64_t id_;
    DWORD attributes_;
    entries_by_name entries_;
};

} // namespace fl::simulation

#endif
