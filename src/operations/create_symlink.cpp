#include <fl/filesystem/operations.hpp>

#include "failure/win32_error.hpp"
#include "standard/filesystem.hpp"

namespace fl::filesystem {

namespace {

/// The two pathnames of a link are different in kind, and which of them a code is about
/// can't be told: the exception names neither.
void report(std::error_code const &ec)
{
    if (ec)
        detail::throw_win32_exception(static_cast<unsigned int>(ec.value()), std::wstring());
}

bool makes_directory_link(upath const &target, unsigned int type)
{
    if (type == file_status::file_type_auto)
        return file_status::is_directory(status(target));
    return type == file_status::directory_file;
}

} // namespace

void create_symlink(upath const &target, upath const &link, unsigned int type)
{
    bool const is_to_directory = makes_directory_link(target, type);
    std::error_code ec;
    if (is_to_directory)
        detail::standard::create_directory_symlink(target.wstring(), link.wstring(), ec);
    else
        detail::standard::create_symlink(target.wstring(), link.wstring(), ec);
    report(ec);
}

void create_symlink(std::u16string const &target, std::u16string const &link, unsigned int type)
{
    create_symlink(upath(target), upath(link), type);
}

void copy_symlink(upath const &existing, upath const &new_link)
{
    std::error_code ec;
    detail::standard::copy_symlink(existing.wstring(), new_link.wstring(), ec);
    report(ec);
}

void copy_symlink(std::u16string const &existing, std::u16string const &new_link)
{
    copy_symlink(upath(existing), upath(new_link));
}

} // namespace fl::filesystem
