#ifndef FL_SIMULATION_WINDOWS_MACHINE_HPP
#define FL_SIMULATION_WINDOWS_MACHINE_HPP
// A Windows machine in memory. Tests build its disks, look into them, break calls, and read what
// was called; the functions of the <windows.h> beside this header run on it.

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace fl::simulation {

class machine_state;
struct fault_record;

/// What a successful call leaves as the last error: code that reads it without a
/// failure reads nonsense. Bit 29 is set, so that it is no system code.
inline constexpr DWORD stale_last_error = 0x20005A1E;

/// What fills a caller's buffer behind the text that was promised.
inline constexpr wchar_t buffer_junk = 0xDBAD;

/// Ticks of 100 ns since 1601-01-01 UTC, as in a FILETIME.
struct times
{
    std::uint64_t creation = 0; ///< when it was made
    std::uint64_t access = 0;   ///< when it was last read
    std::uint64_t write = 0;    ///< when it was last written to

    /// Whether all three are the same.
    friend bool operator==(times const &, times const &) = default;
};

/// The Windows that the machine runs, as far as they differ.
enum class edition
{
    windows_10_1809, ///< the name of a deleted file stays until its last handle closes
    windows_10_22h2, ///< names of deleted files are free at once (since 1903)
    windows_11       ///< and of legacy devices only NUL is found in directories
};

/// What the caller can be denied.
enum class right
{
    read_attributes,          ///< of a file or directory, and with it every opening
    read_extended_attributes, ///< of a file or directory: what reads reparse data opens it so
    read,                     ///< a file's content
    write,                    ///< a file's content; attributes and times of either
    remove,                   ///< the file or directory: deleting and moving it
    list,                     ///< the names in a directory
    traverse,                 ///< passing through a directory; executing a file
    create_entries            ///< files and directories in a directory
};

/// The two flavours of symbolic links, and of reparse points at all.
enum class flavour
{
    file,
    directory
};

/// One call, in the order in which calls ended.
struct journal_entry
{
    std::string function; ///< `CreateFileW`, or `IPersistFile::Load` for a method
    /// The name or pathname as the caller handed it over. For a call on a handle, what
    /// the handle was opened with.
    std::u16string text;
    std::u16string second_text;
    DWORD flags = 0; ///< also attributes to set, a control code, a class of information
    // of CreateFileW only
    DWORD access = 0;
    DWORD share = 0;
    DWORD disposition = 0;
    std::uint64_t answer = 0;
    DWORD last_error = 0;
    /// What the call was told of the caller's buffer, in the call's own measure.
    std::uint64_t room = 0;
};

/// What stands in a reparse point behind the tag and the length. `substitute` is the
/// name that the system follows, such as `\??\C:\dir`; `print` is for people.
std::string symbolic_link_data(std::u16string_view substitute, std::u16string_view print,
                               DWORD flags);
std::string mount_point_data(std::u16string_view substitute, std::u16string_view print);

/// Something wrong with the machine, for as long as this object lives.
class [[nodiscard]] fault
{
public:
    /// For the machine.
    explicit fault(std::shared_ptr<fault_record> record) noexcept;
    /// Takes it over.
    fault(fault &&other) noexcept;
    /// Ends what it was, and takes another over.
    fault &operator=(fault other) noexcept;
    ~fault();

    /// Whether a call has met it.
    bool fired() const noexcept;

private:
    std::shared_ptr<fault_record> record_;
};

/// Whether the calling thread is inside a call: what it takes from the heap is the system's then.
bool is_in_call() noexcept;

/// How many calls the calling thread has made so far, on whatever machine.
std::size_t calls_made() noexcept;

/// Answers a GetFullPathNameW call in the system's place, or lets it pass. An
/// answer of 0 is a failure with the code that the hook left by SetLastError.
using full_path_name_hook = std::function<std::optional<DWORD>(DWORD room, wchar_t *buffer)>;

/// A part of a machine. It may outlive the machine, whose disks then are there for it alone.
class machine_part
{
public:
    /// For the machine.
    explicit machine_part(std::shared_ptr<machine_state> state) noexcept : state_(std::move(state))
    {
    }

protected:
    std::shared_ptr<machine_state> state_; ///< shared with the machine
};

/// Makes what is there, before a test or while it runs.
///
/// Pathnames here are absolute, of any length, and taken as they stand: `C:\dir`,
/// `\\server\share\dir`, either also with its long prefix. A link at the end of one
/// means the link itself. Missing parent directories are made. What can't be done, such as a
/// file on a drive that doesn't exist, throws `std::invalid_argument` and leaves nothing behind.
class building : protected machine_part
{
public:
    using machine_part::machine_part;

    /// Windows 11, unless a test says otherwise.
    building &set_edition(edition runs);
    /// The opt-in to pathnames beyond 259 units without a prefix, which takes a setting of the
    /// system and the program's manifest: off unless a test turns it on.
    building &set_long_pathnames(bool takes_them);
    /// A journal of calls on pathnames of full length takes gigabytes before one notices.
    /// Without it, handles forget the text that they were opened with.
    building &keep_journal(bool keeps);

    /// A volume of its own, `X:\`, with an empty root.
    building &add_drive(char16_t letter);
    /// A folder of a server, `\\server\share`, empty.
    building &add_share(std::u16string_view server, std::u16string_view share);
    /// Fine if it is there already.
    building &add_directory(std::u16string_view path);
    /// With those bytes. Takes the place of a former file.
    building &add_file(std::u16string_view path, std::string_view content = {});
    /// A file of that many zeros, which takes no memory for them, with some bytes at its
    /// end.
    building &add_sparse_file(std::u16string_view path, std::uint64_t size,
                              std::string_view end = {});
    /// A reparse point with the tag for it, that the system puts together when it is read.
    building &add_deduplicated_file(std::u16string_view path, std::string_view content = {});
    /// One more name for a file.
    building &add_hard_link(std::u16string_view path, std::u16string_view existing);

    /// As CreateSymbolicLinkW makes it from that text.
    building &add_symbolic_link(std::u16string_view path, std::u16string_view target,
                                flavour is = flavour::file);
    /// With any names and flags; flags of 1 make it relative.
    building &add_symbolic_link(std::u16string_view path, std::u16string_view substitute,
                                std::u16string_view print, DWORD flags, flavour is = flavour::file);
    /// A junction to an absolute pathname, which is also what it shows to people.
    building &add_junction(std::u16string_view path, std::u16string_view target);
    building &add_junction(std::u16string_view path, std::u16string_view substitute,
                           std::u16string_view print);
    /// Shows the volume of a drive in a directory. It has no name for people.
    building &add_mount_point(std::u16string_view path, char16_t letter);
    /// Any tag with any bytes behind it, as far as a disk keeps them: a tag of others than
    /// Microsoft begins with the sixteen bytes of its maker. A file or directory that is
    /// there is changed, and has to be empty to become a link.
    building &add_reparse_point(std::u16string_view path, DWORD tag, std::string_view data,
                                flavour is = flavour::file);

    /// Also those that no call can set, such as FILE_ATTRIBUTE_SPARSE_FILE. Whether it is a
    /// directory or a reparse point isn't changed.
    building &set_attributes(std::u16string_view path, DWORD attributes);
    building &set_times(std::u16string_view path, times const &changed);
    building &set_current_directory(std::u16string_view path);
    building &remove_drive(char16_t letter);
    /// Takes the name and all below it away, whatever stands in the way.
    building &remove(std::u16string_view path);

    /// The drive's volume stays, with what is on it and where it is mounted, but the system
    /// has no pathname for it any more that begins with a drive: as with volumes that the
    /// mount manager doesn't know.
    building &take_letter(char16_t letter);

    // What the caller may not do, and whom it can't reach.
    /// Whoever asks for this of the file or directory gets 5.
    building &deny(std::u16string_view path, right denied);
    /// Takes a denial back.
    building &allow(std::u16string_view path, right allowed);
    /// No entry may be made in this directory.
    building &deny_creation(std::u16string_view path);
    /// Nobody may make symbolic links.
    building &deny_symbolic_links();
    /// A server that doesn't answer any longer, whatever it shares.
    building &add_dead_server(std::u16string_view name);
    /// A filter of the system's own knows what to do with this tag: names that have it are
    /// opened like any other. It knows deduplicated files from the start.
    building &handle_tag(DWORD tag);
    /// Follow symbolic links on shares, which Windows leaves alone unless it is told to.
    building &follow_remote_links();

    // Drives and volumes of other kinds.
    /// A drive letter for a share that is there: `X:\dir` is `\\server\share\dir`.
    building &map_drive(char16_t letter, std::u16string_view server, std::u16string_view share);
    /// A provider of another maker, which has a universal name for nothing: it succeeds, and
    /// the name is null.
    building &forget_universal_names();
    /// Bytes on the volume with this root: all, free, and free for the caller. At
    /// first the three are different, so that who mixes them up is found out.
    building &set_volume_space(std::u16string_view root, std::uint64_t capacity, std::uint64_t free,
                               std::uint64_t available);

    // The program and its memory. At first all that this host has loaded counts as
    // the program's file, `C:\program\program.exe`; nothing puts that on the disk.
    /// The program's file, which nothing puts on the disk.
    building &set_program_pathname(std::u16string_view pathname);
    /// A module at these addresses, which needn't exist on this host.
    building &load_module(void const *base, std::size_t size, std::u16string_view pathname);
    /// Memory in use that belongs to no module, such as a block of a heap.
    building &reserve_memory(void const *base, std::size_t size);

    // Shortcuts and COM. Calls of interface methods are journalled and fail as other
    // calls do, by names like "IPersistFile::Load"; AddRef and Release neither. A
    // code that is an HRESULT is the answer itself, any other becomes one.
    /// A shortcut file with this target, as the shell link object would save it.
    building &add_shortcut(std::u16string_view path, std::u16string_view target);
};

/// Looks at what is there. None of it is a call: nothing is journalled, no fault fires, and what
/// is denied to the caller is seen all the same. Pathnames as those of `building`.
class looking : protected machine_part
{
public:
    using machine_part::machine_part;

    /// The Windows that it runs.
    edition runs() const;
    /// Whether the opt-in to long pathnames is on.
    bool takes_long_pathnames() const;

    /// Whether there is such a name, whatever it is.
    bool exists(std::u16string_view path) const;
    /// Whether it is a directory, or a link of that flavour.
    bool is_directory(std::u16string_view path) const;
    /// Whether it is a file, or a link of that flavour.
    bool is_file(std::u16string_view path) const;
    /// The names in a directory, sorted by their units.
    std::vector<std::u16string> entries(std::u16string_view path) const;
    DWORD attributes(std::u16string_view path) const;
    times times_of(std::u16string_view path) const;
    std::string content(std::u16string_view path) const;
    /// Some bytes of a file that may be too large to be looked at as a whole.
    std::string content(std::u16string_view path, std::uint64_t offset, std::size_t count) const;
    std::uint64_t size_of(std::u16string_view path) const;
    DWORD link_count(std::u16string_view path) const;
    /// 0 if it is no reparse point.
    DWORD reparse_tag(std::u16string_view path) const;
    /// The bytes behind tag and length.
    std::string reparse_data(std::u16string_view path) const;
    /// Whether two names stand for one file or directory.
    bool is_same(std::u16string_view path, std::u16string_view other) const;
    std::u16string current_directory() const;

    /// What the process has not closed yet.
    int open_handles() const;
    int find_handles() const;
    /// The target in a shortcut file.
    std::u16string shortcut_target(std::u16string_view path) const;
    /// References to interfaces that were handed out and not released yet.
    int live_interfaces() const;
    /// How often the calling thread has initialised COM and not uninitialised it yet.
    int com_apartments() const;
    /// The same for all threads together.
    int all_com_apartments() const;
    /// References that were still held when the last apartment of the process went.
    /// Calls by them would run in code that is gone.
    int orphaned_interfaces() const;
};

/// Breaks calls, for as long as the returned object lives. Calls are counted from now, the
/// first is 1.
class breaking : protected machine_part
{
public:
    using machine_part::machine_part;

    /// The nth call of a function fails with this code and does nothing.
    fault fail_call(std::string_view function, int nth, DWORD code);
    /// The nth call of whatever function.
    fault fail_call(int nth, DWORD code);
    /// Every call of a function.
    fault fail_every_call_on(std::string_view function, DWORD code);
    /// Every call on a name, however it is written, or on a handle that was opened by it.
    /// The target of a link that is made is no such name, nor is a variable's.
    fault fail_every_call_on_name(std::u16string_view path, DWORD code);
    fault fail_every_call_on_name(std::string_view function, std::u16string_view path, DWORD code);
    fault fail_call_on_name(std::string_view function, std::u16string_view path, int nth,
                            DWORD code);
    /// Does something right before the nth call of a function, which then goes on: what
    /// others do to a machine while the caller isn't looking. It must not throw.
    fault before_call(std::string_view function, int nth, std::function<void()> action);
    fault on_full_path_name(full_path_name_hook hook);
};

/// Reads what was called. GetLastError and SetLastError are no calls here.
class reading : protected machine_part
{
public:
    using machine_part::machine_part;

    /// All calls since the machine was made, or since the journal was cleared.
    std::vector<journal_entry> journal() const;
    /// Forgets them.
    void clear_journal();
    /// How many of them were of this function.
    int calls_of(std::string_view function) const;
};

/// A machine with an empty drive C:, whose root is the current directory. It is that of the process
/// until it is destroyed; then the one before is back. Without any there is a plain one.
///
///     fl::simulation::machine windows;
///     windows.build().add_file(u"C:\\dir\\a.txt", "content");
///     auto const full = windows.faults().fail_call("WriteFile", 2, ERROR_DISK_FULL);
///     save(...); // what is tested
///     windows.look().content(u"C:\\dir\\a.txt"); // what has become of it
class machine
{
public:
    /// With an empty drive C:.
    machine();
    ~machine();
    machine(machine const &) = delete;
    machine &operator=(machine const &) = delete;

    /// To make what is there.
    building build() { return building(state_); }
    /// To see what is there.
    looking look() const { return looking(state_); }
    /// To break calls.
    breaking faults() { return breaking(state_); }
    /// To read what was called.
    reading calls() { return reading(state_); }

private:
    friend class on_this_thread;

    std::shared_ptr<machine_state> state_;
};

/// Has the calls of the thread that makes it run on `machine`, whatever machine others have made
/// since, until it is destroyed on the same thread: so several tests can run at once, each on a
/// machine of its own.
class [[nodiscard]] on_this_thread
{
public:
    /// From now on.
    explicit on_this_thread(machine const &windows);
    ~on_this_thread();
    on_this_thread(on_this_thread const &) = delete;
    on_this_thread &operator=(on_this_thread const &) = delete;
};

} // namespace fl::simulation

#endif
