#include <fl/filesystem/standard.hpp>

#include "failure/throw.hpp"
#include "failure/win32_error.hpp"
#include "platform/owned_handle.hpp"

#include <windows.h>

namespace fl::filesystem::detail {

namespace {

/// The code with which the system refuses to open `path` as a stream would.
DWORD code_of_opening(std::wstring const &path, DWORD access, DWORD disposition, DWORD flags)
{
    constexpr DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE; // what streams grant others
    file_handle const file(
        ::CreateFileW(path.c_str(), access, share, nullptr, disposition, flags, nullptr));
    return file ? DWORD{NO_ERROR} : ::GetLastError();
}

} // namespace

void throw_stream_failure(upath const &p, unsigned int needs)
{
    if (needs == 0)
        throw_invalid_argument("Unsupported open mode");
    if (p.empty())
        throw_invalid_argument("Empty Path not permitted");
    std::wstring const path = make_native_access_form(p.native());
    DWORD const access = ((needs & stream_reads) != 0 ? GENERIC_READ : 0) |
                         ((needs & stream_writes) != 0 ? GENERIC_WRITE : 0);
    DWORD code = code_of_opening(path, access, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL);
    if (code == ERROR_FILE_NOT_FOUND && (needs & stream_creates) != 0) {
        // the stream would have made it: what keeps it from that?
        code = code_of_opening(path, access | DELETE, CREATE_NEW,
                               FILE_ATTRIBUTE_NORMAL | FILE_FLAG_DELETE_ON_CLOSE);
    }
    // no reason any more, or none that the system told
    throw_win32_exception(code == NO_ERROR ? ERROR_OPEN_FAILED : code, path);
}

} // namespace fl::filesystem::detail
