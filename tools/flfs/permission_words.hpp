#ifndef FL_FLFS_PERMISSION_WORDS_HPP
#define FL_FLFS_PERMISSION_WORDS_HPP
// The words that `flfs chmod` takes, such as `+w` and `=rw`.

#include <optional>
#include <string_view>

namespace flfs {

/// The permission word, for the library's `permissions`, that `text` stands for: a sign
/// and letters out of "rwxashi". Nothing if it is no such word, or a `+` or `-` alone,
/// which would say nothing.
///
///     +w    perms_add | 0222
///     -ah   perms_remove | archive_file | hidden_file
///     =rw   0666
///     =     no_perms
std::optional<unsigned int> permission_word(std::string_view text);

} // namespace flfs

#endif
