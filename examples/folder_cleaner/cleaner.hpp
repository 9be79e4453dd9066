#ifndef FOLDER_CLEANER_CLEANER_HPP
#define FOLDER_CLEANER_CLEANER_HPP
// What the folder cleaner does. It tells on `out` what it finds and does, and on `log` what
// fails, a line each, in UTF-8. Each function returns whether nothing failed, and throws what
// leaves it nothing to go on with, such as a folder that isn't there.

#include <fl/filesystem.hpp>

#include <iosfwd>
#include <vector>

namespace cleaner {

namespace fs = fl::filesystem;

/// Tells all that is in a folder: sizes of files, targets of links, and how many there are.
/// Links are told and not entered.
bool list(fs::upath const &folder, std::ostream &out, std::ostream &log);

/// Moves files whose pathnames are too long for most programs right into the folder `elsewhere`,
/// which is made if need be.
bool move_long_names(fs::upath const &folder, fs::upath const &elsewhere, std::ostream &out,
                     std::ostream &log);

/// Removes a folder with all that is in it, read-only files included. Of links it removes the
/// links.
bool remove(fs::upath const &folder, std::ostream &out, std::ostream &log);

/// The program: does what the arguments say, and returns its exit code. 0 for done, 1 if
/// something failed, 2 for arguments that it doesn't understand.
int run(std::vector<fs::upath> const &arguments, std::ostream &out, std::ostream &log);

} // namespace cleaner

#endif
