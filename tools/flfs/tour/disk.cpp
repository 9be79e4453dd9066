#include "flfs/tour/disk.hpp"

#include "flfs/library_inside.hpp"
#include "flfs/text.hpp"

#include <algorithm>
#include <stdexcept>
#include <vector>

namespace flfs::tour {

namespace {

using fl::filesystem::detail::file_handle;
using fl::filesystem::detail::find_handle;

constexpr DWORD content_room = 1024; // more than the tour ever writes

std::wstring wide(std::u16string const &text)
{
    return {text.begin(), text.end()};
}

[[noreturn]] void fail(char const *function)
{
    DWORD const code = ::GetLastError();
    throw std::runtime_error(std::string(function) + " failed with " + std::to_string(code));
}

file_handle open_file(std::u16string const &pathname, DWORD access, DWORD disposition)
{
    file_handle file(::CreateFileW(wide(pathname).c_str(), access, FILE_SHARE_READ, nullptr,
                                   disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file)
        fail("CreateFileW");
    return file;
}

} // namespace

void write_file(std::u16string const &pathname, std::string const &content)
{
    file_handle const file = open_file(pathname, GENERIC_WRITE, CREATE_ALWAYS);
    DWORD written = 0;
    if (!::WriteFile(file.get(), content.data(), static_cast<DWORD>(content.size()), &written,
                     nullptr))
        fail("WriteFile");
}

std::string content_of(std::u16string const &pathname)
{
    file_handle const file = open_file(pathname, GENERIC_READ, OPEN_EXISTING);
    std::string content(content_room, '\0');
    DWORD read = 0;
    if (!::ReadFile(file.get(), content.data(), content_room, &read, nullptr))
        fail("ReadFile");
    content.resize(read);
    return content;
}

bool is_there(std::u16string const &pathname)
{
    return ::GetFileAttributesW(wide(pathname).c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::string names_in(std::u16string const &directory)
{
    WIN32_FIND_DATAW found;
    find_handle const search(::FindFirstFileW(wide(directory + u"\\*").c_str(), &found));
    if (!search)
        fail("FindFirstFileW");
    std::vector<std::string> names;
    do {
        std::wstring const name = found.cFileName;
        if (name != L"." && name != L"..")
            names.push_back(displayed(std::u16string(name.begin(), name.end())));
    } while (::FindNextFileW(search.get(), &found));
    std::sort(names.begin(), names.end());
    return names.empty() ? "(nothing)" : joined(names, ", ");
}

std::uint64_t capacity_here()
{
    ULARGE_INTEGER available;
    ULARGE_INTEGER capacity;
    ULARGE_INTEGER free;
    if (!::GetDiskFreeSpaceExW(L".", &available, &capacity, &free))
        fail("GetDiskFreeSpaceExW");
    return capacity.QuadPart;
}

std::u16string program_pathname()
{
    std::wstring text(MAX_PATH, L'\0');
    for (;;) {
        DWORD const room = static_cast<DWORD>(text.size());
        DWORD const length = ::GetModuleFileNameW(nullptr, text.data(), room);
        if (length == 0)
            fail("GetModuleFileNameW");
        text.resize(length < room ? length : text.size() * 2);
        if (length < room)
            return {text.begin(), text.end()};
    }
}

std::string outcome_of_symbolic_link(std::u16string const &name)
{
    // without it only administrators may; older systems know no such flag
    constexpr DWORD unprivileged = SYMBOLIC_LINK_FLAG_ALLOW_UNPRIVILEGED_CREATE;
    std::wstring const link = wide(name);
    BOOLEAN made = ::CreateSymbolicLinkW(link.c_str(), L"target", unprivileged);
    if (!made && ::GetLastError() == ERROR_INVALID_PARAMETER)
        made = ::CreateSymbolicLinkW(link.c_str(), L"target", 0);
    if (!made) {
        DWORD const code = ::GetLastError();
        return code == ERROR_ACCESS_DENIED ? "AccessDenied"
                                           : "SystemError, code " + std::to_string(code);
    }
    if (!is_there(name))
        return "nothing is there";
    if (!::DeleteFileW(link.c_str()))
        fail("DeleteFileW");
    return "made";
}

} // namespace flfs::tour
