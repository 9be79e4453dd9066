// Names of legacy devices: where they mean a device, and what calls make of one.

#include "platform/finding.hpp"

namespace contract {

namespace {

// Up to Windows 10 these are devices, in whatever directory, as long as that is there. To
// Windows 11 they are files like any others.
constexpr wchar_t const *placed_names[] = {LR"(@\prn)",       LR"(@\dir\NUL.x)", LR"(@/dir/com1)",
                                           LR"(dir\nul.txt)", L"aux.tar.gz",     LR"(.\lpt1)"};

DWORD by_edition(DWORD device, DWORD file)
{
    return finds_devices_anywhere() ? device : file;
}

TEST(DeviceInADirectory, IsOpenedLikeOneByItself)
{
    workspace space;
    fill(space);
    for (wchar_t const *name : {LR"(@\nul.a)", LR"(@\dir\NUL.b)", LR"(dir\nul.txt)"})
        EXPECT_EQ(code_of_open(text_in(space, name)), by_edition(success, ERROR_FILE_NOT_FOUND))
            << name;
    for (wchar_t const *name : {LR"(@\nul)", LR"(@\dir\NUL)", LR"(dir/nul. .)", LR"(.\Nul)"})
        EXPECT_EQ(code_of_open(text_in(space, name)), success) << name << ", in every edition";
}

TEST(DeviceInADirectory, HasAttributes)
{
    workspace space;
    fill(space);
    for (wchar_t const *name : placed_names) {
        DWORD const code = by_edition(success, ERROR_FILE_NOT_FOUND);
        EXPECT_EQ(get_file_attributes(text_in(space, name)), code) << name;
    }
    EXPECT_EQ(attributes_of(in(space, L"nul")), DWORD{FILE_ATTRIBUTE_ARCHIVE});
}

/// Wine has those that its host has, which are printers seldom.
bool has_device(std::wstring const &name)
{
    bool const is_printer = name.ends_with(L"prn") || name.ends_with(L"lpt1");
    return !runs_under_wine() || !is_printer;
}

// Wine asks its host about directories of that name.
TEST(DeviceInADirectory, CanBeNeitherDeletedNorRemovedNorMade)
{
    for (wchar_t const *name : placed_names) {
        if (!has_device(name))
            continue;
        workspace space;
        fill(space);
        std::wstring const text = text_in(space, name);
        EXPECT_EQ(delete_file(text),
                  by_edition(expected(ERROR_INVALID_FUNCTION, ERROR_INVALID_PARAMETER),
                             ERROR_FILE_NOT_FOUND))
            << name;
        EXPECT_EQ(set_attributes(text, FILE_ATTRIBUTE_HIDDEN),
                  by_edition(expected(ERROR_INVALID_FUNCTION, success), ERROR_FILE_NOT_FOUND))
            << name;
        if (runs_under_wine())
            continue;
        EXPECT_EQ(remove_directory(text), by_edition(ERROR_DIRECTORY, ERROR_FILE_NOT_FOUND))
            << name;
        EXPECT_EQ(create_directory(text), by_edition(ERROR_DIRECTORY, success)) << name;
    }
}

TEST(DeviceInADirectory, IsAFileSinceWindows11)
{
    workspace space;
    fill(space);
    if (finds_devices_anywhere())
        return; // expected above
    std::wstring const name = in(space, LR"(empty\con.txt)");
    EXPECT_EQ(code_of_open(name, anew), success);
    EXPECT_EQ(found(in(space, LR"(empty\*)")), L".|..|con.txt");
    EXPECT_EQ(delete_file(name), success);
}

// The full pathname is that of the device all the same.
TEST(DeviceInADirectory, NeedsTheDirectory)
{
    workspace space;
    fill(space);
    for (wchar_t const *name : {LR"(@\missing\nul)", LR"(missing\nul)", LR"(@\file\nul)"}) {
        std::wstring const text = text_in(space, name);
        EXPECT_EQ(code_of_open(text), DWORD{ERROR_PATH_NOT_FOUND}) << name;
        EXPECT_EQ(get_file_attributes(text), DWORD{ERROR_PATH_NOT_FOUND}) << name;
        EXPECT_EQ(full_path(text), LR"(\\.\nul)") << name;
    }
    EXPECT_EQ(code_of_open(LR"(Q:\nul)"), DWORD{ERROR_PATH_NOT_FOUND});
}

TEST(DeviceByItself, IsOneInEveryEdition)
{
    workspace space;
    fill(space);
    for (wchar_t const *name :
         {L"nul", L"NUL", L"nul:", L"nul ", L"nul.", L"nul. .", LR"(\\.\nul)"})
        EXPECT_EQ(code_of_open(name), success) << name;
    for (wchar_t const *name : {L"prn", L"AUX", L"com1", L"LPT9", L"con", L"conin$", L"CONOUT$"})
        EXPECT_EQ(full_path(name), std::wstring(LR"(\\.\)") + name);
    for (wchar_t const *name : {L"com0", L"lpt", L"com10", L"console", L"nul1", L"conin"})
        EXPECT_EQ(full_path(name), in(space, name));
}

// As it stands, the name is one like any other, whatever the edition.
TEST(DeviceBehindALongPrefix, IsAFile)
{
    workspace space;
    fill(space);
    std::wstring const name = text_in(space, LR"(?@\empty\nul)");
    EXPECT_EQ(code_of_open(name, anew), success);
    EXPECT_EQ(space.entries(space.path(u"empty")), std::vector<std::u16string>{u"nul"});
    EXPECT_EQ(remove_directory(in(space, L"empty")), DWORD{ERROR_DIR_NOT_EMPTY});
    EXPECT_EQ(delete_file(name), success);
}

} // namespace

} // namespace contract
