#ifndef FL_SIMULATION_OPENING_HPP
#define FL_SIMULATION_OPENING_HPP
// Opening what is there: rights, share modes, and what happens when the last one
// who has it open lets go. Every call that acts on a name opens it first, as on
// Windows, if only for the time of the call.

#include "failure.hpp"
#include "lookup.hpp"

#include <memory>
#include <string>

namespace fl::simulation {

inline constexpr DWORD share_all = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// The attributes that calls can set. The others tell what the disk does with a file.
inline constexpr DWORD settable_attributes = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN |
                                             FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE |
                                             FILE_ATTRIBUTE_TEMPORARY | FILE_ATTRIBUTE_OFFLINE |
                                             FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;

/// What the caller needs it to be.
enum class kind
{
    any,
    file,
    directory
};

/// How something is opened.
struct terms
{
    DWORD access = FILE_READ_ATTRIBUTES;
    DWORD share = share_all;
    kind wanted = kind::any;
    last_link last = last_link::keep;
    /// A link has to be of the kind of what it leads to.
    bool minds_kind_of_link = true;
};

/// What has been opened, until this object goes.
class open_file
{
public:
    /// Checks rights and share modes, and fails with what is in the way.
    open_file(std::shared_ptr<volume> disk, std::shared_ptr<entry> name, DWORD access, DWORD share);
    /// Removes the name if it was waiting for that.
    ~open_file();
    open_file(open_file const &) = delete;
    open_file &operator=(open_file const &) = delete;

    node &target() const noexcept { return *name->target; }
    bool may(DWORD needed) const noexcept { return (access & needed) == needed; }
    /// Fails unless it was opened for all of `needed`.
    void demand(DWORD needed) const;

    std::shared_ptr<volume> const disk;
    std::shared_ptr<entry> const name;
    DWORD const access; ///< specific rights only
    DWORD const share;
    std::u16string text;        ///< by which it was opened, for the journal
    std::uint64_t position = 0; ///< of the next byte to read or write
    bool deletes_on_close = false;
    bool is_posix_deletion = false; ///< the name goes when this lets go, whoever has it open
};

/// The rights for files and directories that a generic right stands for.
DWORD specific_access(DWORD access);

/// Opens the file or directory that a pathname of the caller's means.
std::shared_ptr<open_file> open_existing(machine_state &machine, std::u16string_view text,
                                         terms const &how);

/// The same for a pathname that has been parsed.
std::shared_ptr<open_file> open_existing(machine_state &machine, pathname const &path,
                                         terms const &how);

/// Opens what a lookup has found.
std::shared_ptr<open_file> open_found(place const &here, bool ends_in_separator, terms const &how);

/// Fails if the pathname of a file ends as only that of a directory may.
void check_separator(place const &here, bool ends_in_separator);

/// What is wrong with making something by a name that is taken: `code`, unless the one who
/// has it is on the way out.
failure collision(entry const &taken, DWORD code);

/// Fails if no entry can be made in the directory of a free place.
void check_creation(place const &here);

/// Finds the place that something is moved or linked to. What is no directory right above it
/// is told as nowhere else.
place find_new_place(pathname const &path, machine_state const &machine);

/// Opens the directory that a name is moved or linked to, as the system does for the time of
/// the call: to write to it, and sharing that and reading only.
std::shared_ptr<open_file> open_directory_of(place const &here);

/// Makes a file or directory, whichever the attributes say, at a free place.
std::shared_ptr<entry> create_entry(place const &here, bool ends_in_separator, DWORD attributes);

/// Has the name removed once nobody has it open. Fails if it has to stay.
void mark_for_deletion(open_file const &file, bool ignores_read_only = false);

} // namespace fl::simulation

#endif
