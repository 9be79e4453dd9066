// Which exported function a call reaches, and what comes of it. The operations are defined
// here, in place of the library's: each says who it is. So additions to the headers are seen
// if they take a call away from the function that it meant. What path.hpp needs beside them
// stands here, too, no more than its calls ask for.

#include <fl/filesystem/operations.hpp>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace {

std::string called;

template <typename Result = void>
Result say(char const *function)
{
    called += called.empty() ? "" : ", ";
    called += function;
    if constexpr (!std::is_void_v<Result>)
        return Result();
}

template <typename Call>
std::string reached_by(Call call)
{
    called.clear();
    call();
    return called;
}

} // namespace

namespace fl::filesystem {

using text = std::u16string;

namespace detail {

text make_native_form(text const &given, bool)
{
    return given;
}

text &concatenate_pathname(text &base, text const &addition, bool)
{
    return base += addition;
}

text extract_filename(text const &given)
{
    return given;
}

} // namespace detail

// NOLINTBEGIN: the parameters have no names, since nothing is done with them
upath absolute(upath const &, upath const &)
{
    return say<upath>("absolute(path, path)");
}
text absolute(text const &, text const &)
{
    return say<text>("absolute(text, text)");
}
upath canonical(upath const &, upath const &)
{
    return say<upath>("canonical(path, path)");
}
text canonical(text const &, text const &)
{
    return say<text>("canonical(text, text)");
}
upath relative(upath const &, upath const &)
{
    return say<upath>("relative(path, path)");
}
text relative(text const &, text const &)
{
    return say<text>("relative(text, text)");
}
bool equivalent(upath const &, upath const &)
{
    return say<bool>("equivalent(path, path)");
}
bool equivalent(text const &, text const &)
{
    return say<bool>("equivalent(text, text)");
}
void rename(upath const &, upath const &)
{
    say("rename(path, path)");
}
void rename(text const &, text const &)
{
    say("rename(text, text)");
}
void copy(upath const &, upath const &, std::filesystem::copy_options)
{
    say("copy(path, path)");
}
void copy(text const &, text const &, std::filesystem::copy_options)
{
    say("copy(text, text)");
}
void copy_file(upath const &, upath const &, std::filesystem::copy_options)
{
    say("copy_file(path, path)");
}
void copy_file(text const &, text const &, std::filesystem::copy_options)
{
    say("copy_file(text, text)");
}
void copy_directory(upath const &, upath const &)
{
    say("copy_directory(path, path)");
}
void copy_directory(text const &, text const &)
{
    say("copy_directory(text, text)");
}
void create_symlink(upath const &, upath const &, unsigned int)
{
    say("create_symlink(path, path)");
}
void create_symlink(text const &, text const &, unsigned int)
{
    say("create_symlink(text, text)");
}
void copy_symlink(upath const &, upath const &)
{
    say("copy_symlink(path, path)");
}
void copy_symlink(text const &, text const &)
{
    say("copy_symlink(text, text)");
}
void create_shortcut(upath const &, upath const &)
{
    say("create_shortcut(path, path)");
}
void create_shortcut(text const &, text const &)
{
    say("create_shortcut(text, text)");
}
void create_directory(upath const &)
{
    say("create_directory(path)");
}
void create_directory(text const &)
{
    say("create_directory(text)");
}
void create_directories(upath const &)
{
    say("create_directories(path)");
}
void create_directories(text const &)
{
    say("create_directories(text)");
}
void remove(upath const &)
{
    say("remove(path)");
}
void remove(text const &)
{
    say("remove(text)");
}
void remove_file(upath const &)
{
    say("remove_file(path)");
}
void remove_file(text const &)
{
    say("remove_file(text)");
}
void remove_directory(upath const &)
{
    say("remove_directory(path)");
}
void remove_directory(text const &)
{
    say("remove_directory(text)");
}
void remove_all(upath const &)
{
    say("remove_all(path)");
}
void remove_all(text const &)
{
    say("remove_all(text)");
}
bool access(upath const &, unsigned int)
{
    return say<bool>("access(path)");
}
bool access(text const &, unsigned int)
{
    return say<bool>("access(text)");
}
void permissions(upath const &, unsigned int)
{
    say("permissions(path)");
}
void permissions(text const &, unsigned int)
{
    say("permissions(text)");
}
upath read_symlink(upath const &)
{
    return say<upath>("read_symlink(path)");
}
text read_symlink(text const &)
{
    return say<text>("read_symlink(text)");
}
file_status status(upath const &)
{
    return say<file_status>("status(path)");
}
file_status status(text const &)
{
    return say<file_status>("status(text)");
}
file_status symlink_status(upath const &)
{
    return say<file_status>("symlink_status(path)");
}
file_status symlink_status(text const &)
{
    return say<file_status>("symlink_status(text)");
}
file_status_light status_express_light(text const &)
{
    return say<file_status_light>("status_express_light(text)");
}
bool exists(upath const &)
{
    return say<bool>("exists(path)");
}
bool exists(text const &)
{
    return say<bool>("exists(text)");
}
upath weakly_canonical(upath const &)
{
    return say<upath>("weakly_canonical(path)");
}
text weakly_canonical(text const &)
{
    return say<text>("weakly_canonical(text)");
}
bool change_current_path(upath const &)
{
    return say<bool>("change_current_path(path)");
}
bool change_current_path(text const &)
{
    return say<bool>("change_current_path(text)");
}
upath get_unc_path(upath const &, bool)
{
    return say<upath>("get_unc_path(path)");
}
text get_unc_path(text const &, bool)
{
    return say<text>("get_unc_path(text)");
}
space_info space(upath const &)
{
    return say<space_info>("space(path)");
}
// NOLINTEND

} // namespace fl::filesystem

namespace user {
namespace {

namespace fs = fl::filesystem;
using namespace fl::filesystem;
using std::filesystem::copy_options;

// The last argument is the call.
#define REACHES(function, result, ...)                                                             \
    static_assert(std::is_same_v<decltype(__VA_ARGS__), result>);                                  \
    EXPECT_EQ(reached_by([&] { static_cast<void>(__VA_ARGS__); }), function) << #__VA_ARGS__

upath const path(std::u16string(u"path"));
std::u16string const text(u"text");
char16_t const *const pointer = u"pointer";
copy_options const options = copy_options::recursive;

// Below, each call that compiles without what was added to the headers reaches what it
// always did.

TEST(FormerCalls, WithOnePathname)
{
    REACHES("create_directory(path)", void, fs::create_directory(path));
    REACHES("create_directory(text)", void, fs::create_directory(text));
    REACHES("create_directory(text)", void, fs::create_directory(u"text"));
    REACHES("create_directories(path)", void, create_directories(path));
    REACHES("create_directories(text)", void, create_directories(text + u"x"));
    REACHES("create_directories(path)", void, create_directories(path / u"x"));
    REACHES("create_directories(path)", void, create_directories(path / text));
    REACHES("remove(path)", void, remove(path));
    REACHES("remove(text)", void, remove(text));
    REACHES("remove(text)", void, fs::remove(pointer));
    REACHES("remove_file(path)", void, remove_file(path));
    REACHES("remove_file(text)", void, remove_file(u"text"));
    REACHES("remove_directory(path)", void, remove_directory(path));
    REACHES("remove_directory(text)", void, remove_directory(u"text"));
    REACHES("remove_all(path)", void, remove_all(path));
    REACHES("remove_all(text)", void, remove_all(u"text"));
    REACHES("access(path)", bool, access(path, access_read));
    REACHES("access(text)", bool, access(u"text", access_read));
    REACHES("permissions(path)", void, permissions(path, 0));
    REACHES("permissions(text)", void, permissions(u"text", file_status::perms_add));
    REACHES("read_symlink(path)", upath, read_symlink(path));
    REACHES("read_symlink(text)", std::u16string, read_symlink(u"text"));
    REACHES("status(path)", file_status, status(path));
    REACHES("status(text)", file_status, status(text));
    REACHES("status(text)", file_status, status(u"text"));
    REACHES("status(text)", file_status, status(path.filename()));
    REACHES("status(text)", file_status, status(path.native()));
    REACHES("symlink_status(path)", file_status, symlink_status(path));
    REACHES("symlink_status(text)", file_status, symlink_status(u"text"));
    REACHES("status_express_light(text)", file_status_light, status_express_light(text));
    REACHES("status_express_light(text)", file_status_light, status_express_light(u"text"));
    REACHES("exists(path)", bool, exists(path));
    REACHES("exists(path)", bool, exists(upath(u"text")));
    REACHES("exists(text)", bool, exists(u"text"));
    REACHES("exists(text)", bool, fs::exists(pointer));
    REACHES("weakly_canonical(path)", upath, weakly_canonical(path));
    REACHES("weakly_canonical(text)", std::u16string, weakly_canonical(u"text"));
    REACHES("change_current_path(path)", bool, change_current_path(path));
    REACHES("change_current_path(text)", bool, change_current_path(u"text"));
    REACHES("get_unc_path(path)", upath, get_unc_path(path, true));
    REACHES("get_unc_path(text)", std::u16string, get_unc_path(u"text", false));
    REACHES("space(path)", space_info, space(path));
    REACHES("space(path)", space_info, space(text));
    REACHES("space(path)", space_info, space({u"C:\\"}));
}

TEST(FormerCalls, WithTwoPathnames)
{
    REACHES("rename(path, path)", void, rename(path, path));
    REACHES("rename(text, text)", void, rename(text, text));
    REACHES("rename(text, text)", void, rename(u"text", text));
    REACHES("rename(text, text)", void, rename(text, u"text"));
    REACHES("rename(text, text)", void, fs::rename(u"text", u"text"));
    REACHES("rename(text, text)", void, fs::rename(pointer, u"text"));
    REACHES("rename(path, path)", void, rename(path, text));
    REACHES("rename(path, path)", void, rename(text, path));
    REACHES("rename(path, path)", void, rename(path, path.filename()));
    REACHES("copy(path, path)", void, copy(path, path));
    REACHES("copy(path, path)", void, copy(path, text));
    REACHES("copy(text, text)", void, copy(u"text", u"text"));
    REACHES("copy(path, path)", void, copy(path, path, options));
    REACHES("copy(path, path)", void, copy(path, text, options));
    REACHES("copy(path, path)", void, copy(text, path, options));
    REACHES("copy(text, text)", void, copy(text, text, options));
    REACHES("copy(text, text)", void, copy(text, u"text", options));
    REACHES("copy(text, text)", void, copy(u"text", text, options));
    REACHES("copy(text, text)", void, fs::copy(u"text", u"text", options));
    REACHES("copy_file(path, path)", void, copy_file(path, path));
    REACHES("copy_file(path, path)", void, copy_file(path, text, options));
    REACHES("copy_file(text, text)", void, copy_file(text, text, options));
    REACHES("copy_file(text, text)", void, copy_file(text, u"text", options));
    REACHES("copy_file(text, text)", void, fs::copy_file(u"text", u"text", options));
    REACHES("copy_directory(path, path)", void, copy_directory(path, text));
    REACHES("copy_directory(text, text)", void, copy_directory(u"text", text));
    REACHES("create_symlink(path, path)", void, create_symlink(path, path, 1));
    REACHES("create_symlink(path, path)", void, create_symlink(text, path, 1));
    REACHES("create_symlink(text, text)", void, create_symlink(u"text", text, 1));
    REACHES("copy_symlink(path, path)", void, copy_symlink(path, text));
    REACHES("copy_symlink(text, text)", void, copy_symlink(u"text", u"text"));
    REACHES("create_shortcut(path, path)", void, create_shortcut(path, text));
    REACHES("create_shortcut(text, text)", void, create_shortcut(u"text", u"text"));
    REACHES("relative(path, path)", upath, relative(path, text));
    REACHES("relative(text, text)", std::u16string, relative(u"text", text));
    REACHES("equivalent(path, path)", bool, equivalent(path, text));
    REACHES("equivalent(text, text)", bool, equivalent(u"text", u"text"));
}

TEST(FormerCalls, WithABaseOrWithout)
{
    REACHES("absolute(path, path)", upath, absolute(path));
    REACHES("absolute(path, path)", upath, absolute(path, path));
    REACHES("absolute(path, path)", upath, absolute(path, text));
    REACHES("absolute(path, path)", upath, absolute(text, path));
    REACHES("absolute(text, text)", std::u16string, absolute(text));
    REACHES("absolute(text, text)", std::u16string, absolute(u"text"));
    REACHES("absolute(text, text)", std::u16string, absolute(u"text", u"text"));
    REACHES("absolute(text, text)", std::u16string, absolute(u"text", text));
    REACHES("canonical(path, path)", upath, canonical(path));
    REACHES("canonical(path, path)", upath, canonical(path, text));
    REACHES("canonical(text, text)", std::u16string, canonical(u"text"));
    REACHES("canonical(text, text)", std::u16string, canonical(text, u"text"));
}

// Braces have no type: no template takes them.
TEST(FormerCalls, WithBraces)
{
    REACHES("absolute(path, path)", upath, absolute(path, {}));
    REACHES("absolute(path, path)", upath, absolute({}, path));
    REACHES("absolute(text, text)", std::u16string, absolute(u"text", {}));
    REACHES("canonical(path, path)", upath, canonical(path, {}));
    REACHES("rename(path, path)", void, rename(path, {}));
    REACHES("rename(path, path)", void, rename({}, path));
    REACHES("rename(path, path)", void, rename(path, {u"text"}));
    REACHES("rename(text, text)", void, rename(u"text", {}));
    REACHES("rename(text, text)", void, fs::rename(u"text", {u"text", 2}));
    REACHES("copy(path, path)", void, copy(path, {}, options));
    REACHES("copy(path, path)", void, copy(path, path, {}));
    REACHES("copy(text, text)", void, copy(u"text", u"text", {}));
    REACHES("copy_file(text, text)", void, copy_file(u"text", u"text", {}));
    REACHES("create_symlink(path, path)", void, create_symlink(path, {}, 1));
    REACHES("relative(path, path)", upath, relative(path, {}));
    REACHES("equivalent(path, path)", bool, equivalent({}, path));
}

/// Becomes a text, as strings of other libraries do.
struct foreign_string
{
    operator std::u16string() const { return u"foreign"; }
};
/// Becomes a path.
struct foreign_path
{
    operator upath() const { return upath(u"foreign"); }
};

TEST(FormerCalls, WithTypesOfTheUsersOwn)
{
    REACHES("status(text)", file_status, status(foreign_string()));
    REACHES("status(path)", file_status, status(foreign_path()));
    REACHES("rename(text, text)", void, rename(foreign_string(), foreign_string()));
    REACHES("rename(text, text)", void, rename(foreign_string(), u"text"));
    REACHES("rename(path, path)", void, rename(foreign_path(), path));
    REACHES("rename(path, path)", void, rename(foreign_path(), text));
}

// Calls of the standard library's operations that a using-directive doesn't take away from it.
TEST(FormerCalls, OfTheStandardLibrary)
{
    std::filesystem::path const standard("no such name");
    std::error_code code;
    REACHES("", bool, exists(standard, code));
    REACHES("", bool, exists(standard));
    REACHES("", std::filesystem::path, absolute(standard));
    REACHES("", std::filesystem::file_status, status(standard));
}

// The path object's own: what compiles today and stays.
TEST(FormerCalls, OfThePathObject)
{
    std::u16string const t(u"text");
    EXPECT_EQ(upath(u"a").native(), u"a");
    upath const y = {u"a"};
    EXPECT_EQ(y.native(), u"a");
    upath const z{u"a"};
    EXPECT_EQ(z.native(), u"a");
    EXPECT_FALSE(upath(t, 0).form_flag());
    EXPECT_TRUE(upath(t, 1).form_flag());
    EXPECT_FALSE(upath(u"a", false).form_flag());
    upath const implicit = t;
    EXPECT_EQ(implicit.native(), u"text");
    upath assigned(u"x", false);
    assigned = u"literal";
    EXPECT_EQ(assigned.native(), u"literal");
    EXPECT_FALSE(assigned.form_flag());
    assigned = t;
    EXPECT_FALSE(assigned.form_flag());
    EXPECT_TRUE(assigned == t);
    EXPECT_TRUE(t == assigned);
    EXPECT_TRUE(assigned != path);
    EXPECT_TRUE(path < t);
    EXPECT_EQ(assigned.u16string(), u"text");
    static_assert(!std::is_convertible_v<char16_t const *, upath>, "see the constructor");
    static_assert(!std::is_convertible_v<upath, std::u16string>);
    static_assert(std::is_same_v<decltype(path.native()), std::u16string const &>);
    static_assert(std::is_same_v<decltype(path.parent_path()), std::u16string>);
}

#ifdef FL_FILESYSTEM_UTF8_HPP // without the additions the tests above stand alone

std::u16string_view const view = u"view";
std::wstring const wide = L"wide";

TEST(AddedCalls, WithAPathAndALiteral)
{
    REACHES("absolute(path, path)", upath, absolute(path, u"text"));
    REACHES("absolute(path, path)", upath, absolute(u"text", path));
    REACHES("canonical(path, path)", upath, canonical(path, u"text"));
    REACHES("canonical(path, path)", upath, canonical(pointer, path));
    REACHES("relative(path, path)", upath, relative(path, u"text"));
    REACHES("relative(path, path)", upath, relative(u"text", path));
    REACHES("equivalent(path, path)", bool, equivalent(path, u"text"));
    REACHES("equivalent(path, path)", bool, equivalent(u"text", path));
    REACHES("rename(path, path)", void, rename(path, u"text"));
    REACHES("rename(path, path)", void, rename(u"text", path));
    REACHES("rename(path, path)", void, fs::rename(path, pointer));
    REACHES("rename(path, path)", void, rename(foreign_path(), u"text"));
    REACHES("rename(path, path)", void, rename(path, foreign_string()));
    REACHES("copy(path, path)", void, copy(path, u"text"));
    REACHES("copy(path, path)", void, copy(u"text", path));
    REACHES("copy(path, path)", void, copy(path, u"text", options));
    REACHES("copy(path, path)", void, copy(u"text", path, options));
    REACHES("copy(path, path)", void, copy(path, u"text", {}));
    REACHES("copy_file(path, path)", void, copy_file(path, u"text"));
    REACHES("copy_file(path, path)", void, copy_file(u"text", path, options));
    REACHES("copy_directory(path, path)", void, copy_directory(path, u"text"));
    REACHES("copy_directory(path, path)", void, copy_directory(u"text", path));
    REACHES("create_symlink(path, path)", void, create_symlink(path, u"text", 1));
    REACHES("create_symlink(path, path)", void, create_symlink(u"text", path, 1));
    REACHES("copy_symlink(path, path)", void, copy_symlink(path, u"text"));
    REACHES("copy_symlink(path, path)", void, copy_symlink(u"text", path));
    REACHES("create_shortcut(path, path)", void, create_shortcut(path, u"text"));
    REACHES("create_shortcut(path, path)", void, create_shortcut(u"text", path));
}

TEST(AddedCalls, WithTextsOfOtherTypes)
{
    REACHES("status(path)", file_status, status(view));
    REACHES("exists(path)", bool, exists(wide));
    REACHES("exists(path)", bool, fs::exists(std::wstring_view(wide)));
    REACHES("remove(path)", void, fs::remove(wide));
    REACHES("rename(path, path)", void, rename(path, view));
    REACHES("rename(path, path)", void, rename(view, text));
    REACHES("rename(path, path)", void, rename(view, u"text"));
    REACHES("rename(path, path)", void, rename(u"text", wide));
    REACHES("rename(path, path)", void, fs::rename(wide, wide));
    REACHES("absolute(path, path)", upath, absolute(view));
    REACHES("absolute(path, path)", upath, absolute(view, u"text"));
    REACHES("absolute(path, path)", upath, absolute(view, {}));
}

// Copy options bring the standard's functions of that name into the call.
TEST(AddedCalls, WithCopyOptions)
{
    REACHES("copy(text, text)", void, copy(u"text", u"text", options));
    REACHES("copy(text, text)", void, copy(pointer, u"text", options));
    REACHES("copy(path, path)", void, copy(text, view, options));
    REACHES("copy(path, path)", void, copy(view, text, options));
    REACHES("copy(path, path)", void, copy(view, u"text", options));
    REACHES("copy(path, path)", void, copy(u"text", wide, options));
    REACHES("copy(path, path)", void, copy(view, wide, options));
    REACHES("copy(path, path)", void, copy(path, view, options));
    REACHES("copy(path, path)", void, fs::copy(view, view, options));
    REACHES("copy(path, path)", void, fs::copy(wide, wide, options));
    REACHES("copy_file(text, text)", void, copy_file(u"text", u"text", options));
    REACHES("copy_file(path, path)", void, copy_file(view, view, options));
    REACHES("copy_file(path, path)", void, copy_file(u"text", view, options));
    REACHES("copy_file(path, path)", void, fs::copy_file(wide, wide, options));
}

TEST(AddedCalls, WhereOnlyThePathOrOnlyTheTextIsTaken)
{
    REACHES("space(path)", space_info, space(u"C:\\"));
    REACHES("space(path)", space_info, space(view));
    REACHES("status_express_light(text)", file_status_light, status_express_light(path));
    REACHES("status_express_light(text)", file_status_light, status_express_light(view));
}

template <typename First, typename Second>
concept can_rename = requires(First const &first, Second const &second)
{
    fs::rename(first, second);
};

TEST(AddedCalls, TakeNothingThatIsNeitherPathNorText)
{
    static_assert(can_rename<upath, char16_t const *>);
    static_assert(!can_rename<upath, std::nullptr_t>);
    static_assert(!can_rename<upath, int>);
    static_assert(!can_rename<upath, char const *>);
    static_assert(!can_rename<upath, wchar_t const *>);
    static_assert(!can_rename<upath, char16_t>);
}

#endif

} // namespace
} // namespace user
