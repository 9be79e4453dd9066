// Renaming on a disk: what moves, what stays, and which pathname a failure names.

#include <fl/filesystem/operations.hpp>

#include "platform/opened.hpp"
#include "support/names.hpp"

namespace fl::filesystem::tests {
namespace {

using contract::content_of;
using contract::in;
using contract::opened;
using contract::workspace;
using test_support::failure;

/// A folder with `file`, `other`, the read-only `locked`, the empty directory `empty`,
/// and `dir` with `dir\inner` and `dir\sub`.
struct filled_workspace : workspace
{
    filled_workspace()
    {
        make_file(path(u"file"), "content");
        make_file(path(u"other"), "former");
        make_file(path(u"locked"), "kept");
        contract::give_attributes(in(*this, L"locked"), FILE_ATTRIBUTE_READONLY);
        make_file(path(uR"(dir\inner)"), "inner");
        make_directory(path(uR"(dir\sub)"));
        make_directory(path(u"empty"));
    }
    ~filled_workspace()
    {
        contract::set_attributes(in(*this, L"locked"), FILE_ATTRIBUTE_NORMAL); // or it can't go
    }
};

names const all_names = {u"dir", u"empty", u"file", u"locked", u"other"};

struct success_case
{
    char16_t const *from, *to;
    wchar_t const *file; ///< that is at its new place then
    char const *content;
    char const *why;
};

constexpr success_case success_cases[] = {
    {u"file", u"new", L"new", "content", "to a new name"},
    {u"file", uR"(dir\new)", LR"(dir\new)", "content", "into another directory"},
    {uR"(dir\inner)", u"new", L"new", "inner", "out of one"},
    {u"file", u"other", L"other", "content", "over a file"},
    {u"locked", u"new", L"new", "kept", "a read-only file"},
    {u"locked", u"other", L"other", "kept", "a read-only file over another"},
    {u"dir", u"new", LR"(new\inner)", "inner", "a directory with what is in it"},
    {u"dir", uR"(empty\new)", LR"(empty\new\inner)", "inner", "a directory into another"},
    {u"dir", u"file", LR"(file\inner)", "inner", "a directory over a file"},
    {u"dir/", u"new//", LR"(new\inner)", "inner", "no separators at the end"},
    {u"file", u"dir//new", LR"(dir\new)", "content", "in native form"},
    {u"file", uR"(dir\..\new)", L"new", "content", "with dots"},
};

TEST(Rename, Moves)
{
    for (success_case const &row : success_cases) {
        for (bool const by_path : {false, true}) {
            filled_workspace space;
            std::u16string const from = space.path(row.from);
            std::u16string const to = space.path(row.to);
            if (by_path)
                rename(upath(from), upath(to));
            else
                rename(from, to);
            EXPECT_EQ(content_of(in(space, row.file)), row.content) << row.why;
            EXPECT_FALSE(space.exists(upath(from).native())) << row.why;
            contract::set_attributes(in(space, row.file), FILE_ATTRIBUTE_NORMAL);
        }
    }
}

struct failure_case
{
    char16_t const *from, *to;
    failure (*expected)(std::u16string const &);
    bool names_source;
    char const *why;
};

constexpr failure_case failure_cases[] = {
    {u"missing", u"new", not_found, true, "not there"},
    {u"missing", u"other", not_found, true, "nor is the target touched"},
    {uR"(missing\a)", u"new", not_found, true, "nor the directory above"},
    {uR"(file\a)", u"new", not_found, true, "below a file"},
    {u"missing", uR"(missing\new)", not_found, true, "both missing: the source"},
    {u"file", uR"(missing\new)", not_found, false, "into no directory"},
    {u"dir", uR"(missing\new)", not_found, false, "a directory into none"},
    {u"file", u"empty", denied, false, "over a directory"},
    {u"file", u"dir", denied, false, "over one that isn't empty"},
    {u"dir", u"empty", denied, false, "a directory over another"},
    {u"empty", u"dir", denied, false, "over one that isn't empty"},
};

TEST(Rename, FailuresNameOneOfTheTwo)
{
    for (failure_case const &row : failure_cases) {
        filled_workspace space;
        std::u16string const from = space.path(row.from);
        std::u16string const to = space.path(row.to);
        auto const expected = row.expected(row.names_source ? from : to);
        EXPECT_FAILURE(rename(from, to), expected) << row.why;
        EXPECT_FAILURE(rename(upath(from), upath(to)), expected) << row.why;
        EXPECT_EQ(space.entries(space.root()), all_names) << row.why;
        EXPECT_EQ(space.entries(space.path(u"dir")), (names{u"inner", u"sub"})) << row.why;
        EXPECT_EQ(content_of(in(space, L"file")), "content") << row.why;
        EXPECT_EQ(content_of(in(space, L"other")), "former") << row.why;
    }
}

// Windows finds the place, which is no directory: a parameter that it doesn't take. Wine finds
// no place.
TEST(Rename, IntoAFile)
{
    filled_workspace space;
    std::u16string const from = space.path(u"file");
    std::u16string const to = space.path(uR"(other\new)");
    auto const expected = contract::runs_under_wine() ? not_found(to) : system_error(87, from, to);
    EXPECT_FAILURE(rename(from, to), expected);
    EXPECT_EQ(space.entries(space.root()), all_names);
    EXPECT_EQ(content_of(in(space, L"other")), "former");
}

// Under Wine the host decides, and its administrator may replace any file.
TEST(Rename, OntoAReadOnlyFile)
{
    filled_workspace space;
    auto const failed = failure_of([&] { rename(space.path(u"file"), space.path(u"locked")); });
    bool const allowed = contract::runs_under_wine() && !failed;
    EXPECT_EQ(failed, allowed ? std::nullopt : std::optional(denied(space.path(u"locked"))));
    EXPECT_EQ(content_of(in(space, L"locked")), allowed ? "content" : "kept");
    EXPECT_NE(space.exists(space.path(u"file")), allowed);
}

TEST(Rename, OntoItselfChangesNothing)
{
    filled_workspace space;
    for (char16_t const *name : {u"file", u"dir", u"locked"})
        rename(space.path(name), space.path(name));
    EXPECT_EQ(space.entries(space.root()), all_names);
    EXPECT_EQ(content_of(in(space, L"file")), "content");
}

// Wine succeeds and leaves the name as it is.
// The other way round would lose the file. Wine's host sees one file and leaves both names.
TEST(Rename, OneHardLinkOntoAnotherLeavesTheOther)
{
    workspace space;
    space.make_file(space.path(u"one"), "content");
    ASSERT_TRUE(::CreateHardLinkW(in(space, L"two").c_str(), in(space, L"one").c_str(), nullptr));
    rename(space.path(u"one"), space.path(u"two"));
    EXPECT_EQ(space.exists(space.path(u"one")), contract::runs_under_wine());
    EXPECT_EQ(space.content(space.path(u"two")), "content");
}

TEST(Rename, ChangesTheCaseOfAName)
{
    workspace space;
    space.make_file(space.path(u"file"), "content");
    space.make_directory(space.path(u"sub"));
    rename(space.path(u"file"), space.path(u"FiLe"));
    rename(space.path(u"sub"), space.path(u"SUB"));
    EXPECT_EQ(space.entries(space.root()),
              contract::runs_under_wine() ? (names{u"file", u"sub"}) : (names{u"FiLe", u"SUB"}));
    EXPECT_EQ(content_of(in(space, L"file")), "content");
}

TEST(Rename, EmptyArgumentsAreMissingOnes)
{
    filled_workspace space;
    std::u16string const file = space.path(u"file");
    EXPECT_FAILURE(rename(std::u16string(), file), not_found(u""));
    EXPECT_FAILURE(rename(file, std::u16string()), not_found(u""))
        << "the target: the source is there";
    EXPECT_FAILURE(rename(upath(), upath()), not_found(u""));
    EXPECT_EQ(space.entries(space.root()), all_names);
}

TEST(Rename, ReachesTheDiskByAnyNotation)
{
    filled_workspace space;
    space.change_directory(space.root());
    rename(u"file", u"dir/moved");
    EXPECT_EQ(content_of(in(space, LR"(dir\moved)")), "content");
    rename(upath(uR"(\\?\)" + space.path(uR"(dir\moved)")), upath(u"back"));
    EXPECT_EQ(content_of(in(space, L"back")), "content");
    rename(space.root().substr(2) + uR"(\back)", space.root().substr(0, 2) + u"file");
    EXPECT_EQ(content_of(in(space, L"file")), "content");
}

TEST(Rename, NamesTheCallersTextInNativeForm)
{
    filled_workspace space;
    space.change_directory(space.root());
    EXPECT_FAILURE(rename(u"no/such", u"new"), not_found(uR"(no\such)"))
        << "not the absolute text that went to the system";
    std::u16string const overlong = uR"(no\)" + std::u16string(255, u'x');
    EXPECT_FAILURE(rename(u"file", overlong), not_found(overlong)) << "nor its long prefix";
}

TEST(Rename, ANameThatTheSystemRefuses)
{
    filled_workspace space;
    auto const refusal = bad_name();
    EXPECT_FAILURE(rename(space.path(u"file"), space.path(u"a*b")), refusal);
    EXPECT_FAILURE(rename(space.path(u"a*b"), space.path(u"new")), refusal);
    EXPECT_EQ(space.entries(space.root()), all_names);
}

// Code 32, of which nobody knows whom it means: both are kept.
TEST(Rename, AFileInUseKeepsBothPathnames)
{
    filled_workspace space;
    opened const held(in(space, L"file"), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE);
    std::u16string const from = space.path(u"file");
    std::u16string const to = space.path(u"new");
    EXPECT_FAILURE(rename(from, to), system_error(32, from, to));
    EXPECT_EQ(space.entries(space.root()), all_names);
}

TEST(Rename, BeyondEveryLengthLimit)
{
    workspace space;
    space.make_file(space.path(u"file"), "content");
    std::u16string const directory = space.path(std::u16string(100, u'd'));
    space.make_directory(directory);
    std::u16string from = space.path(u"file");
    for (std::size_t const size : {246U, 247U, 248U, 249U, 259U, 260U, 261U, 300U}) {
        std::u16string const to = of_size((directory + u"\\").c_str(), size);
        rename(from, to);
        EXPECT_EQ(content_of(wide(uR"(\\?\)" + to)), "content") << size;
        EXPECT_FALSE(space.exists(from)) << size;
        EXPECT_FAILURE(rename(from, to), not_found(from)) << size;
        from = to;
    }
    std::u16string const deep = directory + std::u16string(u"\\no\\") + std::u16string(200, u'x');
    EXPECT_FAILURE(rename(from, deep), not_found(deep)) << "without the prefix";
    EXPECT_TRUE(space.exists(from));
}

// Under Wine the share is a folder of the same disk, and so directories can go there.
TEST(Rename, ToAnotherVolume)
{
    filled_workspace space;
    NEEDS(space.has_share(), "this system offers the tests no network share");
    std::u16string const to = space.share_root() + uR"(\new)";
    if (!contract::runs_under_wine()) {
        EXPECT_FAILURE(rename(space.path(u"dir"), to), denied(to));
        EXPECT_TRUE(space.exists(space.path(uR"(dir\inner)")));
        EXPECT_FALSE(space.exists(to));
    }
    rename(space.path(u"file"), to);
    EXPECT_EQ(content_of(wide(to)), "content");
    EXPECT_FALSE(space.exists(space.path(u"file")));
    rename(space.path(u"other"), to);
    EXPECT_EQ(content_of(wide(to)), "former") << "over what is there";
    rename(to, space.path(u"back"));
    EXPECT_EQ(content_of(in(space, L"back")), "former");
    EXPECT_FALSE(space.exists(to));
}

} // namespace
} // namespace fl::filesystem::tests
