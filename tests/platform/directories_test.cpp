#include "platform/contract.hpp"

namespace contract {

namespace {

constexpr call_row create_cases[] = {
    {L".", ERROR_ALREADY_EXISTS, "the current directory"},
    {LR"(@\file\new)", ERROR_PATH_NOT_FOUND, "below a file"},
    {LR"(C:\)", ERROR_ACCESS_DENIED, "the root of a drive", ERROR_ALREADY_EXISTS},
    {L"CON", ERROR_DIRECTORY, "a device", ERROR_INVALID_HANDLE},
    {LR"(\\.\nul)", ERROR_DIRECTORY, "a device by its prefix", success},
};

constexpr call_row create_as_it_stands_cases[] = {
    {LR"(?@\missing\new)", ERROR_PATH_NOT_FOUND, "no parent"},
    {LR"(\\?\Q:\new)", ERROR_PATH_NOT_FOUND, "no such drive", ERROR_FILE_NOT_FOUND},
    {LR"(\\?\fl-object)", ERROR_FILE_NOT_FOUND, "no such object"},
    {LR"(\\?\fl-object\new)", ERROR_PATH_NOT_FOUND, "nor anything in it"},
};

TEST(CreatingDirectories, Outcomes)
{
    expect_codes(fill, create_directory, new_names, taken_names, impossible_names, missing_roots,
                 no_names, create_cases);
    // no device either, since the last element is empty
    expect_code(fill, create_directory, success, {LR"(@\new\)", LR"(@\nul\)"});
}

TEST(CreatingDirectories, TakesAPrefixedNameAsItStands)
{
    expect_codes(fill, create_directory, create_as_it_stands_cases);
    // full stops and blanks stay, and no device is looked for
    expect_code(fill, create_directory, success,
                {LR"(?@\new)", LR"(?@\new\)", LR"(?@\new.)", LR"(?@\new )", LR"(?@\nul)"});
    // a slash is no separator, dots have no meaning, and there is no empty name
    expect_code(fill, create_directory, ERROR_INVALID_NAME,
                {LR"(?@\dir/new)", LR"(?@\.)", LR"(?@\..)", LR"(?@\dir\..\new)", LR"(?@\dir\\new)",
                 LR"(?@\\)"});
}

TEST(CreatingDirectories, LeavesTheNameAsItWasTyped)
{
    workspace space;
    ASSERT_EQ(create_directory(in(space, L"New Name. .")), success);
    ASSERT_EQ(create_directory(LR"(\\?\)" + in(space, L"kept. ")), success);
    EXPECT_EQ(space.entries(space.root()), (std::vector<std::u16string>{u"New Name", u"kept. "}));
    EXPECT_TRUE(space.is_directory(space.path(u"New Name")));
}

TEST(CreatingDirectories, RefusesUnitsThatNoNameHas)
{
    workspace space;
    for (wchar_t const unit : std::wstring(L"<>\"|?*\x01\x09\x1F"))
        EXPECT_EQ(create_directory(in(space, std::wstring(L"a") + unit + L'b')),
                  DWORD{ERROR_INVALID_NAME})
            << static_cast<int>(unit);
    EXPECT_TRUE(space.entries(space.root()).empty());
}

// Windows sees streams there, which are no directories, whether they are there or not; Wine
// makes a directory of that name.
TEST(CreatingDirectories, TakesAColonForAStream)
{
    workspace space;
    space.make_file(space.path(u"file"));
    EXPECT_EQ(create_directory(in(space, L"a:b")), expected(ERROR_DIRECTORY, success));
    EXPECT_EQ(create_directory(in(space, L"file:b")), expected(ERROR_DIRECTORY, success));
    EXPECT_EQ(create_directory(in(space, L"c<d:b")), DWORD{ERROR_INVALID_NAME});
    EXPECT_EQ(create_directory(in(space, L"missing\\a:b")), DWORD{ERROR_PATH_NOT_FOUND});
    EXPECT_EQ(create_directory(in(space, L"c:d\\e")),
              expected(ERROR_INVALID_NAME, ERROR_PATH_NOT_FOUND))
        << "on the way, it is no name";
}

// A missing directory is found out before the name behind it is looked at.
TEST(CreatingDirectories, ChecksNamesInTheirTurn)
{
    workspace space;
    EXPECT_EQ(create_directory(in(space, LR"(missing\a*b)")),
              expected(ERROR_PATH_NOT_FOUND, ERROR_INVALID_NAME));
    EXPECT_EQ(create_directory(in(space, LR"(a*b\missing)")), DWORD{ERROR_INVALID_NAME});
}

// Room is kept for an 8.3 name behind the directory. Wine knows no such limit.
TEST(CreatingDirectories, HasALimitOfItsOwn)
{
    workspace space;
    for (std::size_t const length : {246U, 247U, 248U, 249U, 259U, 260U, 300U}) {
        DWORD const code = length < 248 ? success : beyond_limit(ERROR_FILENAME_EXCED_RANGE);
        std::wstring const name = long_path(space, length);
        EXPECT_EQ(create_directory(name), code) << length;
        EXPECT_EQ(space.exists(units(name)), code == success) << length;
        remove_directory(LR"(\\?\)" + name);
    }
}

TEST(CreatingDirectories, MeasuresTheFullPathname)
{
    workspace space;
    std::wstring const directory = long_path(space, 240);
    space.make_directory(units(directory));
    space.change_directory(units(directory));
    EXPECT_EQ(create_directory(L"sixsix"), success) << "247 units";
    EXPECT_EQ(create_directory(L"seven77"), beyond_limit(ERROR_FILENAME_EXCED_RANGE));
    std::wstring const detour = in(space, std::wstring(200, L'x') + LR"(\..\short)");
    EXPECT_EQ(create_directory(detour), success) << "however long the text is";
}

TEST(CreatingDirectories, HasNoLimitBehindALongPrefix)
{
    workspace space;
    for (std::size_t const length : {248U, 260U, 1000U}) {
        std::wstring const name = long_path(space, length);
        EXPECT_EQ(create_directory(LR"(\\?\)" + name), success) << length;
        EXPECT_TRUE(space.is_directory(units(name))) << length;
    }
}

TEST(CreatingDirectories, TakesNamesOf255Units)
{
    workspace space;
    std::wstring const prefixed = LR"(\\?\)" + wide(space.root()) + LR"(\)";
    EXPECT_EQ(create_directory(prefixed + std::wstring(255, L'n')), success);
    EXPECT_EQ(create_directory(prefixed + std::wstring(256, L'n')),
              expected(ERROR_INVALID_NAME, ERROR_FILE_NOT_FOUND));
}

TEST(CreatingDirectories, WorksOnAShare)
{
    workspace space;
    NEEDS(space.has_share(), "there is no share");
    std::wstring const root = wide(space.share_root());
    EXPECT_EQ(create_directory(root + LR"(\new)"), success);
    EXPECT_TRUE(space.is_directory(space.share_root() + u"\\new"));
    EXPECT_EQ(create_directory(root + LR"(\NEW\)"), DWORD{ERROR_ALREADY_EXISTS});
    EXPECT_EQ(create_directory(root + LR"(\missing\new)"), DWORD{ERROR_PATH_NOT_FOUND});
    EXPECT_EQ(create_directory(LR"(\\fl-server\share)"), DWORD{ERROR_ALREADY_EXISTS});
    EXPECT_EQ(create_directory(LR"(\\fl-server\fl-missing-share\new)"),
              expected(ERROR_BAD_NET_NAME, ERROR_PATH_NOT_FOUND));
}

TEST(CreatingDirectories, WorksOnAShareBehindALongPrefix)
{
    workspace space;
    NEEDS(space.has_share(), "there is no share");
    std::wstring const root = wide(space.share_root());
    std::wstring const prefixed = LR"(\\?\UNC)" + root.substr(1);
    EXPECT_EQ(create_directory(prefixed + LR"(\new.)"), success);
    EXPECT_EQ(get_file_attributes(prefixed + LR"(\new.)"), success);
    EXPECT_EQ(get_file_attributes(root + LR"(\new.)"), DWORD{ERROR_FILE_NOT_FOUND});
    std::wstring const unc_in_lower_case = LR"(\\?\unc)" + root.substr(1);
    EXPECT_EQ(create_directory(unc_in_lower_case + LR"(\NEW.)"), DWORD{ERROR_ALREADY_EXISTS});
}

TEST(CreatingDirectories, NeedsTheRight)
{
    workspace space;
    NEEDS(space.can_deny_rights(), "this workspace writes no access control lists");
    fill(space);
    space.deny_creation(space.path(u"dir"));
    EXPECT_EQ(create_directory(in(space, LR"(dir\new)")), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(create_directory(in(space, LR"(dir\inner)")), DWORD{ERROR_ALREADY_EXISTS});
    EXPECT_EQ(create_directory(in(space, LR"(dir\inner\new)")), success) << "only there";
    EXPECT_EQ(space.entries(space.path(u"dir")), (std::vector<std::u16string>{u"inner", u"leaf"}));
}

constexpr call_row remove_cases[] = {
    {LR"(@\dir)", ERROR_DIR_NOT_EMPTY, "not empty"},
    {LR"(@\file)", ERROR_DIRECTORY, "a file"},
    {L".", ERROR_SHARING_VIOLATION, "the current directory"},
    {LR"(@\empty:b)", ERROR_DIRECTORY, "a stream is no directory", ERROR_FILE_NOT_FOUND},
    {LR"(@\missing:b)", ERROR_DIRECTORY, "nor a missing one", ERROR_FILE_NOT_FOUND},
    {L"", ERROR_PATH_NOT_FOUND, "no text", ERROR_INVALID_NAME},
    {L"nul", ERROR_DIRECTORY, "a device", ERROR_INVALID_HANDLE},
};

TEST(RemovingDirectories, Outcomes)
{
    auto const remove = [](workspace const &space, std::wstring const &name) {
        DWORD const code = remove_directory(name);
        EXPECT_EQ(space.exists(space.path(u"empty")), code != success) << name;
        return code;
    };
    expect_code(fill, remove, success, {LR"(@\empty)", LR"(@\EMPTY\)", L"empty", LR"(?@\empty)"});
    expect_codes(fill, remove, missing_names, missing_roots, remove_cases);
}

} // namespace

} // namespace contract
