#ifndef FL_FLFS_FAILURE_REPORT_HPP
#define FL_FLFS_FAILURE_REPORT_HPP
// A failure of the library, told to somebody at a terminal.

#include <fl/filesystem/exceptions.hpp>

#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace fl::filesystem {
class failure;
}

namespace flfs {

/// What an exception of the library says, as values.
struct failure
{
    std::string identifier;                         ///< such as "fl:filesystem:AccessDenied"
    std::optional<fl::filesystem::fsys_excp_id> id; ///< none outside the library's family
    std::u16string pathname;
    std::vector<std::u16string> additional_pathnames;
    unsigned int code;
    std::string sentence; ///< what happened and what to do, on one line
};

/// The sentence is the class's own; a command that knows more replaces it.
failure describe(fl::filesystem::FsysExceptionBase const &exception);
failure describe(fl::filesystem::failure const &kept);

/// Runs `action` and returns the failure that it ended in, if it did. Also knows the
/// one exception outside the library's family, of names that aren't ASCII where only
/// that can be compared.
std::optional<failure> failure_of(std::function<void()> const &action);

/// Replaces the sentence of a failure of this class.
void advise(failure &what_failed, fl::filesystem::fsys_excp_id id, char const *sentence);

/// Replaces that of the missing right to make symbolic links.
void advise_on_links(failure &what_failed);

/// Replaces that of a pathname with a quote in it, which no Windows name holds: cmd has taken
/// the backslash in `"C:\dir\" more` for one that the quote belongs to.
void advise_on_quotes(failure &what_failed, std::vector<std::u16string> const &written);

/// Replaces that of a pathname with a wildcard that stands for nothing.
void advise_on_wildcards(failure &what_failed, std::vector<std::u16string> const &written);

/// Prints `what_failed` to `err`. `written` is what the user wrote, any word of which could
/// be about: they are shown where the library names no pathname.
void print_failure(std::ostream &err, failure const &what_failed,
                   std::vector<std::u16string> const &written, bool in_colours = false);

} // namespace flfs

#endif
