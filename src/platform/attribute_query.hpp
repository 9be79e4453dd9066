#ifndef FL_FILESYSTEM_SRC_PLATFORM_ATTRIBUTE_QUERY_HPP
#define FL_FILESYSTEM_SRC_PLATFORM_ATTRIBUTE_QUERY_HPP
// What the system says about one name without opening it for anybody to notice: no
// link is followed.

#include <windows.h>

#include <string>

namespace fl::filesystem::detail {

/// The answer of one `GetFileAttributesExW`. The data of a failed call is all zeros.
struct attribute_query
{
    explicit attribute_query(std::wstring const &path) noexcept
    {
        has_failed = ::GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data) == FALSE;
        code = has_failed ? ::GetLastError() : DWORD{ERROR_SUCCESS};
    }

    /// Not the same as `has_failed`: a call can fail and leave no code. Queries that report
    /// by the code go on then, with the zeros in `data`; who must not go on asks `has_failed`.
    bool has_told_code() const noexcept { return code != ERROR_SUCCESS; }

    WIN32_FILE_ATTRIBUTE_DATA data = {};
    bool has_failed = false;
    DWORD code = ERROR_SUCCESS; ///< may be 0 even where the call has failed
};

} // namespace fl::filesystem::detail

#endif
