#include "standard/filesystem.hpp"

#include "pathname/long_prefix.hpp"
#include "standard/codes.hpp"
#include "standard/lexical.hpp"
#include "standard/opening.hpp"

#include <windows.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace fl::filesystem::detail::standard {

namespace {

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

/// File systems without identifiers of 128 bits, such as FAT, have those of 64.
bool read_short_identity(file_handle const &file, file_identity &identity, std::error_code &ec)
{
    BY_HANDLE_FILE_INFORMATION info = {};
    if (!attempt(ec, [&] { return ::GetFileInformationByHandle(file.get(), &info); }))
        return false;
    identity.volume = info.dwVolumeSerialNumber;
    DWORD const halves[] = {info.nFileIndexLow, info.nFileIndexHigh};
    for (std::size_t i = 0; i < 8; ++i)
        identity.file.Identifier[i] = static_cast<BYTE>(halves[i / 4] >> (8 * (i % 4)));
    return true;
}

/// Returns whether it could; if not, `ec` holds the system's code.
bool read_identity(std::wstring const &text, file_identity &identity, std::error_code &ec)
{
    auto const [file, code] = open_target(text);
    if (!file)
        return fail(code, ec);
    FILE_ID_INFO info = {};
    ec = system_code(get_information(file, FileIdInfo, info));
    // each file system says in its own way that it has none; who says nothing doesn't say that
    if (ec && !is_unexplained(ec))
        return read_short_identity(file, identity, ec);
    identity = {info.VolumeSerialNumber, info.FileId};
    return !ec;
}

} // namespace

std::wstring canonical(std::wstring const &text, std::error_code &ec)
{
    ec.clear();
    auto const [file, code] = open_target(text);
    if (!file) {
        ec = system_code(code);
        return {};
    }
    std::wstring path = final_path(file, ec);
    if (path.starts_with(global_root)) // without its prefix it would lead elsewhere
        return path;
    return std::move(strip_long_path_prefix(path, path.size(), std::wstring::npos));
}

std::wstring weakly_canonical(std::wstring const &text, std::error_code &ec)
{
    std::wstring head = canonical(text, ec);
    if (!ec || !is_not_found(ec))
        return head;
    ec.clear();
    std::vector<std::wstring_view> const elements = elements_of(text);
    auto const missing =
        std::find_if(elements.begin(), elements.end(), [&](std::wstring_view element) {
            std::wstring candidate = head;
            join(candidate, element);
            status(candidate, ec);
            if (!ec)
                head = std::move(candidate);
            return static_cast<bool>(ec);
        });
    if (ec && !is_not_found(ec))
        return {};
    ec.clear();
    if (!head.empty())
        head = canonical(head, ec);
    if (ec)
        return {};
    std::for_each(missing, elements.end(), [&](std::wstring_view element) { join(head, element); });
    return lexically_normal(head);
}

std::wstring relative(std::wstring const &text, std::wstring const &base, std::error_code &ec)
{
    std::wstring const to = weakly_canonical(text, ec);
    if (ec)
        return {};
    std::wstring const from = weakly_canonical(base, ec);
    return ec ? std::wstring() : lexically_relative(to, from);
}

bool equivalent(std::wstring const &left, std::wstring const &right, std::error_code &ec)
{
    ec.clear();
    file_identity first;
    file_identity second;
    return read_identity(left, first, ec) && read_identity(right, second, ec) && first == second;
}

} // namespace fl::filesystem::detail::standard
