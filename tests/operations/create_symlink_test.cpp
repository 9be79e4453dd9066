// Making and copying symbolic links where the system has them. Each link is looked at by
// its reparse data.

#include <fl/filesystem/operations.hpp>

#include "platform/links.hpp"
#include "support/names.hpp"

namespace fl::filesystem {
namespace {

using namespace test_support;
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

/// A folder that is the current directory, with `file` and `dir\sub`.
class MakingSymlinks : public testing::Test
{
protected:
    void SetUp() override
    {
        NEEDS(contract::has_symlinks(), "symbolic links can't be made here");
        space.make_file(space.path(u"file"), "content");
        space.make_directory(space.path(uR"(dir\sub)"));
        space.change_directory(space.root());
    }

    workspace space;
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
            std::u16string const link = space.path(u"link");
            if (by_path)
                create_symlink(upath(row.target), upath(link), row.type);
            else
                create_symlink(std::u16string(row.target), link, row.type);
            EXPECT_EQ(is_directory_link(link), row.is_directory) << row.why;
            EXPECT_EQ(text_of(link), row.target) << row.why;
            if (row.is_directory)
                ::RemoveDirectoryW(wide(link).c_str());
            else
                ::DeleteFileW(wide(link).c_str());
        }
    }
}

// `status` is asked about the text as it stands, and the current directory is where it
// looks, although the link will be read from elsewhere.
TEST_F(MakingSymlinks, AnAutomaticTypeIsThatOfTheCurrentDirectory)
{
    space.make_directory(space.path(u"other"));
    create_symlink(u"dir", space.path(uR"(other\a)"), by_itself);
    EXPECT_TRUE(is_directory_link(space.path(uR"(other\a)"))) << "though it leads nowhere there";
    create_symlink(u"sub", space.path(uR"(dir\b)"), by_itself);
    EXPECT_FALSE(is_directory_link(space.path(uR"(dir\b)"))) << "though it leads to a directory";
}

TEST_F(MakingSymlinks, AnAutomaticTypeFollowsLinks)
{
    create_symlink(u"dir", space.path(u"first"), directory);
    create_symlink(u"first", space.path(u"second"), by_itself);
    EXPECT_TRUE(is_directory_link(space.path(u"second")));
    EXPECT_EQ(text_of(space.path(u"second")), u"first");
}

TEST_F(MakingSymlinks, LinksLeadToTheirTargets)
{
    create_symlink(space.path(u"dir"), space.path(u"absolute"), by_itself);
    EXPECT_TRUE(space.is_directory(space.path(uR"(absolute\sub)")));
    EXPECT_EQ(text_of(space.path(u"absolute")), space.path(u"dir"));
    create_symlink(uR"(..\file)", space.path(uR"(dir\relative)"), file);
    EXPECT_EQ(contract::content_of(in(space, LR"(dir\relative)")), "content");
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
    for (auto const &row : text_cases) {
        for (bool const by_path : {false, true}) {
            if (by_path)
                create_symlink(upath(row.text), upath(space.path(u"link")), file);
            else
                create_symlink(std::u16string(row.text), space.path(u"link"), file);
            EXPECT_EQ(text_of(space.path(u"link")), row.expected) << row.why;
            ::DeleteFileW(in(space, L"link").c_str());
        }
    }
}

TEST_F(MakingSymlinks, FailuresNameNothing)
{
    for (char16_t const *taken : {u"file", u"dir"}) {
        auto const make = [&](unsigned int type) {
            return failure_of([&] { create_symlink(u"x", space.path(taken), type); });
        };
        EXPECT_EQ(make(file), file_exists(u""));
        EXPECT_EQ(make(directory), file_exists(u""));
    }
    EXPECT_FAILURE(create_symlink(u"x", space.path(uR"(no\link)"), file), not_found(u""));
    EXPECT_FAILURE(create_symlink(u"x", space.path(u"a*b"), file), bad_name());
    EXPECT_EQ(contract::content_of(in(space, L"file")), "content");
}

TEST_F(MakingSymlinks, LinksThatAreThereStay)
{
    create_symlink(u"missing", space.path(u"link"), file);
    EXPECT_FAILURE(create_symlink(u"x", space.path(u"link"), file), file_exists(u""))
        << "also one that leads nowhere";
    EXPECT_EQ(text_of(space.path(u"link")), u"missing");
}

TEST_F(MakingSymlinks, BothNamesCanBeRelative)
{
    create_symlink(u"file", u"link", by_itself);
    EXPECT_EQ(text_of(space.path(u"link")), u"file");
    EXPECT_EQ(contract::content_of(in(space, L"link")), "content");
}

/// Both kinds and both sorts of text.
TEST_F(MakingSymlinks, CopiesAreOfTheSameKindAndText)
{
    struct
    {
        std::u16string target;
        unsigned int type;
    } const cases[] = {{u"file", file},
                       {u"dir", directory},
                       {uR"(..\missing)", file},
                       {uR"(..\missing)", directory},
                       {space.path(u"file"), file},
                       {space.path(u"dir"), directory},
                       {uR"(\rooted)", directory}};
    char16_t number = u'0';
    for (auto const &row : cases) {
        std::u16string const link = space.path(u"link") + number;
        create_symlink(row.target, link, row.type);
        for (bool const by_path : {false, true}) {
            std::u16string const copy = space.path(by_path ? u"dir\\a" : u"dir\\b") + number;
            by_path ? copy_symlink(upath(link), upath(copy)) : copy_symlink(link, copy);
            EXPECT_EQ(text_of(copy), row.target);
            EXPECT_EQ(is_directory_link(copy), row.type == directory);
        }
        ++number;
    }
}

TEST_F(MakingSymlinks, CopiesGoNowhereElse)
{
    create_symlink(u"file", space.path(u"link"), file);
    EXPECT_FAILURE(copy_symlink(space.path(u"link"), space.path(u"file")), file_exists(u""));
    EXPECT_FAILURE(copy_symlink(space.path(u"link"), space.path(uR"(no\x)")), not_found(u""));
    EXPECT_EQ(contract::content_of(in(space, L"file")), "content");
}

TEST_F(MakingSymlinks, JunctionsAreNotCopied)
{
    NEEDS(contract::has_reparse_data(), "no reparse data can be set here");
    space.make_directory(space.path(u"junction"));
    ASSERT_EQ(contract::set_reparse_data(in(space, L"junction"),
                                         contract::junction_data(in(space, L"dir"))),
              contract::success);
    EXPECT_FAILURE(copy_symlink(space.path(u"junction"), space.path(u"new")),
                   system_error(4393, u""));
    EXPECT_FALSE(space.exists(space.path(u"new")));
}

struct refused_case
{
    char16_t const *existing;
    test_support::failure expected;
    char const *why;
};

TEST(CopySymlink, OfWhatIsNoLink)
{
    workspace space;
    space.make_file(space.path(u"file"), "content");
    space.make_directory(space.path(u"dir"));
    refused_case const cases[] = {
        {u"file", no_link, "a file"},
        {u"dir", no_link, "a directory"},
        {u"missing", not_found(u""), "missing"},
        {uR"(missing\x)", not_found(u""), "in no directory"},
        {uR"(file\x)", not_found(u""), "below a file"},
    };
    for (refused_case const &row : cases) {
        std::u16string const from = space.path(row.existing);
        std::u16string const to = space.path(u"new");
        EXPECT_FAILURE(copy_symlink(from, to), row.expected) << row.why;
        EXPECT_FAILURE(copy_symlink(upath(from), upath(to)), row.expected) << row.why;
        EXPECT_FALSE(space.exists(to)) << row.why;
    }
}

} // namespace
} // namespace fl::filesystem
