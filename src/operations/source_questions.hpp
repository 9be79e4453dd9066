#ifndef FL_FILESYSTEM_SRC_OPERATIONS_SOURCE_QUESTIONS_HPP
#define FL_FILESYSTEM_SRC_OPERATIONS_SOURCE_QUESTIONS_HPP
// What the disk is asked about the source of an operation that failed, to tell whether it
// or the target is to blame. The only way from failures up to queries and operations.

#include <string>

namespace fl::filesystem::detail {

/// Whether `path` is a symbolic link itself. What can't be looked at is taken for none.
bool is_symbolic_link(std::wstring const &path);

/// The operation `exists`, with what it throws.
bool does_source_exist(std::u16string const &path);

/// The operation `access` for reading, with what it throws.
bool can_source_be_read(std::u16string const &path);

} // namespace fl::filesystem::detail

#endif
