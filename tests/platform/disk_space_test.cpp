#include "platform/contract.hpp"

#include <cstdint>

namespace contract {

namespace {

DWORD get_space(wchar_t const *directory)
{
    ULARGE_INTEGER available, capacity, free;
    return outcome_of(
        [&] { return ::GetDiskFreeSpaceExW(directory, &available, &capacity, &free) != FALSE; });
}

constexpr call_row space_cases[] = {
    {L"C:", success, "the current directory of a drive"},
    {LR"(@\file)", ERROR_DIRECTORY, "a file"},
    {LR"(@\file\)", ERROR_INVALID_NAME, "a file as a directory", {as_windows, ERROR_DIRECTORY}},
    {L"nul", ERROR_DIRECTORY, "a device", ERROR_INVALID_FUNCTION},
};

TEST(DiskSpace, Outcomes)
{
    auto const get = [](std::wstring const &name) { return get_space(name.c_str()); };
    expect_codes(fill, get, names_of_directories, missing_names, missing_roots, no_names,
                 space_cases);
}

TEST(DiskSpace, IsThatOfTheCurrentVolumeForNoText)
{
    workspace space;
    EXPECT_EQ(get_space(nullptr), success);
}

TEST(DiskSpace, ExistsForAShare)
{
    workspace space;
    NEEDS(space.has_share(), "there is no share");
    EXPECT_EQ(get_space(LR"(\\fl-server\share\)"), success);
    EXPECT_EQ(get_space(LR"(\\fl-server\share)"), success);
    EXPECT_EQ(get_space(wide(space.share_root()).c_str()), success);
    EXPECT_EQ(get_space(LR"(\\fl-server\fl-missing-share\)"),
              expected(ERROR_BAD_NET_NAME, ERROR_FILE_NOT_FOUND));
}

TEST(DiskSpace, GivesThreeNumbersInThisOrder)
{
    workspace space;
    ULARGE_INTEGER available{}, capacity{}, free{};
    std::wstring const root = wide(space.root());
    ASSERT_TRUE(::GetDiskFreeSpaceExW(root.c_str(), &available, &capacity, &free));
    EXPECT_GT(capacity.QuadPart, free.QuadPart) << "some of it is in use";
    EXPECT_GE(free.QuadPart, available.QuadPart) << "the caller may have a quota";
    EXPECT_GT(available.QuadPart, 0U);
}

TEST(DiskSpace, MayBeAskedForInParts)
{
    workspace space;
    std::wstring const root = wide(space.root());
    ULARGE_INTEGER one{}, other{};
    EXPECT_TRUE(::GetDiskFreeSpaceExW(root.c_str(), nullptr, nullptr, nullptr));
    EXPECT_TRUE(::GetDiskFreeSpaceExW(root.c_str(), nullptr, &one, nullptr));
    EXPECT_TRUE(::GetDiskFreeSpaceExW((root + L'\\').c_str(), nullptr, &other, nullptr));
    EXPECT_EQ(one.QuadPart, other.QuadPart);
    EXPECT_GT(one.QuadPart, 0U);
}

TEST(DiskSpace, IsLeftAloneByAFailure)
{
    ULARGE_INTEGER available, capacity, free;
    available.QuadPart = capacity.QuadPart = free.QuadPart = 17;
    EXPECT_FALSE(::GetDiskFreeSpaceExW(LR"(Q:\)", &available, &capacity, &free));
    EXPECT_EQ(available.QuadPart + capacity.QuadPart + free.QuadPart, std::uint64_t{51});
}

/// What a call with room for all stored; empty if it failed.
std::wstring volume_path(std::wstring const &name)
{
    wchar_t buffer[600] = L"#";
    return ::GetVolumePathNameW(name.c_str(), buffer, 600) ? buffer : L"";
}

DWORD get_volume_path(std::wstring const &name, DWORD room)
{
    std::wstring buffer(room + 1, L'#');
    DWORD const code = outcome_of(
        [&] { return ::GetVolumePathNameW(name.c_str(), buffer.data(), room) != FALSE; });
    EXPECT_EQ(buffer[room], L'#') << "it stays in the room";
    return code;
}

constexpr call_row no_volume_cases[] = {
    {L"", ERROR_INVALID_PARAMETER, "an empty text"},
    {L"nul", ERROR_INVALID_NAME, "a device"},
    {LR"(\\?\Q:\a)", ERROR_FILE_NOT_FOUND, "no such drive"},
    {LR"(Q:\a)", ERROR_FILE_NOT_FOUND, "nor without a prefix"},
    {LR"(\\fl-dead-server\share\a)", ERROR_BAD_NETPATH, "no such server", ERROR_INVALID_NAME},
};

TEST(VolumePath, Outcomes)
{
    workspace space;
    space.change_directory(space.root());
    // which needn't be there; the root, the drive, a name on it, slashes, and the current drive
    for (wchar_t const *name :
         {LR"(C:\fl-missing\x)", LR"(C:\)", L"C:", L"C:x", L"C:/a/b", LR"(\a)", L"a"}) {
        EXPECT_EQ(get_volume_path(name, 600), success) << name;
        EXPECT_EQ(volume_path(name), LR"(C:\)") << name;
    }
    EXPECT_EQ(volume_path(LR"(\\?\C:\a\b)"), LR"(\\?\C:\)") << "a long prefix stays";
    EXPECT_EQ(volume_path(LR"(\\.\C:\a)"), LR"(\\.\C:\)") << "the other one too";
    for (call_row const &row : no_volume_cases) {
        EXPECT_EQ(get_volume_path(row.text, 600), expected(row)) << row.why;
        EXPECT_EQ(volume_path(row.text), L"") << row.why;
    }
}

// Wine has none for network pathnames.
TEST(VolumePath, IsTheShareOnANetwork)
{
    workspace space;
    NEEDS(space.has_share(), "there is no share");
    for (wchar_t const *const text :
         {LR"(\\fl-server\share)", LR"(\\fl-server\share\)", LR"(\\fl-server\share\a\b)"}) {
        EXPECT_EQ(get_volume_path(text, 600), expected(success, ERROR_INVALID_NAME));
        EXPECT_EQ(volume_path(text), runs_under_wine() ? L"" : LR"(\\fl-server\share\)");
    }
    EXPECT_EQ(volume_path(LR"(\\?\UNC\fl-server\share\a)"),
              runs_under_wine() ? L"" : LR"(\\?\UNC\fl-server\share\)");
}

// Wine leaves out the backslash if there is no room for it.
TEST(VolumePath, NeedsRoom)
{
    EXPECT_EQ(get_volume_path(LR"(C:\a)", 0), DWORD{ERROR_INVALID_PARAMETER});
    EXPECT_EQ(get_volume_path(LR"(C:\a)", 1), DWORD{ERROR_FILENAME_EXCED_RANGE});
    EXPECT_EQ(get_volume_path(LR"(C:\a)", 2), DWORD{ERROR_FILENAME_EXCED_RANGE});
    EXPECT_EQ(get_volume_path(LR"(C:\a)", 3), expected(ERROR_FILENAME_EXCED_RANGE, success));
    EXPECT_EQ(get_volume_path(LR"(C:\a)", 4), success);
}

} // namespace

} // namespace contract
