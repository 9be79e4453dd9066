#include "platform/opened.hpp"

namespace contract {

namespace {

DWORD copy(std::wstring const &from, std::wstring const &to, bool keep = false)
{
    return outcome_of(
        [&] { return ::CopyFileW(from.c_str(), to.c_str(), keep ? TRUE : FALSE) != FALSE; });
}

DWORD link(std::wstring const &from, std::wstring const &to)
{
    return outcome_of(
        [&] { return ::CreateHardLinkW(to.c_str(), from.c_str(), nullptr) != FALSE; });
}

/// A folder with the files `file`, `other`, `locked` and `hidden`, and the directory `dir`.
void fill(workspace &space)
{
    for (char16_t const *name : {u"other", u"locked", u"hidden"})
        space.make_file(space.path(name), "former");
    space.make_file(space.path(u"file"), "content");
    space.make_directory(space.path(u"dir"));
    give_attributes(in(space, L"locked"), FILE_ATTRIBUTE_READONLY);
    give_attributes(in(space, L"hidden"), FILE_ATTRIBUTE_HIDDEN);
}

/// See `text_in`. `keep` is the flag that keeps a target that is there.
struct copy_case
{
    wchar_t const *from;
    wchar_t const *to;
    bool keep;
    DWORD code;
    char const *why;
    DWORD wine = as_windows;
};

constexpr copy_case copy_cases[] = {
    {LR"(@\file)", LR"(@\new)", false, success, "a new name"},
    {LR"(@\file)", LR"(@\new)", true, success, "with the flag, too"},
    {LR"(@\FILE)", LR"(@\dir\new)", true, success, "into a directory"},
    {LR"(?@\file)", LR"(?@\dir\new)", true, success, "as they stand"},
    {LR"(@/file)", LR"(@/new. )", true, success, "in a form that is tidied up"},
    {LR"(@\locked)", LR"(@\new)", true, success, "a read-only file"},
    {LR"(@\file)", LR"(@\other)", false, success, "over a file"},
    {LR"(@\file)", LR"(@\other)", true, ERROR_FILE_EXISTS, "not over a file"},
    {LR"(@\file)", LR"(@\locked)", true, ERROR_FILE_EXISTS, "which is there"},
    {LR"(@\file)", LR"(@\hidden)", false, ERROR_ACCESS_DENIED, "over a hidden file", success},
    {LR"(@\file)", LR"(@\file)", false, ERROR_SHARING_VIOLATION, "onto itself"},
    {LR"(@\file)", LR"(@\FILE)", true, ERROR_FILE_EXISTS, "which is there, in whatever case"},
    {LR"(@\missing)", LR"(@\new)", false, ERROR_FILE_NOT_FOUND, "not there"},
    {LR"(@\missing\a)", LR"(@\new)", false, ERROR_PATH_NOT_FOUND, "nor the directory above"},
    {LR"(@\file\a)", LR"(@\new)", false, ERROR_PATH_NOT_FOUND, "below a file"},
    {LR"(@\dir)", LR"(@\new)", false, ERROR_ACCESS_DENIED, "a directory"},
    {LR"(@\file)", LR"(@\dir)", false, ERROR_ACCESS_DENIED, "over a directory"},
    {LR"(@\file)", LR"(@\dir)", true, ERROR_FILE_EXISTS, "which is there"},
    {LR"(@\file)", LR"(@\missing\new)", false, ERROR_PATH_NOT_FOUND, "into no directory"},
    {LR"(@\file)", LR"(@\other\new)", false, ERROR_PATH_NOT_FOUND, "into a file"},
    {LR"(@\file\)", LR"(@\new)", false, ERROR_INVALID_NAME, "a file is no directory"},
    {LR"(@\file)", LR"(@\new\)", false, ERROR_INVALID_NAME, "nor becomes one"},
    {LR"(@\file)", LR"(@\other\)", false, ERROR_INVALID_NAME, "nor is the target one"},
    {LR"(@\file)", LR"(@\other\)", true, ERROR_INVALID_NAME, "whether it may be replaced or not",
     ERROR_FILE_EXISTS},
    {LR"(@\file)", LR"(@\locked\)", false, ERROR_INVALID_NAME, "or is read-only"},
    {LR"(@\file)", LR"(@\file\)", false, ERROR_INVALID_NAME, "or the source"},
    {L"", LR"(@\new)", false, ERROR_PATH_NOT_FOUND, "no text"},
    {LR"(@\file)", L"", false, ERROR_PATH_NOT_FOUND, "no text for the target"},
    {LR"(@\a*b)", LR"(@\new)", false, ERROR_INVALID_NAME, "no name"},
    {LR"(@\file)", LR"(@\a*b)", false, ERROR_INVALID_NAME, "no name for the target"},
    {LR"(Q:\a)", LR"(@\new)", false, ERROR_PATH_NOT_FOUND, "no such drive", ERROR_FILE_NOT_FOUND},
    {LR"(@\file)", LR"(Q:\new)", false, ERROR_PATH_NOT_FOUND, "nor one to copy to",
     ERROR_FILE_NOT_FOUND},
    {LR"(\\fl-dead-server\share\a)", LR"(@\new)", false, ERROR_BAD_NETPATH, "no such server",
     ERROR_PATH_NOT_FOUND},
};

TEST(Copying, Outcomes)
{
    for (copy_case const &row : copy_cases) {
        workspace space;
        fill(space);
        std::wstring const from = text_in(space, row.from);
        std::wstring const to = text_in(space, row.to);
        DWORD const code = expected(row.code, row.wine);
        EXPECT_EQ(copy(from, to, row.keep), code) << row.why;
        EXPECT_EQ(content_of(in(space, L"file")), "content") << row.why;
        if (code == success) {
            EXPECT_EQ(content_of(to), content_of(from)) << row.why;
        } else {
            EXPECT_EQ(content_of(in(space, L"other")), "former") << row.why;
            EXPECT_FALSE(space.exists(space.path(u"new"))) << row.why;
        }
    }
}

// Under Wine the host decides, and its administrator may do as he likes.
TEST(Copying, StopsAtAReadOnlyTarget)
{
    workspace space;
    fill(space);
    DWORD const code = copy(in(space, L"file"), in(space, L"locked"));
    bool const allowed = runs_under_wine() && code == success;
    EXPECT_EQ(code, allowed ? success : DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(content_of(in(space, L"locked")), allowed ? "content" : "former");
}

// What is new wants to be backed up. Wine 8 leaves the attributes of a target that is there;
// Wine 10 gives any target the attribute that the host has, too.
TEST(Copying, KeepsAttributesAndTheTimeOfWriting)
{
    constexpr DWORD kept = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN;
    for (bool const is_there : {false, true}) {
        workspace space;
        fill(space);
        std::wstring const to = in(space, is_there ? L"other" : L"new");
        set_last_write(in(space, L"file"), past_moment());
        give_attributes(in(space, L"file"), kept);
        ASSERT_EQ(copy(in(space, L"file"), to), success);
        BY_HANDLE_FILE_INFORMATION const information = information_of(to);
        EXPECT_TRUE(same(information.ftLastWriteTime, past_moment()));
        wine_does<DWORD> const wine = {is_there ? FILE_ATTRIBUTE_ARCHIVE : as_windows,
                                       FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE};
        EXPECT_EQ(information.dwFileAttributes, expected(kept | FILE_ATTRIBUTE_ARCHIVE, wine));
    }
}

TEST(Copying, TakesContentOfAnySize)
{
    for (std::size_t const size : {0U, 1U, 65536U, 3000001U}) {
        workspace space;
        std::string content(size, 'x');
        for (std::size_t at = 0; at < size; at += 4099)
            content[at] = static_cast<char>('a' + at % 26);
        space.make_file(space.path(u"from"), content);
        space.make_file(space.path(u"to"), std::string(100000, 'y'));
        ASSERT_EQ(copy(in(space, L"from"), in(space, L"to")), success) << size;
        EXPECT_EQ(information_of(in(space, L"to")).nFileSizeLow, size);
        std::string copied(size + 1, '\0');
        DWORD read = 0;
        opened const file(in(space, L"to"), GENERIC_READ);
        ASSERT_TRUE(
            ::ReadFile(file.get(), copied.data(), static_cast<DWORD>(size + 1), &read, nullptr));
        copied.resize(read);
        EXPECT_TRUE(copied == content) << size;
    }
}

struct held_case
{
    wchar_t const *held;
    DWORD access;
    DWORD share;
    DWORD code;
    char const *why;
    DWORD wine = as_windows;
};

constexpr held_case held_cases[] = {
    {L"file", GENERIC_READ, FILE_SHARE_READ, success, "a source that others may read"},
    {L"file", GENERIC_READ, 0, ERROR_SHARING_VIOLATION, "one that they may not"},
    {L"file", GENERIC_WRITE, share_all, success, "one that somebody writes"},
    {L"other", GENERIC_READ, FILE_SHARE_READ, ERROR_SHARING_VIOLATION, "a target that is read"},
    {L"other", GENERIC_READ, share_all, success, "one that others may write"},
    {L"other", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_WRITE, success,
     "one that others may only write"},
    {L"other", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, ERROR_SHARING_VIOLATION,
     "or only read"},
    {L"file", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_WRITE, ERROR_SHARING_VIOLATION,
     "a source that others may only write"},
    {L"file", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, success, "or only read"},
};

TEST(Copying, MindsWhatIsOpen)
{
    for (held_case const &row : held_cases) {
        workspace space;
        fill(space);
        opened const held(in(space, row.held), row.access, row.share);
        ASSERT_EQ(held.code, success) << row.why;
        EXPECT_EQ(copy(in(space, L"file"), in(space, L"other")), expected(row.code, row.wine))
            << row.why;
    }
}

/// See `text_in`.
struct link_case
{
    wchar_t const *from;
    wchar_t const *to;
    DWORD code;
    char const *why;
    DWORD wine = as_windows;
};

constexpr link_case link_cases[] = {
    {LR"(@\file)", LR"(@\new)", success, "a new name"},
    {LR"(?@\file)", LR"(?@\dir\new)", success, "as they stand"},
    {LR"(@\locked)", LR"(@\new)", success, "a read-only file"},
    {LR"(@\file)", LR"(@\other)", ERROR_ALREADY_EXISTS, "the name is there"},
    {LR"(@\file)", LR"(@\FILE)", ERROR_ALREADY_EXISTS, "even if it is the same file"},
    {LR"(@\file)", LR"(@\dir)", ERROR_ALREADY_EXISTS, "or a directory"},
    {LR"(@\missing)", LR"(@\new)", ERROR_FILE_NOT_FOUND, "not there"},
    {LR"(@\missing\a)", LR"(@\new)", ERROR_PATH_NOT_FOUND, "nor the directory above"},
    {LR"(@\file\a)", LR"(@\new)", ERROR_PATH_NOT_FOUND, "below a file"},
    {LR"(@\dir)", LR"(@\new)", ERROR_ACCESS_DENIED, "a directory"},
    {LR"(@\dir)", LR"(@\missing\new)", ERROR_PATH_NOT_FOUND, "the new name is looked for first"},
    {LR"(@\dir)", LR"(@\other)", ERROR_ACCESS_DENIED, "but not what has it"},
    {LR"(@\dir)", LR"(@\a*b)", ERROR_INVALID_NAME, "and whether it is one"},
    {LR"(@\file)", LR"(@\missing\new)", ERROR_PATH_NOT_FOUND, "into no directory"},
    {LR"(@\file)", LR"(@\other\new)", ERROR_INVALID_PARAMETER, "into a file", ERROR_PATH_NOT_FOUND},
    {LR"(@\file\)", LR"(@\new)", ERROR_INVALID_NAME, "a file is no directory"},
    {L"", LR"(@\new)", ERROR_PATH_NOT_FOUND, "no text"},
    {LR"(@\file)", L"", ERROR_PATH_NOT_FOUND, "no text for the name"},
    {LR"(@\missing)", L" ", ERROR_PATH_NOT_FOUND, "which is looked at first"},
    {LR"(@\a*b)", LR"(@\new)", ERROR_INVALID_NAME, "no name"},
    {LR"(@\file)", LR"(@\a*b)", ERROR_INVALID_NAME, "no new name"},
    {LR"(@\file)", LR"(Q:\new)", ERROR_PATH_NOT_FOUND, "no such drive", ERROR_FILE_NOT_FOUND},
};

TEST(HardLinks, Outcomes)
{
    for (link_case const &row : link_cases) {
        workspace space;
        fill(space);
        DWORD const code = expected(row.code, row.wine);
        EXPECT_EQ(link(text_in(space, row.from), text_in(space, row.to)), code) << row.why;
        EXPECT_EQ(content_of(in(space, L"other")), "former") << row.why;
    }
}

TEST(HardLinks, AreNamesOfOneFile)
{
    workspace space;
    space.make_file(space.path(u"one"), "content");
    std::wstring const one = in(space, L"one");
    std::wstring const two = in(space, L"two");
    ASSERT_EQ(link(one, two), success);
    EXPECT_EQ(information_of(one).nNumberOfLinks, 2U);
    EXPECT_EQ(information_of(two).nNumberOfLinks, 2U);
    EXPECT_EQ(information_of(two).nFileIndexLow, information_of(one).nFileIndexLow);
    give_attributes(one, FILE_ATTRIBUTE_READONLY);
    EXPECT_NE(attributes_of(two) & FILE_ATTRIBUTE_READONLY, 0U) << "attributes are the file's";
    give_attributes(two, FILE_ATTRIBUTE_NORMAL);
    {
        opened const file(two, GENERIC_WRITE);
        DWORD written = 0;
        ASSERT_TRUE(::WriteFile(file.get(), "CON", 3, &written, nullptr));
    }
    EXPECT_EQ(content_of(one), "CONtent");
    ASSERT_TRUE(::DeleteFileW(one.c_str()));
    EXPECT_EQ(content_of(two), "CONtent") << "until the last name goes";
    EXPECT_EQ(information_of(two).nNumberOfLinks, 1U);
}

TEST(HardLinks, StayOnOneVolume)
{
    workspace space;
    if (!space.has_share())
        GTEST_SKIP() << "there is no share";
    space.make_file(space.path(u"file"), "content");
    // under Wine the share is a folder of the same disk
    EXPECT_EQ(link(in(space, L"file"), wide(space.share_root()) + LR"(\new)"),
              expected(ERROR_NOT_SAME_DEVICE, success));
}

} // namespace

} // namespace contract
