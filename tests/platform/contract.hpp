#ifndef FL_FILESYSTEM_TESTS_PLATFORM_CONTRACT_HPP
#define FL_FILESYSTEM_TESTS_PLATFORM_CONTRACT_HPP
// What the library expects of Win32. These tests run on the simulated machine,
// under Wine and on Windows. Each states what Windows does; where Wine does
// something else, the row or the test says what, and is held to it there.

#include "support/needs.hpp"
#include "support/text.hpp"
#include "support/workspace.hpp"

#include <gtest/gtest.h>

#include <windows.h>

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace contract {

using test_support::running_edition;
using test_support::runs_under_wine;
using test_support::takes_long_pathnames;
using test_support::units;
using test_support::wide;
using test_support::windows_edition;
using test_support::workspace;

/// No system code, so that a call that leaves the last error alone shows.
inline constexpr DWORD untouched = 0x20000001;

/// For the field `wine` of a row: Wine does as Windows does.
inline constexpr DWORD as_windows = 0x20000002;

/// What Wine does: the same since Wine 8, or something else since Wine 10.
template <typename Value>
class wine_does
{
public:
    constexpr wine_does(Value since_8) : since_8_(since_8), since_10_(since_8) {}
    constexpr wine_does(Value since_8, Value since_10) : since_8_(since_8), since_10_(since_10) {}

    Value here() const { return test_support::wine_version() >= 10 ? since_10_ : since_8_; }

private:
    Value since_8_, since_10_;
};

/// A row of a table: the code that one call with this text comes to. See `text_in`.
struct call_row
{
    wchar_t const *text;
    DWORD code;
    char const *why;
    wine_does<DWORD> wine = as_windows;
};

/// A row of a table: what one call makes of this text, and why.
struct text_row
{
    wchar_t const *text, *expected;
    char const *why;
    wine_does<wchar_t const *> wine = nullptr; ///< none: as Windows does
};

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

inline DWORD expected(DWORD windows, wine_does<DWORD> wine)
{
    return runs_under_wine() && wine.here() != as_windows ? wine.here() : windows;
}

inline DWORD expected(call_row const &row)
{
    return expected(row.code, row.wine);
}

inline std::wstring expected(text_row const &row)
{
    return runs_under_wine() && row.wine.here() != nullptr ? row.wine.here() : row.expected;
}

/// Whether the name of a deleted file is free while others have the file open.
inline bool frees_names_at_once()
{
    return running_edition() >= windows_edition::windows_10_22h2;
}

/// Whether names of legacy devices mean them in any directory and with any extension. NUL does
/// so everywhere, without an extension.
inline bool finds_devices_anywhere()
{
    return running_edition() < windows_edition::windows_11;
}

/// The outcome for a full pathname that is longer than those that need no long prefix.
inline DWORD beyond_limit(DWORD code)
{
    return takes_long_pathnames() || runs_under_wine() ? success : code;
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

template <typename Rows, typename Fill, typename Call>
void expect_codes_of(Rows const &rows, Fill fill, Call call)
{
    std::optional<workspace> space;
    for (call_row const &row : rows) {
        if (!space)
            fill(space.emplace());
        DWORD code = success;
        if constexpr (std::is_invocable_v<Call, std::wstring>)
            code = call(text_in(*space, row.text));
        else
            code = call(*space, text_in(*space, row.text));
        EXPECT_EQ(code, expected(row)) << row.text << ": " << row.why;
        if (code == success)
            space.reset();
    }
}

/// What `call` comes to with the text of each row of all tables, in a folder that `fill` filled:
/// a fresh one after each success. `call` takes the text, or the folder and the text.
template <typename Fill, typename Call, typename... Tables>
void expect_codes(Fill fill, Call call, Tables const &...tables)
{
    (expect_codes_of(tables, fill, call), ...);
}

/// The same where all texts come to one code.
template <typename Fill, typename Call>
void expect_code(Fill fill, Call call, DWORD code, std::initializer_list<wchar_t const *> texts)
{
    std::vector<call_row> rows;
    for (wchar_t const *const text : texts)
        rows.push_back({text, code, "as the others"});
    expect_codes(fill, call, rows);
}

/// The folder that calls on names are tried in: `dir`, which holds a directory, `inner`, and a
/// file, `leaf`; `empty`, another directory; and files by what they are. It is the current
/// directory.
inline void fill(workspace &space)
{
    space.make_directory(space.path(u"dir\\inner"));
    space.make_file(space.path(u"dir\\leaf"), "leaf");
    space.make_directory(space.path(u"empty"));
    space.make_file(space.path(u"file"), "content");
    space.make_file(space.path(u"other"), "former");
    space.make_file(space.path(u"readonly"), "guarded");
    space.make_file(space.path(u"hidden"), "covered");
    space.set_attributes(space.path(u"readonly"), FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE);
    space.set_attributes(space.path(u"hidden"), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_ARCHIVE);
    space.change_directory(space.root());
}

/// Names of the file, which each call takes.
inline constexpr call_row names_of_file[] = {
    {LR"(@\file)", success, "a file"},
    {LR"(@\FILE)", success, "in another case"},
    {LR"(@\file. )", success, "once the end is trimmed"},
    {LR"(@/dir/../file)", success, "by a detour"},
    {L"file", success, "from the current directory"},
    {LR"(?@\file)", success, "as it stands"},
};

/// Names of directories, which each call takes that wants one.
inline constexpr call_row names_of_directories[] = {
    {LR"(@\dir)", success, "a directory"},
    {LR"(@\DIR\)", success, "with a separator, in another case"},
    {LR"(?@\dir)", success, "as it stands"},
    {LR"(?@\dir\)", success, "with a separator, too"},
    {L".", success, "the current directory"},
    {LR"(C:\)", success, "a root"},
};

/// Names of nothing, and what each call says that wants something to be there.
inline constexpr call_row missing_names[] = {
    {LR"(@\missing)", ERROR_FILE_NOT_FOUND, "not there"},
    {LR"(@\missing\a)", ERROR_PATH_NOT_FOUND, "nor the directory above"},
    {LR"(@\file\a)", ERROR_PATH_NOT_FOUND, "below a file"},
    {LR"(@\a*b)", ERROR_INVALID_NAME, "no name"},
    {LR"(@\a<b\c)", ERROR_INVALID_NAME, "nor the one above"},
    {LR"(@\missing\a*b)", ERROR_PATH_NOT_FOUND, "names are checked in their turn",
     ERROR_INVALID_NAME},
    {LR"(Q:\a)", ERROR_PATH_NOT_FOUND, "no such drive", ERROR_FILE_NOT_FOUND},
    {LR"(\\fl-dead-server\share\a)", ERROR_BAD_NETPATH, "no such server", ERROR_PATH_NOT_FOUND},
};

/// Roots of nothing.
inline constexpr call_row missing_roots[] = {
    {LR"(Q:\)", ERROR_PATH_NOT_FOUND, "no such drive"},
    {LR"(\\fl-dead-server\share)", ERROR_BAD_NETPATH, "no such server", ERROR_PATH_NOT_FOUND},
    {LR"(\\?\UNC\fl-dead-server\share\a)", ERROR_BAD_NETPATH, "with a long prefix",
     ERROR_PATH_NOT_FOUND},
};

/// What stands behind a long prefix is taken as it stands.
inline constexpr call_row as_it_stands[] = {
    {LR"(?@\file.)", ERROR_FILE_NOT_FOUND, "a full stop at the end makes another name"},
    {LR"(?@/file)", ERROR_INVALID_NAME, "a slash is in no name"},
    {LR"(?@\.)", ERROR_INVALID_NAME, "dots are no names"},
    {LR"(?@\dir\..\file)", ERROR_INVALID_NAME, "nor within"},
    {LR"(?@\dir\\leaf)", ERROR_INVALID_NAME, "nor is no text at all"},
};

/// No name at all.
inline constexpr call_row no_names[] = {
    {L"", ERROR_PATH_NOT_FOUND, "no text"},
    {L"  ", ERROR_PATH_NOT_FOUND, "blanks only"},
};

/// Names under which each call makes something.
inline constexpr call_row new_names[] = {
    {LR"(@\new)", success, "a new name"},
    {LR"(@\dir\new)", success, "in a directory"},
    {LR"(@/dir/new. )", success, "in a form that is tidied up"},
    {LR"(@\missing\..\new)", success, "dots are resolved before anything is looked up"},
    {LR"(@/dir/new)", success, "slashes are fine"},
    {L"new", success, "from the current directory"},
    {LR"(?@\dir\new)", success, "as it stands"},
};

/// Names that are taken, as calls tell that make something new.
inline constexpr call_row taken_names[] = {
    {LR"(@\other)", ERROR_ALREADY_EXISTS, "a file is there"},
    {LR"(@\OTHER)", ERROR_ALREADY_EXISTS, "in whatever case"},
    {LR"(@\empty)", ERROR_ALREADY_EXISTS, "a directory is there"},
    {LR"(@\empty. )", ERROR_ALREADY_EXISTS, "once the end is trimmed"},
    {LR"(?@\empty)", ERROR_ALREADY_EXISTS, "as it stands"},
};

/// Names under which nothing can be made, and what each call says that is to make something.
inline constexpr call_row impossible_names[] = {
    {LR"(@\missing\new)", ERROR_PATH_NOT_FOUND, "into no directory"},
    {LR"(@\a*b)", ERROR_INVALID_NAME, "no name"},
    {LR"(Q:\new)", ERROR_PATH_NOT_FOUND, "no such drive", ERROR_FILE_NOT_FOUND},
    {LR"(\\fl-dead-server\share\new)", ERROR_BAD_NETPATH, "no such server", ERROR_PATH_NOT_FOUND},
    {L"", ERROR_PATH_NOT_FOUND, "no text"},
};

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

/// The same name as it stands.
inline std::wstring with_long_prefix(std::wstring const &name)
{
    std::wstring const prefix = LR"(\\?\)";
    return name.starts_with(prefix) ? name : prefix + name;
}

/// Calls `call` with names of files on both sides of the limit of pathnames without a long
/// prefix, and with those names behind one. Wine knows no limit.
template <typename Call>
void expect_limit_of_260(Call call)
{
    workspace space;
    for (std::size_t const length : {258U, 259U, 260U, 300U}) {
        std::wstring const name = long_path(space, length);
        space.make_file(units(name));
        DWORD const code = length < 260 ? success : beyond_limit(ERROR_PATH_NOT_FOUND);
        EXPECT_EQ(call(name), code) << length;
        space.make_file(units(name)); // which the call may have deleted
        EXPECT_EQ(call(with_long_prefix(name)), success) << length;
    }
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

/// What `GetFileAttributesW` returns; the outcome is asked above.
inline DWORD attributes_of(std::wstring const &name)
{
    return ::GetFileAttributesW(name.c_str());
}

inline DWORD set_attributes(std::wstring const &name, DWORD attributes)
{
    return outcome_of([&] { return ::SetFileAttributesW(name.c_str(), attributes) != FALSE; });
}

inline DWORD delete_file(std::wstring const &name)
{
    return outcome_of([&] { return ::DeleteFileW(name.c_str()) != FALSE; });
}

/// Whether two times are one.
inline bool same(FILETIME left, FILETIME right)
{
    return left.dwHighDateTime == right.dwHighDateTime && left.dwLowDateTime == right.dwLowDateTime;
}

inline constexpr DWORD share_all = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// Owns what `CreateFileW` opens. `close` is for tests that look at what happens then.
class handle
{
public:
    handle() noexcept = default;
    explicit handle(HANDLE raw) noexcept : raw_(raw) {}
    handle(handle &&other) noexcept : raw_(std::exchange(other.raw_, INVALID_HANDLE_VALUE)) {}
    handle &operator=(handle other) noexcept
    {
        std::swap(raw_, other.raw_);
        return *this;
    }
    ~handle() { close(); }
    explicit operator bool() const noexcept { return raw_ != INVALID_HANDLE_VALUE; }
    HANDLE get() const noexcept { return raw_; }
    void close() noexcept
    {
        if (*this)
            ::CloseHandle(std::exchange(raw_, INVALID_HANDLE_VALUE));
    }

private:
    HANDLE raw_ = INVALID_HANDLE_VALUE;
};

/// How a name is opened. Unless a test says more, it is there, and others may do
/// with it as they like.
struct manner
{
    DWORD access = GENERIC_READ;
    DWORD share = share_all;
    DWORD disposition = OPEN_EXISTING;
    DWORD flags = 0;
};

/// A file is made.
inline constexpr manner anew = {.access = GENERIC_WRITE, .disposition = CREATE_NEW};

inline handle open(std::wstring const &name, manner const &how = {})
{
    return handle(::CreateFileW(name.c_str(), how.access, how.share, nullptr, how.disposition,
                                how.flags, nullptr));
}

/// Whether `open` would succeed, and with which code it would fail.
inline DWORD code_of_open(std::wstring const &name, manner const &how = {})
{
    handle opened;
    return outcome_of([&] { return static_cast<bool>(opened = open(name, how)); });
}

/// Opens a file or a directory to look at it only: this is in nobody's way.
inline handle look_at(std::wstring const &name, DWORD access = FILE_READ_ATTRIBUTES)
{
    return open(name, {.access = access, .flags = FILE_FLAG_BACKUP_SEMANTICS});
}

/// What becomes of attributes under Wine, which keeps few: each file is to be archived,
/// no directory is, nor is one read-only.
inline DWORD kept_attributes(DWORD windows)
{
    constexpr DWORD kept = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
    if (!runs_under_wine())
        return windows;
    if ((windows & FILE_ATTRIBUTE_DIRECTORY) != 0)
        return windows & (kept | FILE_ATTRIBUTE_DIRECTORY);
    return (windows & (kept | FILE_ATTRIBUTE_READONLY)) | FILE_ATTRIBUTE_ARCHIVE;
}

/// Whether a read-only file can't be written to. Always so on Windows; Wine asks its
/// host, and there the administrator may write to any file.
inline bool keeps_writers_out()
{
    workspace space;
    std::wstring const name = in(space, L"file");
    space.make_file(units(name));
    set_attributes(name, FILE_ATTRIBUTE_READONLY);
    return !runs_under_wine() || code_of_open(name, {.access = GENERIC_WRITE}) != success;
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
