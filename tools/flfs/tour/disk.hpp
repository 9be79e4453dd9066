#ifndef FL_FLFS_TOUR_DISK_HPP
#define FL_FLFS_TOUR_DISK_HPP
// The tour's own eyes and hands on the disk. They call the system and not the library, so
// that the library isn't checked by itself. Failures of a call are `std::runtime_error`.

#include <cstdint>
#include <string>

namespace flfs::tour {

void write_file(std::u16string const &pathname, std::string const &content);

std::string content_of(std::u16string const &pathname);

bool is_there(std::u16string const &pathname);

/// The names in a directory, sorted, with commas between them; "(nothing)" if there is none.
std::string names_in(std::u16string const &directory);

/// The same, to be asked for later.
inline auto names_then_in(std::u16string const &directory)
{
    return [directory] { return names_in(directory); };
}

/// The bytes that the volume of the current directory has in all.
std::uint64_t capacity_here();

/// The pathname of the program.
std::u16string program_pathname();

/// Makes a symbolic link `name` and removes it again. Returns what a step tells that makes one:
/// "made", "nothing is there" where the system only says that it has, or the failure.
std::string outcome_of_symbolic_link(std::u16string const &name);

} // namespace flfs::tour

#endif
