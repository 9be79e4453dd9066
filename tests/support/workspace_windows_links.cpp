// The links of a workspace on the real system, and its shortcuts.

#include "support/workspace_windows.hpp"

#include "support/link_data.hpp"
#include "support/shell_link.hpp"
#include "support/text.hpp"

#include <winioctl.h>

#include <stdexcept>

namespace test_support {

namespace {

/// Whether a fresh workspace can make this.
template <typename Make>
bool can(Make make)
{
    try {
        workspace space;
        make(space);
        return true;
    } catch (std::runtime_error const &) {
        return false;
    }
}

void demand_success(HRESULT result, char const *what)
{
    if (FAILED(result))
        throw std::runtime_error(std::string(what) + " failed with " +
                                 std::to_string(code_of(result)));
}

void set_reparse_data(std::u16string const &path, link_data::bytes data)
{
    open_file const file(path, GENERIC_WRITE);
    DWORD count = 0;
    if (!::DeviceIoControl(file.get(), FSCTL_SET_REPARSE_POINT, data.data(),
                           static_cast<DWORD>(data.size()), nullptr, 0, &count, nullptr))
        fail("DeviceIoControl");
}

} // namespace

bool workspace::has_symbolic_links() const
{
    static bool const has =
        can([](workspace &space) { space.make_symbolic_link(space.path(u"link"), u"target"); });
    return has;
}

void workspace::make_symbolic_link(std::u16string const &path, std::u16string const &target,
                                   link_to what)
{
    make_directory(parent_of(path));
    DWORD const directory = what == link_to::directory ? SYMBOLIC_LINK_FLAG_DIRECTORY : 0;
    DWORD const flags = SYMBOLIC_LINK_FLAG_ALLOW_UNPRIVILEGED_CREATE | directory;
    std::wstring const name = long_form(path); // lives until the code has been read
    std::wstring const text = wide(target);
    if (!::CreateSymbolicLinkW(name.c_str(), text.c_str(), flags))
        fail("CreateSymbolicLinkW");
    if (!is_link(path))
        throw std::runtime_error("CreateSymbolicLinkW has made none");
}

bool workspace::has_junctions() const
{
    static bool const has = can([](workspace &space) {
        space.make_junction(space.path(u"junction"), space.root());
        if (!space.is_link(space.path(u"junction")))
            throw std::runtime_error("FSCTL_SET_REPARSE_POINT has made none");
    });
    return has;
}

void workspace::make_junction(std::u16string const &path, std::u16string const &target)
{
    make_directory(parent_of(path));
    std::wstring const name = long_form(path); // lives until the code has been read
    if (!::CreateDirectoryW(name.c_str(), nullptr))
        fail("CreateDirectoryW");
    try {
        set_reparse_data(path, link_data::junction_data(wide(target)));
    } catch (std::runtime_error const &) {
        ::RemoveDirectoryW(name.c_str());
        throw;
    }
}

bool workspace::is_link(std::u16string const &path) const
{
    return exists(path) && (attributes(path) & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

std::u16string workspace::link_text(std::u16string const &path) const
{
    open_file const file(path, FILE_READ_EA);
    link_data::bytes data(MAXIMUM_REPARSE_DATA_BUFFER_SIZE);
    DWORD count = 0;
    if (!::DeviceIoControl(file.get(), FSCTL_GET_REPARSE_POINT, nullptr, 0, data.data(),
                           static_cast<DWORD>(data.size()), &count, nullptr))
        fail("DeviceIoControl");
    data.resize(count);
    return link_data::shown_target(data);
}

void workspace::make_shortcut(std::u16string const &path, std::u16string const &target)
{
    make_directory(parent_of(path));
    apartment const here;
    shortcut made;
    demand_success(made.link()->SetPath(wide(target).c_str()), "IShellLinkW::SetPath");
    demand_success(made.file()->Save(long_form(path).c_str(), TRUE), "IPersistFile::Save");
}

std::u16string workspace::shortcut_target(std::u16string const &path) const
{
    apartment const here;
    shortcut stored;
    demand_success(stored.file()->Load(long_form(path).c_str(), STGM_READ), "IPersistFile::Load");
    return units(stored.path());
}

} // namespace test_support
