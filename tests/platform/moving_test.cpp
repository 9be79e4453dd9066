#include "platform/opened.hpp"

namespace contract {

namespace {

constexpr DWORD replace = MOVEFILE_REPLACE_EXISTING;
constexpr DWORD copy = MOVEFILE_COPY_ALLOWED;

DWORD move(std::wstring const &from, std::wstring const &to, DWORD flags = 0)
{
    return outcome_of([&] { return ::MoveFileExW(from.c_str(), to.c_str(), flags) != FALSE; });
}

constexpr call_row source_cases[] = {
    {LR"(@\readonly)", success, "a read-only file"},
    {LR"(@\dir)", success, "a directory with all below it"},
    {LR"(@\dir\)", success, "with a separator at its end"},
    {LR"(@\file\)", ERROR_INVALID_NAME, "a file is no directory"},
};

constexpr call_row target_cases[] = {
    {LR"(@\other\new)", ERROR_INVALID_PARAMETER, "into a file", ERROR_PATH_NOT_FOUND},
    {LR"(@\other\a\new)", ERROR_PATH_NOT_FOUND, "or deeper"},
    {LR"(@\new\)", success, "a separator behind the new name is passed over", ERROR_DIRECTORY},
    {LR"(@\other\)", ERROR_ALREADY_EXISTS, "and also behind one that is there", ERROR_DIRECTORY},
};

constexpr call_row directory_cases[] = {
    {LR"(@\new\)", success, "with a separator at the end of the target"},
    {LR"(@\dir\new)", ERROR_SHARING_VIOLATION, "into itself", ERROR_INVALID_PARAMETER},
    {LR"(@\dir\inner\new)", ERROR_ACCESS_DENIED, "or deeper into itself", ERROR_INVALID_PARAMETER},
};

DWORD move_and_look(workspace const &space, std::wstring const &from, std::wstring const &to,
                    DWORD flags = 0)
{
    bool const there = get_file_attributes(from) == success;
    DWORD const code = move(from, to, flags);
    bool const stays = get_file_attributes(from) == success;
    EXPECT_EQ(stays, there && code != success) << from << L" to " << to;
    if (code != success) {
        EXPECT_EQ(content_of(in(space, L"other")), "former") << from << L" to " << to;
    }
    return code;
}

/// Moves the name to the text of a row.
auto moving(wchar_t const *name)
{
    return [name](workspace const &space, std::wstring const &to) {
        return move_and_look(space, in(space, name), to);
    };
}

TEST(Moving, Outcomes)
{
    auto const move_it = [](workspace const &space, std::wstring const &from) {
        return move_and_look(space, from, in(space, L"new"));
    };
    expect_codes(fill, move_it, names_of_file, missing_names, as_it_stands, no_names, source_cases);
    expect_codes(fill, moving(L"file"), new_names, taken_names, impossible_names, no_names,
                 target_cases);
    expect_codes(fill, moving(L"dir"), taken_names, directory_cases);
}

/// Names of the folder.
struct flags_case
{
    wchar_t const *from, *to;
    DWORD flags, code;
    char const *why;
};

constexpr flags_case flags_cases[] = {
    {L"file", L"new", replace | copy, success, "whatever the flags"},
    {L"dir", LR"(empty\new)", copy, success, "a directory into another"},
    {L"file", L"other", replace, success, "over a file"},
    {L"readonly", L"other", replace, success, "read-only, over a file"},
    {L"dir", L"file", replace, success, "a directory over a file"},
    {L"file", L"other", copy, ERROR_ALREADY_EXISTS, "nor is it copied over what is there"},
    {L"file", L"empty", replace, ERROR_ACCESS_DENIED, "over a directory"},
    {L"dir", L"empty", replace | copy, ERROR_ACCESS_DENIED, "even if that is empty"},
    {L"missing", L"missing", 0, ERROR_FILE_NOT_FOUND, "onto itself, but not there"},
    {L"file", LR"(missing\new)", replace | copy, ERROR_PATH_NOT_FOUND, "into no directory"},
};

TEST(Moving, OutcomesWithFlags)
{
    for (flags_case const &row : flags_cases) {
        workspace space;
        fill(space);
        EXPECT_EQ(move_and_look(space, in(space, row.from), in(space, row.to), row.flags), row.code)
            << row.why;
    }
}

// Under Wine the host decides, and its administrator may do as he likes.
TEST(Moving, StopsAtAReadOnlyTarget)
{
    workspace space;
    fill(space);
    DWORD const code = move(in(space, L"file"), in(space, L"readonly"), replace);
    bool const allowed = runs_under_wine() && code == success;
    EXPECT_EQ(code, allowed ? success : DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(content_of(in(space, L"readonly")), allowed ? "content" : "guarded");
    EXPECT_NE(space.exists(space.path(u"file")), allowed);
}

// Both names are one file: there is nothing to replace but a name, and the file is no obstacle
// to itself. Wine's host takes it for nothing to be done.
TEST(Moving, OneHardLinkOntoAnotherOfTheSameFile)
{
    workspace space;
    space.make_file(space.path(u"one"), "content");
    std::wstring const one = in(space, L"one");
    std::wstring const two = in(space, L"two");
    ASSERT_TRUE(::CreateHardLinkW(two.c_str(), one.c_str(), nullptr));
    EXPECT_EQ(move(one, two), expected(ERROR_ALREADY_EXISTS, success));
    EXPECT_EQ(information_of(one).nNumberOfLinks, 2U);
    EXPECT_EQ(move(one, two, replace), success);
    EXPECT_EQ(get_file_attributes(one), expected(ERROR_FILE_NOT_FOUND, success));
    EXPECT_EQ(content_of(two), "content");
    EXPECT_EQ(information_of(two).nNumberOfLinks, expected(1, 2));
}

TEST(Moving, KeepsContentAttributesAndTimes)
{
    workspace space;
    fill(space);
    std::wstring const from = in(space, L"file");
    std::wstring const to = in(space, L"other");
    set_last_write(from, past_moment());
    give_attributes(from, FILE_ATTRIBUTE_READONLY);
    BY_HANDLE_FILE_INFORMATION const before = information_of(from);
    ASSERT_EQ(move(from, to, replace), success);
    BY_HANDLE_FILE_INFORMATION const after = information_of(to);
    EXPECT_EQ(content_of(to), "content");
    EXPECT_TRUE(same(after.ftLastWriteTime, past_moment()));
    EXPECT_EQ(after.dwFileAttributes & FILE_ATTRIBUTE_READONLY, DWORD{FILE_ATTRIBUTE_READONLY});
    EXPECT_EQ(after.nFileIndexLow, before.nFileIndexLow) << "it is the same file";
    EXPECT_EQ(after.nFileIndexHigh, before.nFileIndexHigh);
}

TEST(Moving, TakesADirectoryWithAllBelowIt)
{
    workspace space;
    fill(space);
    ASSERT_EQ(move(in(space, L"dir"), in(space, LR"(empty\new)")), success);
    EXPECT_EQ(content_of(in(space, LR"(empty\new\leaf)")), "leaf");
    EXPECT_TRUE(space.is_directory(space.path(u"empty\\new\\inner")));
}

TEST(Moving, ChangesTheCaseOfAName)
{
    for (DWORD const flags : {DWORD{0}, replace, replace | copy}) {
        workspace space;
        space.make_file(space.path(u"file"), "content");
        space.make_directory(space.path(u"sub"));
        EXPECT_EQ(move(in(space, L"file"), in(space, L"FiLe"), flags), success) << flags;
        EXPECT_EQ(move(in(space, L"SUB"), in(space, L"Sub"), flags), success) << flags;
        std::vector<std::u16string> names = {u"FiLe", u"Sub"};
        if (runs_under_wine())
            names = {u"file", u"sub"}; // it succeeds and changes nothing
        EXPECT_EQ(space.entries(space.root()), names);
        EXPECT_EQ(content_of(in(space, L"file")), "content");
    }
}

TEST(Moving, OntoItselfChangesNothing)
{
    for (DWORD const flags : {DWORD{0}, replace, replace | copy}) {
        workspace space;
        fill(space);
        EXPECT_EQ(move(in(space, L"file"), in(space, L"file"), flags), success) << flags;
        EXPECT_EQ(move(in(space, L"dir"), in(space, L"dir"), flags), success) << flags;
        EXPECT_EQ(move(in(space, L"readonly"), in(space, L"readonly"), flags), success) << flags;
        EXPECT_EQ(content_of(in(space, L"file")), "content");
        EXPECT_EQ(content_of(in(space, LR"(dir\leaf)")), "leaf");
    }
}

struct held_case
{
    wchar_t const *held;
    DWORD share;
    wchar_t const *from;
    wchar_t const *to;
    DWORD code;
    char const *why;
    DWORD wine = as_windows;
};

constexpr DWORD no_delete = FILE_SHARE_READ | FILE_SHARE_WRITE;

constexpr held_case held_cases[] = {
    {L"file", share_all, L"file", L"new", success, "a source that may be deleted"},
    {L"file", no_delete, L"file", L"new", ERROR_SHARING_VIOLATION, "one that may not"},
    {L"other", no_delete, L"file", L"other", ERROR_ACCESS_DENIED, "a target that may not"},
    {L"other", share_all, L"file", L"other", ERROR_ACCESS_DENIED, "nor one that may"},
    {L"dir", share_all, L"dir", L"new", success, "a directory that may"},
    {L"dir", no_delete, L"dir", L"new", ERROR_SHARING_VIOLATION, "one that may not"},
    {LR"(dir\leaf)", share_all, L"dir", L"new", ERROR_ACCESS_DENIED, "something below it", success},
    {LR"(dir\inner)", share_all, L"dir", L"new", ERROR_ACCESS_DENIED, "a directory below it",
     success},
    {L"empty", no_delete, L"file", LR"(empty\new)", success, "the directory of the target"},
};

TEST(Moving, MindsWhatIsOpen)
{
    for (held_case const &row : held_cases) {
        workspace space;
        fill(space);
        opened const held(in(space, row.held), GENERIC_READ, row.share);
        ASSERT_EQ(held.code, success) << row.why;
        EXPECT_EQ(move(in(space, row.from), in(space, row.to), replace | copy),
                  expected(row.code, row.wine))
            << row.why;
    }
}

// Under Wine the share is a folder of the same disk.
TEST(Moving, CopiesFilesToAnotherVolumeIfAllowed)
{
    workspace space;
    NEEDS(space.has_share(), "there is no share");
    fill(space);
    std::wstring const to = wide(space.share_root()) + LR"(\new)";
    if (!runs_under_wine()) {
        EXPECT_EQ(move(in(space, L"file"), to), DWORD{ERROR_NOT_SAME_DEVICE});
        EXPECT_EQ(move(in(space, L"dir"), to), DWORD{ERROR_NOT_SAME_DEVICE});
        EXPECT_EQ(move(in(space, L"dir"), to, copy), DWORD{ERROR_ACCESS_DENIED});
    }
    set_last_write(in(space, L"file"), past_moment());
    EXPECT_EQ(move(in(space, L"file"), to, copy), success);
    EXPECT_EQ(content_of(to), "content");
    EXPECT_TRUE(same(information_of(to).ftLastWriteTime, past_moment()));
    EXPECT_FALSE(space.exists(space.path(u"file")));
    EXPECT_EQ(move(in(space, L"other"), to, replace | copy), success) << "over what is there";
    EXPECT_EQ(content_of(to), "former");
}

} // namespace

} // namespace contract
