#include "status/file_information.hpp"

#include <fl/filesystem/exceptions.hpp>

#include "failure/throw.hpp"
#include "failure/win32_error.hpp"
#include "platform/code_units.hpp"
#include "standard/opening.hpp"
#include "status/file_time.hpp"

namespace fl::filesystem::detail {

BY_HANDLE_FILE_INFORMATION demand_file_information(std::wstring const &form,
                                                   std::u16string const &named)
{
    auto const [file, open_code] = standard::open_target(form);
    if (!file)
        throw_win32_exception(open_code, widen(named));
    BY_HANDLE_FILE_INFORMATION info = {};
    DWORD const code = standard::code_of(
        [&, &opened = file] { return ::GetFileInformationByHandle(opened.get(), &info); });
    if (code != ERROR_SUCCESS)
        throw_win32_exception(code, widen(named));
    return info;
}

std::uint64_t demand_size(BY_HANDLE_FILE_INFORMATION const &info, std::u16string const &named)
{
    if ((info.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        throw_exception(FileIsDirectory(named));
    return join_halves(info.nFileSizeHigh, info.nFileSizeLow);
}

} // namespace fl::filesystem::detail
