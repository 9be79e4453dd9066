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

/// To be copied, or linked.
constexpr call_row source_cases[] = {
    {LR"(@\readonly)", success, "a read-only file"},
    {LR"(@\dir)", ERROR_ACCESS_DENIED, "a directory"},
    {LR"(@\file\)", ERROR_INVALID_NAME, "a file is no directory"},
};

constexpr call_row target_cases[] = {
    {LR"(@\other)", success, "over a file"},
    {LR"(@\hidden)", ERROR_ACCESS_DENIED, "over a hidden file", success},
    {LR"(@\file)", ERROR_SHARING_VIOLATION, "onto itself"},
    {LR"(@\dir)", ERROR_ACCESS_DENIED, "over a directory"},
    {LR"(@\other\new)", ERROR_PATH_NOT_FOUND, "into a file"},
};

DWORD copy_and_look(workspace const &space, std::wstring const &from, std::wstring const &to,
                    bool keep)
{
    DWORD const code = copy(from, to, keep);
    EXPECT_EQ(content_of(in(space, L"file")), "content") << from << L" to " << to;
    if (code == success) {
        EXPECT_EQ(content_of(to), content_of(from)) << from << L" to " << to;
    } else {
        EXPECT_EQ(content_of(in(space, L"other")), "former") << from << L" to " << to;
        EXPECT_FALSE(space.exists(space.path(u"new"))) << from << L" to " << to;
    }
    return code;
}

TEST(Copying, Outcomes)
{
    for (bool const keep : {false, true}) {
        auto const copy_it = [&](workspace const &space, std::wstring const &from) {
            return copy_and_look(space, from, in(space, L"new"), keep);
        };
        auto const copy_to_it = [&](workspace const &space, std::wstring const &to) {
            return copy_and_look(space, in(space, L"file"), to, keep);
        };
        expect_codes(fill, copy_it, names_of_file, missing_names, as_it_stands, no_names,
                     source_cases);
        expect_codes(fill, copy_to_it, new_names, impossible_names, no_names);
        // no directory becomes of a file
        expect_code(fill, copy_to_it, ERROR_INVALID_NAME, {LR"(@\new\)"});
        if (keep) {
            expect_code(fill, copy_to_it, ERROR_FILE_EXISTS,
                        {LR"(@\other)", LR"(@\readonly)", LR"(@\FILE)", LR"(@\dir)"});
            expect_code(fill, copy_to_it, expected(ERROR_INVALID_NAME, ERROR_FILE_EXISTS),
                        {LR"(@\other\)"});
        } else {
            expect_codes(fill, copy_to_it, target_cases);
            expect_code(fill, copy_to_it, ERROR_INVALID_NAME,
                        {LR"(@\other\)", LR"(@\readonly\)", LR"(@\file\)"});
        }
    }
}

// Under Wine the host decides, and its administrator may do as he likes.
TEST(Copying, StopsAtAReadOnlyTarget)
{
    workspace space;
    fill(space);
    DWORD const code = copy(in(space, L"file"), in(space, L"readonly"));
    bool const allowed = runs_under_wine() && code == success;
    EXPECT_EQ(code, allowed ? success : DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(content_of(in(space, L"readonly")), allowed ? "content" : "guarded");
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

constexpr call_row link_cases[] = {
    {LR"(@\FILE)", ERROR_ALREADY_EXISTS, "its own name"},
    {LR"(@\other\new)", ERROR_INVALID_PARAMETER, "into a file", ERROR_PATH_NOT_FOUND},
};

TEST(HardLinks, Outcomes)
{
    auto const link_and_look = [](workspace const &space, std::wstring const &from,
                                  std::wstring const &to) {
        DWORD const code = link(from, to);
        EXPECT_EQ(content_of(in(space, L"other")), "former") << from << L" to " << to;
        return code;
    };
    auto const link_it = [&](workspace const &space, std::wstring const &from) {
        return link_and_look(space, from, in(space, L"new"));
    };
    auto const link_as_it = [&](workspace const &space, std::wstring const &to) {
        return link_and_look(space, in(space, L"file"), to);
    };
    expect_codes(fill, link_it, names_of_file, missing_names, as_it_stands, no_names, source_cases);
    expect_codes(fill, link_as_it, new_names, taken_names, impossible_names, no_names, link_cases);
}

TEST(HardLinks, LookForTheNewNameFirst)
{
    workspace space;
    fill(space);
    std::wstring const dir = in(space, L"dir");
    EXPECT_EQ(link(dir, in(space, LR"(missing\new)")), DWORD{ERROR_PATH_NOT_FOUND});
    EXPECT_EQ(link(dir, in(space, L"other")), DWORD{ERROR_ACCESS_DENIED})
        << "but not for what has it";
    EXPECT_EQ(link(dir, in(space, L"a*b")), DWORD{ERROR_INVALID_NAME}) << "and whether it is one";
    EXPECT_EQ(link(in(space, L"missing"), L" "), DWORD{ERROR_PATH_NOT_FOUND});
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
    NEEDS(space.has_share(), "there is no share");
    space.make_file(space.path(u"file"), "content");
    // under Wine the share is a folder of the same disk
    EXPECT_EQ(link(in(space, L"file"), wide(space.share_root()) + LR"(\new)"),
              expected(ERROR_NOT_SAME_DEVICE, success));
}

} // namespace

} // namespace contract
