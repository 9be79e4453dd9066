#ifndef FL_SIMULATION_MACHINE_HPP
#define FL_SIMULATION_MACHINE_HPP
// A Windows machine in memory, as tests hold it: they build its disks, look into
// them, break calls, and read what was called. The functions of our <windows.h>
// run on the machine that was made last.

#include <windows.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace simulation {

class machine_state;
struct fault_record;

/// What a successful call leaves as the last error: code that reads it without a
/// failure reads nonsense. Bit 29 is set, so that it is no system code.
inline constexpr DWORD stale_last_error = 0x20005A1E;

/// What fills a caller's buffer behind the text that was promised.
inline constexpr wchar_t buffer_junk = 0xDBAD;

/// One call, in the order in which calls ended.
struct journal_entry
{
    std::string function;
    std::u16string text; ///< the name or pathname as the caller handed it over
    std::uint64_t answer = 0;
    DWORD last_error = 0;
};

/// Something wrong with the machine, for as long as this object lives.
class [[nodiscard]] fault
{
public:
    explicit fault(std::shared_ptr<fault_record> record) noexcept;
    fault(fault &&other) noexcept;
    fault &operator=(fault other) noexcept;
    ~fault();

    /// Whether a call has met it.
    bool fired() const noexcept;

private:
    std::shared_ptr<fault_record> record_;
};

/// Answers a GetFullPathNameW call in the system's place, or lets it pass. An
/// answer of 0 is a failure with the code that the hook left by SetLastError.
using full_path_name_hook = std::function<std::optional<DWORD>(DWORD room, wchar_t *buffer)>;

/// The machine of the process until it is destroyed; then the one before is back.
/// Without any there is a plain one. A new one has an empty drive C: and stands in
/// its root directory.
///
/// Pathnames here are absolute, of any length, and taken as they stand: `C:\dir`,
/// `\\server\share\dir`, either also with its long prefix. What can't be done, such
/// as a file on a drive that doesn't exist, throws `std::invalid_argument`.
class simulated_machine
{
public:
    simulated_machine();
    ~simulated_machine();
    simulated_machine(simulated_machine const &) = delete;
    simulated_machine &operator=(simulated_machine const &) = delete;

    // Building. Missing parent directories are made.
    simulated_machine &add_drive(char16_t letter);
    simulated_machine &add_share(std::u16string_view server, std::u16string_view share);
    simulated_machine &add_directory(std::u16string_view path);
    simulated_machine &add_file(std::u16string_view path, std::string_view content = {});
    /// Whether it is a directory is not changed by FILE_ATTRIBUTE_DIRECTORY.
    simulated_machine &set_attributes(std::u16string_view path, DWORD attributes);
    simulated_machine &set_current_directory(std::u16string_view path);
    simulated_machine &remove_drive(char16_t letter);
    /// Takes the name and all below it away, whatever stands in the way.
    simulated_machine &remove(std::u16string_view path);

    // Looking. None of it is a call: nothing is journalled, no fault fires.
    bool exists(std::u16string_view path) const;
    bool is_directory(std::u16string_view path) const;
    bool is_file(std::u16string_view path) const;
    /// The names in a directory, sorted by their units.
    std::vector<std::u16string> entries(std::u16string_view path) const;
    DWORD attributes(std::u16string_view path) const;
    std::string content(std::u16string_view path) const;
    std::u16string current_directory() const;

    // What the caller may not do, and whom it can't reach.
    /// No entry may be made in this directory.
    simulated_machine &deny_creation(std::u16string_view path);
    /// A server that doesn't answer any longer, whatever it shares.
    simulated_machine &add_dead_server(std::u16string_view name);

    // Breaking calls. Calls are counted from now, the first is 1.
    fault fail_call(std::string_view function, int nth, DWORD code);
    fault fail_call(int nth, DWORD code);
    fault fail_every_call_on(std::string_view function, DWORD code);
    fault on_full_path_name(full_path_name_hook hook);

    // Reading what was called. GetLastError and SetLastError are no calls here.
    std::vector<journal_entry> journal() const;
    void clear_journal();
    int calls_of(std::string_view function) const;

private:
    std::shared_ptr<machine_state> state_;
};

} // namespace simulation

#endif
