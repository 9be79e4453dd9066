#ifndef FL_FILESYSTEM_SRC_STANDARD_IDENTITY_HPP
#define FL_FILESYSTEM_SRC_STANDARD_IDENTITY_HPP
// What makes two names one file.

#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>
#include <system_error>

namespace fl::filesystem::detail::standard {

/// A volume and a file on it.
struct file_identity
{
    std::uint64_t volume = 0;
    FILE_ID_128 file = {};

    friend bool operator==(file_identity const &left, file_identity const &right)
    {
        return left.volume == right.volume &&
               std::equal(std::begin(left.file.Identifier), std::end(left.file.Identifier),
                          std::begin(right.file.Identifier));
    }
};

/// Asks which file or directory `text` leads to, links followed by the system. Returns whether
/// it could; if not, `ec` holds the system's code.
bool read_identity(std::wstring const &text, file_identity &identity, std::error_code &ec);

} // namespace fl::filesystem::detail::standard

#endif
