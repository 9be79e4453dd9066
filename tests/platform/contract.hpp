#ifndef FL_FILESYSTEM_TESTS_PLATFORM_CONTRACT_HPP
#define FL_FILESYSTEM_TESTS_PLATFORM_CONTRACT_HPP
// What the library expects of Win32. These tests run on the simulated machine,
// under Wine and on Windows. Each states what Windows does; where Wine does
// something else, the row or the test says what, and is held to it there.

#include "support/text.hpp"
#include "support/workspace.hpp"

#include <gtest/gtest.h>

#include <windows.h>

#include <string>
#include <string_view>

namespace contract {

using test_support::runs_under_wine;
using test_support::units;
using test_support::wide;
using test_support::workspace;

/// No system code, so that a call that leaves the last error alone shows.
inline constexpr DWORD untouched = 0x20000001;

/// For the field `wine` of a row: Wine does as Windows does.
inline constexpr DWORD as_windows = 0x20000002;

/// The outcome of a call as one value: 0 for success, else the last error.
inline constexpr DWORD success = 0;

template <typename Call>
DWORD outcome_of(Call call)
{
    ::SetLastError(untouched);
    bool const done = call();
    DWORD const code = ::GetLastError();
    return done ? success : code;
}

inline DWORD expected(DWORD windows, DWORD wine)
{
    return runs_under_wine() && wine != as_windows ? wine : windows;
}

/// The folder of a workspace, a backslash and `relative`.
inline std::wstring in(workspace const &space, std::wstring_view relative)
{
    return wide(space.path(units(relative)));
}

/// The text of a row: `@` ahead stands for the folder, and `?@` for the folder with a
/// long prefix.
inline std::wstring text_in(workspace const &space, std::wstring_view text)
{
    if (text.starts_with(L"?@"))
        return LR"(\\?\)" + wide(space.root()) + std::wstring(text.substr(2));
    if (text.starts_with(L'@'))
        return wide(space.root()) + std::wstring(text.substr(1));
    return std::wstring(text);
}

/// A pathname in the folder that has exactly `length` units. Its last name is long,
/// those above it exist.
inline std::wstring long_path(workspace &space, std::size_t length)
{
    std::u16string directory = space.root();
    while (directory.size() + 152 < length)
        directory += u'\\' + std::u16string(100, u'd');
    space.make_directory(directory);
    directory += u'\\';
    return wide(directory) + std::wstring(length - directory.size(), L'n');
}

inline DWORD create_directory(std::wstring const &name)
{
    return outcome_of([&] { return ::CreateDirectoryW(name.c_str(), nullptr) != FALSE; });
}

inline DWORD remove_directory(std::wstring const &name)
{
    return outcome_of([&] { return ::RemoveDirectoryW(name.c_str()) != FALSE; });
}

inline DWORD set_current_directory(std::wstring const &name)
{
    return outcome_of([&] { return ::SetCurrentDirectoryW(name.c_str()) != FALSE; });
}

/// The outcome only: what the attributes are is asked elsewhere.
inline DWORD get_file_attributes(std::wstring const &name)
{
    return outcome_of(
        [&] { return ::GetFileAttributesW(name.c_str()) != INVALID_FILE_ATTRIBUTES; });
}

inline std::wstring full_path(std::wstring const &text)
{
    std::wstring buffer(40000, L'\0');
    DWORD const room = static_cast<DWORD>(buffer.size());
    buffer.resize(::GetFullPathNameW(text.c_str(), room, buffer.data(), nullptr));
    return buffer;
}

inline std::wstring current_directory()
{
    std::wstring buffer(40000, L'\0');
    DWORD const room = static_cast<DWORD>(buffer.size());
    buffer.resize(::GetCurrentDirectoryW(room, buffer.data()));
    return buffer;
}

} // namespace contract

#endif
