#include "differential/host.hpp"

#include <windows.h>

#include <algorithm>
#include <set>
#include <stdexcept>

namespace differential {

namespace {

/// With a long prefix a pathname may have any length, and names may end in dots.
std::wstring long_form(std::wstring const &path)
{
    return L"\\\\?\\" + path;
}

[[noreturn]] void fail(char const *what)
{
    DWORD const code = ::GetLastError();
    throw std::runtime_error(std::string(what) + " failed with " + std::to_string(code));
}

std::vector<std::wstring> names_in(std::wstring const &directory)
{
    WIN32_FIND_DATAW data;
    HANDLE const search = ::FindFirstFileW(long_form(directory + L"\\*").c_str(), &data);
    if (search == INVALID_HANDLE_VALUE)
        fail("FindFirstFileW");
    std::vector<std::wstring> names;
    do {
        std::wstring const name = data.cFileName;
        if (name != L"." && name != L"..")
            names.push_back(name);
    } while (::FindNextFileW(search, &data));
    ::FindClose(search);
    std::sort(names.begin(), names.end());
    return names;
}

std::string content_of(std::wstring const &path)
{
    HANDLE const file = ::CreateFileW(long_form(path).c_str(), GENERIC_READ, FILE_SHARE_READ,
                                      nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        fail("CreateFileW");
    std::string content(1000, '\0'); // no sequence writes as much
    DWORD length = 0;
    bool const done = ::ReadFile(file, content.data(), 1000, &length, nullptr) != 0;
    ::CloseHandle(file);
    if (!done)
        throw std::runtime_error("ReadFile failed");
    content.resize(length);
    return content;
}

void write_file(std::wstring const &path, std::string const &content)
{
    HANDLE const file = ::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        fail("CreateFileW");
    DWORD written = 0;
    ::WriteFile(file, content.data(), static_cast<DWORD>(content.size()), &written, nullptr);
    ::CloseHandle(file);
}

void collect(std::wstring const &directory, std::vector<entry> &found,
             std::set<std::wstring> const &hidden)
{
    for (std::wstring const &name : names_in(directory)) {
        if (hidden.contains(name))
            continue;
        std::wstring const path = directory + L'\\' + name;
        DWORD const attributes = ::GetFileAttributesW(long_form(path).c_str());
        if (attributes == INVALID_FILE_ATTRIBUTES)
            fail("GetFileAttributesW");
        entry one{path, (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0, attributes, {}};
        if (!one.is_directory)
            one.content = content_of(path);
        found.push_back(std::move(one));
        if (found.back().is_directory)
            collect(path, found, {});
    }
}

void remove(entry const &one)
{
    std::wstring const name = long_form(one.pathname);
    ::SetFileAttributesW(name.c_str(), FILE_ATTRIBUTE_NORMAL);
    bool const done =
        one.is_directory ? ::RemoveDirectoryW(name.c_str()) != 0 : ::DeleteFileW(name.c_str()) != 0;
    if (!done)
        fail("cleaning up");
}

/// What stands on the drive before the first sequence: the system's own.
std::set<std::wstring> const &names_of_the_system()
{
    static std::set<std::wstring> const names = [] {
        auto const all = names_in(L"C:");
        std::set<std::wstring> kept(all.begin(), all.end());
        kept.erase(L"fl-differential"); // left behind by a run that was ended
        return kept;
    }();
    return names;
}

void clean_drive()
{
    ::SetCurrentDirectoryW(L"C:\\");
    ::SetFileAttributesW(L"C:\\", FILE_ATTRIBUTE_NORMAL);
    std::vector<entry> left;
    collect(L"C:", left, names_of_the_system());
    std::for_each(left.rbegin(), left.rend(), remove); // entries stand behind their directory
    for (wchar_t const *name : {L"=C:", L"=Q:", L"=", L"FL_VARIABLE"})
        ::SetEnvironmentVariableW(name, nullptr);
}

} // namespace

struct host::state
{
};

host::host(unsigned int number)
{
    std::wstring const folder = folder_above + folder_name(number);
    clean_drive();
    for (std::wstring const &directory : {std::wstring(L"C:\\fl-differential"), folder,
                                          folder + L"\\dir", folder + L"\\dir\\inner"})
        if (!::CreateDirectoryW(directory.c_str(), nullptr))
            fail("CreateDirectoryW");
    write_file(folder + L"\\file", "text");
    if (!::SetCurrentDirectoryW(folder.c_str()))
        fail("SetCurrentDirectoryW");
}

host::~host() = default; // the next one cleans up

std::vector<entry> host::entries() const
{
    std::vector<entry> found;
    collect(L"C:", found, names_of_the_system());
    return found;
}

std::u16string host::current_directory() const
{
    return {};
}

std::vector<entry> host::standing() const
{
    return {};
}

bool is_of_the_system(std::wstring const &name)
{
    return names_of_the_system().contains(name);
}

} // namespace differential
