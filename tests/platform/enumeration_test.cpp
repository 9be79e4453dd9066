#include "platform/finding.hpp"

#include <algorithm>
#include <vector>

namespace contract {

namespace {

void fill_with_names(workspace &space)
{
    for (char16_t const *name : {u"ab", u"Abc.txt", u"a", u"two.part.txt", u"b.TXT"})
        space.make_file(space.path(name));
    space.make_file(space.path(u"dir\\inner.txt"));
    space.make_directory(space.path(u"empty"));
    space.change_directory(space.root());
}

/// See `text_in` for the pattern, and `found` for what is expected.
constexpr text_row matching_cases[] = {
    {LR"(@\*)", L".|..|a|ab|Abc.txt|b.TXT|dir|empty|two.part.txt", "dots first, then by name"},
    {L"*", L".|..|a|ab|Abc.txt|b.TXT|dir|empty|two.part.txt", "in the current directory"},
    {LR"(?@\*)", L".|..|a|ab|Abc.txt|b.TXT|dir|empty|two.part.txt", "as it stands"},
    {LR"(@\*.*)", L".|..|a|ab|Abc.txt|b.TXT|dir|empty|two.part.txt",
     "all, even without a full stop"},
    {LR"(@\dir\*)", L".|..|inner.txt", "one entry"},
    {LR"(@/dir/*)", L".|..|inner.txt", "slashes are fine"},
    {LR"(@\missing\..\dir\*)", L".|..|inner.txt", "dots are resolved before"},
    {LR"(@\empty\*)", L".|..", "none but the dots"},
    {LR"(@\*.txt)", L"Abc.txt|b.TXT|two.part.txt", "an extension, in whatever case"},
    {LR"(@\*.*.txt)", L"two.part.txt", "two full stops"},
    {LR"(@\a*)", L"a|ab|Abc.txt", "a beginning"},
    {LR"(@\?)", L"a", "one unit", {L".|a", L".|..|a"}},
    {LR"(@\a?)", L"a|ab", "one unit or the end", {L"ab", nullptr}},
    {LR"(@\???.txt)", L"Abc.txt|b.TXT", "up to three, then the extension", {L"Abc.txt", nullptr}},
    {LR"(@\*.)",
     L".|..|a|ab|dir|empty",
     "no extension",
     {L".|..|a|ab|Abc.txt|b.TXT|dir|empty|two.part.txt", nullptr}},
    {LR"(@\ABC.TXT)", L"Abc.txt", "one name, in its own case"},
    {LR"(@\dir)", L"dir", "the directory itself"},
    {LR"(@\dir. )", L"dir", "once the end is trimmed"},
    {LR"(@\dir\.)", L"dir", "a dot goes before"},
    {L"dir", L"dir", "from the current directory"},
    {L"nul", L"nul", "a device"},
};

constexpr call_row failing_cases[] = {
    {LR"(@\a\*)", ERROR_DIRECTORY, "a file has no entries", {ERROR_INVALID_NAME, as_windows}},
    {LR"(@\a\b)", ERROR_DIRECTORY, "nor one of this name", {ERROR_INVALID_NAME, as_windows}},
    {LR"(@\missing\)", ERROR_PATH_NOT_FOUND, "nor a directory ahead of it", ERROR_FILE_NOT_FOUND},
    {LR"(@\a|b)", ERROR_INVALID_NAME, "no name", ERROR_FILE_NOT_FOUND},
    {LR"(?@\dir/*)",
     ERROR_INVALID_NAME,
     "as it stands, a slash is no separator",
     {ERROR_FILE_NOT_FOUND, success}},
    {LR"(\\fl-dead-server\share\*)", ERROR_BAD_NETPATH, "no such server", ERROR_PATH_NOT_FOUND},
    {LR"(\\?\UNC\fl-dead-server\share\*)", ERROR_BAD_NETPATH, "with a long prefix",
     ERROR_PATH_NOT_FOUND},
};

TEST(Enumeration, Matches)
{
    workspace space;
    fill_with_names(space);
    for (text_row const &row : matching_cases) {
        std::u16string const names = units(expected(row));
        std::wstring const pattern = text_in(space, row.text);
        EXPECT_EQ(units(found(pattern)), names) << row.why;
        EXPECT_EQ(units(found(pattern, FindExInfoStandard)), names) << row.why << ", standard";
    }
}

TEST(Enumeration, Fails)
{
    auto const find = [](std::wstring const &pattern) {
        DWORD const code = search(pattern).code;
        EXPECT_EQ(search(pattern, FindExInfoStandard).code, code) << pattern;
        return code;
    };
    expect_codes(fill_with_names, find, no_names, failing_cases);
    // no such name, nothing that matches, no pattern behind the separator; a root is no entry
    expect_code(fill_with_names, find, ERROR_FILE_NOT_FOUND,
                {LR"(@\missing)", LR"(@\z*)", LR"(@\empty\x*)", LR"(@\dir\)", LR"(C:\)"});
    // no such directory, nor the one above; below a file; no such drive
    expect_code(fill_with_names, find, ERROR_PATH_NOT_FOUND,
                {LR"(@\missing\*)", LR"(@\missing\a\*)", LR"(@\a\b\*)", LR"(Q:\*)"});
    // wildcards stand in the last name only
    expect_code(fill_with_names, find, ERROR_INVALID_NAME, {LR"(@\d*\inner.txt)", LR"(@\d?r\*)"});
    // where Windows knows no such name, Wine 10 lists the directory ahead of it
    if (runs_under_wine() && test_support::wine_version() >= 10) {
        workspace space;
        fill_with_names(space);
        EXPECT_EQ(units(found(text_in(space, LR"(?@\dir/*)"))),
                  u".|..|a|ab|Abc.txt|b.TXT|dir|empty|two.part.txt");
    }
}

TEST(Enumeration, GivesNoDotsInARoot)
{
    workspace space;
    std::wstring const names = L"|" + found(LR"(C:\*)") + L"|";
    EXPECT_EQ(names.find(L"|.|"), std::wstring::npos);
    EXPECT_EQ(names.find(L"|..|"), std::wstring::npos);
    EXPECT_EQ(names.find(L"error"), std::wstring::npos);
}

TEST(Enumeration, GivesNamesWithDotsAndBlanksAtTheirEnd)
{
    workspace space;
    for (char16_t const *name : {u"dots..", u"blank ", u".hidden"})
        space.make_file(space.path(name));
    EXPECT_EQ(units(found(in(space, L"*"))), u".|..|.hidden|blank |dots..");
    EXPECT_EQ(units(found(LR"(\\?\)" + in(space, L"dots.."))), u"dots..");
    EXPECT_EQ(units(found(in(space, L"dots.."))), u"error 2") << "trimmed, it is another name";
}

TEST(Enumeration, OrdersBySomethingLikeCapitals)
{
    workspace space;
    for (char16_t const *name : {u"b", u"_", u"C", u"A", u"1", u"a-"})
        space.make_file(space.path(name));
    EXPECT_EQ(units(found(in(space, L"*"))), u".|..|1|A|a-|b|C|_");
}

TEST(Enumeration, TellsWhatAFileIs)
{
    workspace space;
    space.make_file(space.path(u"Some File Of Long Name.txt"), "12345");
    std::wstring const name = in(space, L"some file of long name.TXT");
    ASSERT_TRUE(::SetFileAttributesW(name.c_str(), FILE_ATTRIBUTE_READONLY));
    WIN32_FILE_ATTRIBUTE_DATA known = {};
    ASSERT_TRUE(::GetFileAttributesExW(name.c_str(), GetFileExInfoStandard, &known));
    search const entry(name);
    ASSERT_EQ(entry.code, success);
    EXPECT_EQ(entry.data.nFileSizeLow, 5U);
    EXPECT_EQ(entry.data.nFileSizeHigh, 0U);
    // Wine can't take this attribute from a file
    EXPECT_EQ(entry.data.dwFileAttributes,
              expected(FILE_ATTRIBUTE_READONLY, FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE));
    EXPECT_EQ(entry.data.cAlternateFileName[0], L'\0') << "not asked for";
    EXPECT_TRUE(same(entry.data.ftLastWriteTime, known.ftLastWriteTime));
    EXPECT_TRUE(same(entry.data.ftCreationTime, known.ftCreationTime));
}

TEST(Enumeration, TellsWhatADirectoryIs)
{
    workspace space;
    space.make_directory(space.path(u"dir"));
    search entry(in(space, L"*"));
    ASSERT_EQ(entry.code, success);
    for (wchar_t const *name : {L".", L"..", L"dir"}) {
        EXPECT_STREQ(entry.data.cFileName, name);
        EXPECT_EQ(entry.data.dwFileAttributes, DWORD{FILE_ATTRIBUTE_DIRECTORY})
            << testing::PrintToString(units(name));
        EXPECT_EQ(entry.data.nFileSizeLow, 0U);
        entry.next();
    }
}

TEST(Enumeration, StaysAtItsEnd)
{
    workspace space;
    search entries(in(space, L"*"));
    ASSERT_EQ(entries.code, success);
    EXPECT_EQ(entries.next(), success);
    EXPECT_EQ(entries.next(), DWORD{ERROR_NO_MORE_FILES});
    EXPECT_EQ(entries.next(), DWORD{ERROR_NO_MORE_FILES}) << "again";
}

TEST(Enumeration, GoesOnWhileEntriesAreRemoved)
{
    workspace space;
    for (char16_t unit = u'a'; unit <= u'z'; ++unit)
        space.make_file(space.path(std::u16string(200, unit)));
    search entries(in(space, L"*"));
    ASSERT_EQ(entries.code, success);
    ASSERT_EQ(entries.next(), success);
    int count = 0;
    while (entries.next() == success) {
        std::wstring const name = LR"(\\?\)" + in(space, entries.data.cFileName);
        EXPECT_TRUE(::DeleteFileW(name.c_str()));
        ++count;
    }
    EXPECT_EQ(count, 26);
    EXPECT_TRUE(space.entries(space.root()).empty());
}

TEST(Enumeration, NeedsALongPrefixFrom260Units)
{
    expect_limit_of_260([](std::wstring const &name) { return search(name).code; });
}

DWORD find_first(std::wstring const &pattern, int level, int operation, DWORD flags)
{
    return outcome_of([&] {
        WIN32_FIND_DATAW data;
        HANDLE const handle =
            ::FindFirstFileExW(pattern.c_str(), static_cast<FINDEX_INFO_LEVELS>(level), &data,
                               static_cast<FINDEX_SEARCH_OPS>(operation), nullptr, flags);
        return handle != INVALID_HANDLE_VALUE && ::FindClose(handle) != FALSE;
    });
}

TEST(Enumeration, RefusesWrongArguments)
{
    workspace space;
    std::wstring const pattern = in(space, L"*");
    EXPECT_EQ(find_first(pattern, FindExInfoBasic, FindExSearchNameMatch, 0), success);
    EXPECT_EQ(find_first(pattern, 2, FindExSearchNameMatch, 0), DWORD{ERROR_INVALID_PARAMETER});
    EXPECT_EQ(find_first(pattern, FindExInfoBasic, 3, 0), DWORD{ERROR_INVALID_PARAMETER});
    WIN32_FIND_DATAW data;
    auto const next = [&] { return ::FindNextFileW(INVALID_HANDLE_VALUE, &data) != FALSE; };
    EXPECT_EQ(outcome_of(next), DWORD{ERROR_INVALID_HANDLE});
    auto const close = [] { return ::FindClose(INVALID_HANDLE_VALUE) != FALSE; };
    EXPECT_EQ(outcome_of(close), DWORD{ERROR_INVALID_HANDLE});
}

TEST(Enumeration, WorksOnAShare)
{
    workspace space;
    NEEDS(space.has_share(), "there is no share");
    std::wstring const root = wide(space.share_root());
    space.make_file(space.share_root() + u"\\File");
    EXPECT_EQ(units(found(root + LR"(\*)")), u".|..|File");
    EXPECT_EQ(units(found(root + LR"(\file)")), u"File");
    EXPECT_EQ(units(found(LR"(\\?\UNC)" + root.substr(1) + LR"(\f*)")), u"File");
    EXPECT_EQ(units(found(root + LR"(\missing)")), u"error 2");
    std::wstring const name = root.substr(root.find_last_of(L'\\') + 1);
    EXPECT_EQ(units(found(LR"(\\fl-server\share\)" + name)), units(name)) << "in the share's root";
    EXPECT_EQ(search(LR"(\\fl-server\fl-missing-share\*)").code,
              expected(ERROR_BAD_NET_NAME, ERROR_PATH_NOT_FOUND));
}

} // namespace

} // namespace contract
