// Making and copying symbolic links where the system has them. Each link is looked at by
// its reparse data.

#include <fl/filesystem/operations.hpp>

#include "platform/links.hpp"
#include "support/in_workspace.hpp"

namespace fl::filesystem::tests {
namespace {

using contract::in;
using contract::workspace;

constexpr unsigned int directory = file_status::directory_file;
constexpr unsigned int file = file_status::regular_file;
constexpr unsigned int by_itself = file_status::file_type_auto;

auto const no_link = invalid_argument("The file or directory is not a reparse point.");

/// The text that a link shows to people.
std::u16string text_of(std::u16string const &link)
{
    return contract::text_at(contract::reparse_data(wide(link)), 12, 20);
}

bool is_directory_link(std::u16string const &link)
{
    DWORD const attributes = contract::attributes_of(wide(link));
    EXPECT_NE(attributes, INVALID_FILE_ATTRIBUTES);
    EXPECT_NE(attributes & FILE_ATTRIBUTE_REPARSE_POINT, 0U);
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

/// With `file` and `dir\sub`.
class MakingSymlinks : public in_workspace
{
protected:
    void SetUp() override
    {
        NEEDS(contract::has_symlinks(), "symbolic links can't be made here");
        make({{u"file", "content"}, uR"(dir\sub\)"});
    }
};

struct type_case
{
    char16_t const *target;
    unsigned int type;
    bool is_directory;
    char const *why;
};

constexpr type_case type_cases[] = {
    {u"dir", by_itself, true, "a directory"},
    {u"file", by_itself, false, "a file"},
    {u"missing", by_itself, false, "a missing target"},
    {uR"(dir\missing)", by_itself, false, "a missing target"},
    {u"dir", directory, true, "as the word says"},
    {u"file", directory, true, "whatever the target is"},
    {u"missing", directory, true, "whether it is there or not"},
    {u"dir", file, false, "the word decides, and not the target"},
    {u"dir", 0, false, "no type at all"},
    {u"dir", 0x4001, false, "no type at all"},
    {u"dir", 0xA000, false, "a symbolic link"},
    {u"dir", 0xE000, false, "a junction"},
    {u"dir", 0xFFFF0000, false, "a missing name"},
    {u"dir", 0xFFFFFFFF, false, "all bits"},
};

TEST_F(MakingSymlinks, Types)
{
    for (type_case const &row : type_cases) {
        for (bool const by_path : {false, true}) {
            std::u16string const link = at(u"link");
            by_path ? create_symlink(upath(row.target), upath(link), row.type)
                    : create_symlink(std::u16string(row.target), link, row.type);
            EXPECT_EQ(is_directory_link(link), row.is_directory) << row.why;
            EXPECT_EQ(text_of(link), row.target) << row.why;
            EXPECT_TRUE(row.is_directory ? ::RemoveDirectoryW(wide(link).c_str())
                                         : ::DeleteFileW(wide(link).c_str()));
        }
    }
}

// `status` is asked about the text as it stands, and the current directory is where it
// looks, although the link will be read from elsewhere.
TEST_F(MakingSymlinks, AnAutomaticTypeIsThatOfTheCurrentDirectory)
{
    make_directory(u"other");
    create_symlink(u"dir", at(uR"(other\a)"), by_itself);
    EXPECT_TRUE(is_directory_link(at(uR"(other\a)"))) << "though it leads nowhere there";
    create_symlink(u"sub", at(uR"(dir\b)"), by_itself);
    EXPECT_FALSE(is_directory_link(at(uR"(dir\b)"))) << "though it leads to a directory";
}

TEST_F(MakingSymlinks, AnAutomaticTypeFollowsLinks)
{
    create_symlink(u"dir", at(u"first"), directory);
    create_symlink(u"first", at(u"second"), by_itself);
    EXPECT_TRUE(is_directory_link(at(u"second")));
    EXPECT_EQ(text_of(at(u"second")), u"first");
}

TEST_F(MakingSymlinks, LinksLeadToTheirTargets)
{
    create_symlink(at(u"dir"), at(u"absolute"), by_itself);
    EXPECT_TRUE(work.is_directory(at(uR"(absolute\sub)")));
    EXPECT_EQ(text_of(at(u"absolute")), at(u"dir"));
    create_symlink(uR"(..\file)", at(uR"(dir\relative)"), file);
    EXPECT_EQ(contract::content_of(in(work, LR"(dir\relative)")), "content");
}

constexpr text_row<char16_t> text_cases[] = {
    {u"a//b/c", uR"(a\b\c)", "runs and slashes"},
    {uR"(a\\b\)", uR"(a\b)", "nothing at the end"},
    {u"./a/../b", uR"(.\a\..\b)", "dots stay"},
    {u"..", u"..", "dots alone"},
    {uR"(\a/b)", uR"(\a\b)", "rooted"},
    {u"C:/a//b", uR"(C:\a\b)", "a drive"},
    {u"//server//share//x", uR"(\\server\share\x)", "a server"},
    {uR"(\\?\C:\a)", uR"(C:\a)", "native form has no prefix"},
    {u"a b. ", u"a b.", "a full stop at the end stays, a blank doesn't"},
};

TEST_F(MakingSymlinks, TextsAreInNativeForm)
{
    auto const text_made_of = [&](auto const &text, auto const &link) {
        create_symlink(text, link, file);
        std::u16string const made = text_of(at(u"link"));
        ::DeleteFileW(in(work, L"link").c_str());
        return made;
    };
    expect_rows(text_cases,
                [&](auto text) { return text_made_of(std::u16string(text), at(u"link")); });
    expect_rows(text_cases,
                [&](auto text) { return text_made_of(upath(text), upath(at(u"link"))); });
}

TEST_F(MakingSymlinks, FailuresNameNothing)
{
    for (char16_t const *taken : {u"file", u"dir"}) {
        auto const make = [&](unsigned int type) {
            return failure_of([&] { create_symlink(u"x", at(taken), type); });
        };
        EXPECT_EQ(make(file), file_exists(u""));
        EXPECT_EQ(make(directory), file_exists(u""));
    }
    EXPECT_FAILURE(create_symlink(u"x", at(uR"(no\link)"), file), not_found(u""));
    EXPECT_FAILURE(create_symlink(u"x", at(u"a*b"), file), bad_name());
    EXPECT_EQ(contract::content_of(in(work, L"file")), "content");
}

TEST_F(MakingSymlinks, LinksThatAreThereStay)
{
    create_symlink(u"missing", at(u"link"), file);
    EXPECT_FAILURE(create_symlink(u"x", at(u"link"), file), file_exists(u""))
        << "also one that leads nowhere";
    EXPECT_EQ(text_of(at(u"link")), u"missing");
}

TEST_F(MakingSymlinks, BothNamesCanBeRelative)
{
    create_symlink(u"file", u"link", by_itself);
    EXPECT_EQ(text_of(at(u"link")), u"file");
    EXPECT_EQ(contract::content_of(in(work, L"link")), "content");
}

/// Both kinds and both sorts of text.
TEST_F(MakingSymlinks, CopiesAreOfTheSameKindAndText)
{
    std::pair<std::u16string, unsigned int> const cases[] = {
        {u"file", file},           {u"dir", directory},
        {uR"(..\missing)", file},  {uR"(..\missing)", directory},
        {at(u"file"), file},       {at(u"dir"), directory},
        {uR"(\rooted)", directory}};
    char16_t number = u'0';
    for (auto const &[target, type] : cases) {
        std::u16string const link = at(u"link") + number;
        create_symlink(target, link, type);
        for (bool const by_path : {false, true}) {
            std::u16string const copy = at(by_path ? u"dir\\a" : u"dir\\b") + number;
            by_path ? copy_symlink(upath(link), upath(copy)) : copy_symlink(link, copy);
            EXPECT_EQ(text_of(copy), target);
            EXPECT_EQ(is_directory_link(copy), type == directory);
        }
        ++number;
    }
}

TEST_F(MakingSymlinks, CopiesGoNowhereElse)
{
    create_symlink(u"file", at(u"link"), file);
    EXPECT_FAILURE(copy_symlink(at(u"link"), at(u"file")), file_exists(u""));
    EXPECT_FAILURE(copy_symlink(at(u"link"), at(uR"(no\x)")), not_found(u""));
    EXPECT_EQ(contract::content_of(in(work, L"file")), "content");
}

TEST_F(MakingSymlinks, JunctionsAreNotCopied)
{
    NEEDS(contract::has_reparse_data(), "no reparse data can be set here");
    make_directory(u"junction");
    ASSERT_EQ(contract::set_reparse_data(in(work, L"junction"),
                                         contract::junction_data(in(work, L"dir"))),
              contract::success);
    EXPECT_FAILURE(copy_symlink(at(u"junction"), at(u"new")), system_error(4393, u""));
    EXPECT_FALSE(work.exists(at(u"new")));
}

TEST_IN_WORKSPACE(CopySymlink, OfWhatIsNoLink)
{
    make({{u"file", "content"}, u"dir\\"});
    failing_row<char16_t const *> const cases[] = {
        {u"file", no_link, "a file"},
        {u"dir", no_link, "a directory"},
        {u"missing", not_found(u""), "missing"},
        {uR"(missing\x)", not_found(u""), "in no directory"},
        {uR"(file\x)", not_found(u""), "below a file"},
    };
    expect_failures(cases, [&](auto from) { copy_symlink(at(from), at(u"new")); });
    expect_failures(cases, [&](auto from) { copy_symlink(upath(at(from)), upath(at(u"new"))); });
    EXPECT_FALSE(work.exists(at(u"new")));
}

} // namespace
} // namespace fl::filesystem::tests
