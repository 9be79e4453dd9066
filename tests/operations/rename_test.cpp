// Renaming on a disk: what moves, what stays, and which pathname a failure names.

#include <fl/filesystem/operations.hpp>

#include "platform/opened.hpp"
#include "support/in_workspace.hpp"

namespace fl::filesystem::tests {
namespace {

using contract::content_of;
using contract::in;
using contract::opened;
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

using Rename = in_some_workspace<filled_workspace>;

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

TEST_F(Rename, Moves)
{
    for (success_case const &row : success_cases) {
        for (bool const by_path : {false, true}) {
            filled_workspace fresh;
            std::u16string const from = fresh.path(row.from);
            std::u16string const to = fresh.path(row.to);
            by_path ? rename(upath(from), upath(to)) : rename(from, to);
            EXPECT_EQ(content_of(in(fresh, row.file)), row.content) << row.why;
            EXPECT_FALSE(fresh.exists(upath(from).native())) << row.why;
            contract::set_attributes(in(fresh, row.file), FILE_ATTRIBUTE_NORMAL);
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

TEST_F(Rename, FailuresNameOneOfTheTwo)
{
    for (failure_case const &row : failure_cases) {
        filled_workspace fresh;
        std::u16string const from = fresh.path(row.from);
        std::u16string const to = fresh.path(row.to);
        auto const expected = row.expected(row.names_source ? from : to);
        EXPECT_FAILURE(rename(from, to), expected) << row.why;
        EXPECT_FAILURE(rename(upath(from), upath(to)), expected) << row.why;
        EXPECT_EQ(fresh.entries(fresh.root()), all_names) << row.why;
        EXPECT_EQ(fresh.entries(fresh.path(u"dir")), (names{u"inner", u"sub"})) << row.why;
        EXPECT_EQ(content_of(in(fresh, L"file")), "content") << row.why;
        EXPECT_EQ(content_of(in(fresh, L"other")), "former") << row.why;
    }
}

// Windows finds the place, which is no directory: a parameter that it doesn't take. Wine finds
// no place.
TEST_F(Rename, IntoAFile)
{
    std::u16string const from = at(u"file");
    std::u16string const to = at(uR"(other\new)");
    auto const expected = contract::runs_under_wine() ? not_found(to) : system_error(87, from, to);
    EXPECT_FAILURE(rename(from, to), expected);
    EXPECT_EQ(entries(), all_names);
    EXPECT_EQ(content_of(in(work, L"other")), "former");
}

// Under Wine the host decides, and its administrator may replace any file.
TEST_F(Rename, OntoAReadOnlyFile)
{
    auto const failed = failure_of([&] { rename(at(u"file"), at(u"locked")); });
    bool const allowed = contract::runs_under_wine() && !failed;
    EXPECT_EQ(failed, allowed ? std::nullopt : std::optional(denied(at(u"locked"))));
    EXPECT_EQ(content_of(in(work, L"locked")), allowed ? "content" : "kept");
    EXPECT_NE(work.exists(at(u"file")), allowed);
}

TEST_F(Rename, OntoItselfChangesNothing)
{
    for (char16_t const *name : {u"file", u"dir", u"locked"})
        rename(at(name), at(name));
    EXPECT_EQ(entries(), all_names);
    EXPECT_EQ(content_of(in(work, L"file")), "content");
}

// Wine succeeds and leaves the name as it is.
// The other way round would lose the file. Wine's host sees one file and leaves both names.
TEST_F(Rename, OneHardLinkOntoAnotherLeavesTheOther)
{
    make_file(u"one", "content");
    ASSERT_TRUE(::CreateHardLinkW(in(work, L"two").c_str(), in(work, L"one").c_str(), nullptr));
    rename(at(u"one"), at(u"two"));
    EXPECT_EQ(work.exists(at(u"one")), contract::runs_under_wine());
    EXPECT_EQ(work.content(at(u"two")), "content");
}

TEST_F(Rename, ChangesTheCaseOfAName)
{
    make({{uR"(case\file)", "content"}, uR"(case\sub\)"});
    rename(at(uR"(case\file)"), at(uR"(case\FiLe)"));
    rename(at(uR"(case\sub)"), at(uR"(case\SUB)"));
    EXPECT_EQ(entries(u"case"),
              contract::runs_under_wine() ? (names{u"file", u"sub"}) : (names{u"FiLe", u"SUB"}));
    EXPECT_EQ(content_of(in(work, LR"(case\file)")), "content");
}

TEST_F(Rename, EmptyArgumentsAreMissingOnes)
{
    std::u16string const file = at(u"file");
    EXPECT_FAILURE(rename(std::u16string(), file), not_found(u""));
    EXPECT_FAILURE(rename(file, std::u16string()), not_found(u""))
        << "the target: the source is there";
    EXPECT_FAILURE(rename(upath(), upath()), not_found(u""));
    EXPECT_EQ(entries(), all_names);
}

TEST_F(Rename, ReachesTheDiskByAnyNotation)
{
    rename(u"file", u"dir/moved");
    EXPECT_EQ(content_of(in(work, LR"(dir\moved)")), "content");
    rename(upath(uR"(\\?\)" + at(uR"(dir\moved)")), upath(u"back"));
    EXPECT_EQ(content_of(in(work, L"back")), "content");
    rename(work.root().substr(2) + uR"(\back)", work.root().substr(0, 2) + u"file");
    EXPECT_EQ(content_of(in(work, L"file")), "content");
}

TEST_F(Rename, NamesTheCallersTextInNativeForm)
{
    EXPECT_FAILURE(rename(u"no/such", u"new"), not_found(uR"(no\such)"))
        << "not the absolute text that went to the system";
    std::u16string const overlong = uR"(no\)" + std::u16string(255, u'x');
    EXPECT_FAILURE(rename(u"file", overlong), not_found(overlong)) << "nor its long prefix";
}

TEST_F(Rename, ANameThatTheSystemRefuses)
{
    auto const refusal = bad_name();
    EXPECT_FAILURE(rename(at(u"file"), at(u"a*b")), refusal);
    EXPECT_FAILURE(rename(at(u"a*b"), at(u"new")), refusal);
    EXPECT_EQ(entries(), all_names);
}

// Code 32, of which nobody knows whom it means: both are kept.
TEST_F(Rename, AFileInUseKeepsBothPathnames)
{
    opened const held(in(work, L"file"), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE);
    std::u16string const from = at(u"file");
    std::u16string const to = at(u"new");
    EXPECT_FAILURE(rename(from, to), system_error(32, from, to));
    EXPECT_EQ(entries(), all_names);
}

TEST_F(Rename, BeyondEveryLengthLimit)
{
    std::u16string const directory = make_directory(std::u16string(100, u'd'));
    std::u16string from = at(u"file");
    for (std::size_t const size : {246U, 247U, 248U, 249U, 259U, 260U, 261U, 300U}) {
        std::u16string const to = of_size((directory + u"\\").c_str(), size);
        rename(from, to);
        EXPECT_EQ(content_of(wide(uR"(\\?\)" + to)), "content") << size;
        EXPECT_FALSE(work.exists(from)) << size;
        EXPECT_FAILURE(rename(from, to), not_found(from)) << size;
        from = to;
    }
    std::u16string const deep = directory + std::u16string(u"\\no\\") + std::u16string(200, u'x');
    EXPECT_FAILURE(rename(from, deep), not_found(deep)) << "without the prefix";
    EXPECT_TRUE(work.exists(from));
}

// Under Wine the share is a folder of the same disk, and so directories can go there.
TEST_F(Rename, ToAnotherVolume)
{
    NEEDS(work.has_share(), "this system offers the tests no network share");
    std::u16string const to = work.share_root() + uR"(\new)";
    if (!contract::runs_under_wine()) {
        EXPECT_FAILURE(rename(at(u"dir"), to), denied(to));
        EXPECT_TRUE(work.exists(at(uR"(dir\inner)")));
        EXPECT_FALSE(work.exists(to));
    }
    rename(at(u"file"), to);
    EXPECT_EQ(content_of(wide(to)), "content");
    EXPECT_FALSE(work.exists(at(u"file")));
    rename(at(u"other"), to);
    EXPECT_EQ(content_of(wide(to)), "former") << "over what is there";
    rename(to, at(u"back"));
    EXPECT_EQ(content_of(in(work, L"back")), "former");
    EXPECT_FALSE(work.exists(to));
}

} // namespace
} // namespace fl::filesystem::tests
