#include "support/workspace_windows.hpp"

#include "support/text.hpp"

#include <algorithm>
#include <atomic>
#include <stdexcept>

namespace test_support {

[[noreturn]] void fail(char const *what)
{
    DWORD const code = ::GetLastError();
    throw std::runtime_error(std::string(what) + " failed with " + std::to_string(code));
}

std::wstring long_form(std::u16string_view path)
{
    std::wstring const name = wide(path);
    return name.starts_with(L"\\\\") ? L"\\\\?\\UNC" + name.substr(1) : L"\\\\?\\" + name;
}

std::u16string parent_of(std::u16string const &path)
{
    return path.substr(0, path.find_last_of(u'\\'));
}

namespace {

constexpr std::size_t longest_root = 60;

DWORD attributes_of(std::u16string_view path)
{
    return ::GetFileAttributesW(long_form(path).c_str());
}

std::vector<std::u16string> names_in(std::u16string const &path)
{
    WIN32_FIND_DATAW data;
    std::wstring const pattern = long_form(path + u"\\*");
    HANDLE const search = ::FindFirstFileW(pattern.c_str(), &data);
    if (search == INVALID_HANDLE_VALUE)
        fail("FindFirstFileW");
    std::vector<std::u16string> names;
    do {
        std::u16string const name = units(data.cFileName);
        if (name != u"." && name != u"..")
            names.push_back(name);
    } while (::FindNextFileW(search, &data));
    ::FindClose(search);
    std::sort(names.begin(), names.end());
    return names;
}

/// Removes a name and all below it, as far as it can. Links are not followed.
void remove_all(std::u16string const &path)
{
    DWORD const attributes = attributes_of(path);
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return;
    std::wstring const name = long_form(path);
    ::SetFileAttributesW(name.c_str(), FILE_ATTRIBUTE_NORMAL);
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
        ::DeleteFileW(name.c_str());
        return;
    }
    if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) {
        for (std::u16string const &entry : names_in(path))
            remove_all(path + u'\\' + entry);
    }
    ::RemoveDirectoryW(name.c_str());
}

void create_directory(std::u16string const &path)
{
    std::wstring const name = long_form(path); // lives until the code has been read
    if (!::CreateDirectoryW(name.c_str(), nullptr) && ::GetLastError() != ERROR_ALREADY_EXISTS)
        fail("CreateDirectoryW");
}

void create_directories(std::u16string const &path)
{
    // `C:` is there; with a long prefix it would mean the device
    if (path.ends_with(u':') || attributes_of(path) != INVALID_FILE_ATTRIBUTES)
        return;
    std::u16string const parent = parent_of(path);
    if (parent == path)
        throw std::invalid_argument("no absolute pathname");
    create_directories(parent);
    create_directory(path);
}

/// A name that no other workspace has, in this process or another.
std::u16string fresh_name()
{
    static std::atomic<unsigned int> count = 0;
    std::wstring const name = L"fl-" + std::to_wstring(::GetCurrentProcessId()) + L'-' +
                              std::to_wstring(::GetTickCount64() % 1000000) + L'-' +
                              std::to_wstring(++count);
    return units(name);
}

/// The folder for temporary files, or a drive's root directory if that is too deep.
std::u16string base_directory()
{
    wchar_t buffer[MAX_PATH + 1] = {};
    DWORD const length = ::GetTempPathW(MAX_PATH, buffer);
    std::u16string const temporary = units(std::wstring_view(buffer, length));
    bool const is_short = !temporary.empty() && temporary.size() <= longest_root - 30;
    return is_short ? temporary : temporary.substr(0, 3);
}

std::wstring current_directory()
{
    std::wstring text(::GetCurrentDirectoryW(0, nullptr), L'\0');
    text.resize(::GetCurrentDirectoryW(static_cast<DWORD>(text.size()), text.data()));
    return text;
}

/// Asked once: a server that isn't there takes its time.
bool has_test_share()
{
    static bool const has =
        ::GetFileAttributesW(L"\\\\fl-server\\share\\") != INVALID_FILE_ATTRIBUTES;
    return has;
}

} // namespace

struct workspace::state
{
    std::wstring former_directory = current_directory();
    std::u16string root;
    std::u16string share_root;
};

workspace::workspace() : state_(std::make_unique<state>())
{
    std::u16string const name = fresh_name();
    state_->root = base_directory() + name;
    create_directory(state_->root);
    if (has_test_share()) {
        state_->share_root = u"\\\\fl-server\\share\\" + name;
        create_directory(state_->share_root);
    }
}

workspace::~workspace()
{
    ::SetCurrentDirectoryW(state_->former_directory.c_str());
    remove_all(state_->root);
    if (!state_->share_root.empty())
        remove_all(state_->share_root);
}

std::u16string const &workspace::root() const
{
    return state_->root;
}

std::u16string workspace::path(std::u16string_view relative) const
{
    return state_->root + u'\\' + std::u16string(relative);
}

bool workspace::has_share() const
{
    return !state_->share_root.empty();
}

std::u16string workspace::share_root() const
{
    if (!has_share())
        throw std::logic_error("there is no share");
    return state_->share_root;
}

void workspace::make_directory(std::u16string const &path)
{
    create_directories(path);
    if (!is_directory(path))
        throw std::runtime_error("there is something else than a directory");
}

void workspace::make_file(std::u16string const &path, std::string const &content)
{
    create_directories(parent_of(path));
    std::wstring const name = long_form(path);
    HANDLE const file = ::CreateFileW(name.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        fail("CreateFileW");
    DWORD written = 0;
    bool const done = ::WriteFile(file, content.data(), static_cast<DWORD>(content.size()),
                                  &written, nullptr) != 0;
    ::CloseHandle(file);
    if (!done || written != content.size())
        throw std::runtime_error("the content could not be written");
}

bool workspace::exists(std::u16string const &path) const
{
    return attributes_of(path) != INVALID_FILE_ATTRIBUTES;
}

bool workspace::is_directory(std::u16string const &path) const
{
    return exists(path) && (attributes_of(path) & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool workspace::is_file(std::u16string const &path) const
{
    return exists(path) && !is_directory(path);
}

std::vector<std::u16string> workspace::entries(std::u16string const &path) const
{
    return names_in(path);
}

std::string workspace::content(std::u16string const &path) const
{
    if (!is_file(path) || is_link(path))
        throw std::invalid_argument("this is no file with content of its own");
    open_file const file(path, GENERIC_READ);
    std::string content;
    char part[4096];
    DWORD count = 0;
    do {
        if (!::ReadFile(file.get(), part, sizeof part, &count, nullptr))
            fail("ReadFile");
        content.append(part, count);
    } while (count != 0);
    return content;
}

std::uint32_t workspace::attributes(std::u16string const &path) const
{
    std::wstring const name = long_form(path); // lives until the code has been read
    DWORD const attributes = ::GetFileAttributesW(name.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES)
        fail("GetFileAttributesW");
    return attributes;
}

void workspace::set_attributes(std::u16string const &path, std::uint32_t attributes)
{
    std::wstring const name = long_form(path); // lives until the code has been read
    if (!::SetFileAttributesW(name.c_str(), attributes))
        fail("SetFileAttributesW");
}

void workspace::change_directory(std::u16string const &path)
{
    std::wstring const name = wide(path);
    if (!::SetCurrentDirectoryW(name.c_str()))
        fail("SetCurrentDirectoryW");
}

bool workspace::can_deny_rights() const
{
    return false; // access control lists are out of these tests' reach
}

void workspace::deny(std::u16string const &, access_right)
{
    throw std::logic_error("rights can't be denied here");
}

void workspace::deny_creation(std::u16string const &path)
{
    deny(path, access_right::create_entries);
}

bool runs_under_wine()
{
    return wine_version() != 0;
}

int wine_version()
{
    static int const version = [] {
        using call = char const *(*)();
        void *const found = reinterpret_cast<void *>(
            ::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "wine_get_version"));
        return found == nullptr ? 0 : std::stoi(reinterpret_cast<call>(found)());
    }();
    return version;
}

windows_edition running_edition()
{
    if (runs_under_wine())
        return windows_edition::windows_10_1809;
    // what GetVersionExW tells depends on the program's manifest
    static DWORD const build = [] {
        OSVERSIONINFOW version = {};
        version.dwOSVersionInfoSize = sizeof version;
        using call = LONG(WINAPI *)(OSVERSIONINFOW *);
        void *const found = reinterpret_cast<void *>(
            ::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "RtlGetVersion"));
        reinterpret_cast<call>(found)(&version);
        return version.dwBuildNumber;
    }();
    constexpr DWORD first_windows_11 = 22000;
    constexpr DWORD first_freeing_names = 18362; // version 1903
    if (build >= first_windows_11)
        return windows_edition::windows_11;
    return build >= first_freeing_names ? windows_edition::windows_10_22h2
                                        : windows_edition::windows_10_1809;
}

bool takes_long_pathnames()
{
    static bool const takes = [] {
        using call = BOOLEAN(WINAPI *)();
        void *const found = reinterpret_cast<void *>(
            ::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "RtlAreLongPathsEnabled"));
        return found != nullptr && reinterpret_cast<call>(found)() != FALSE;
    }();
    return takes;
}

} // namespace test_support
